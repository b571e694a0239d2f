#include <algorithm>
#include <cmath>
#include <limits>

#include "sound/samples/sound_error.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::sound {

namespace {

// Columns narrower than this are computed from samples. For wider ones the peaks are off by half a
// column at most.
constexpr double kNarrowFrames = 2.0 * Peaks::kFinestFrames;
// Frames of samples held at a time.
constexpr std::int64_t kMostFrames = 16384;

// Maps the columns of a picture to the frames of a timeline.
class Grid {
  public:
    Grid(double begin, double end, std::size_t columns, std::int64_t frames)
        : begin_(begin),
          width_((end - begin) / static_cast<double>(columns)),
          columns_(columns),
          frames_(frames) {}

    double width() const { return width_; }
    // The frames of a column, clipped to the sound. Each frame belongs to one column, but a column
    // narrower than a frame shows the frame it lies in.
    std::int64_t first(std::size_t column) const { return cut(edge(column)); }
    std::int64_t end(std::size_t column) const {
        const double next = std::max(edge(column + 1), edge(column) + 1);
        return cut(next);
    }
    // The column of a frame inside the picture.
    std::size_t columnOf(std::int64_t frame) const {
        const double place = std::floor((static_cast<double>(frame) - begin_) / width_);
        auto column =
            static_cast<std::size_t>(std::clamp(place, 0.0, static_cast<double>(columns_ - 1)));
        // The quotient and the edges are rounded separately and may disagree.
        while (column > 0 && frame < first(column))
            --column;
        while (column + 1 < columns_ && frame >= end(column))
            ++column;
        return column;
    }

  private:
    double edge(std::size_t column) const {
        return std::floor(begin_ + static_cast<double>(column) * width_);
    }
    std::int64_t cut(double frame) const {
        return static_cast<std::int64_t>(std::clamp(frame, 0.0, static_cast<double>(frames_)));
    }

    double begin_;
    double width_;
    std::size_t columns_;
    std::int64_t frames_;
};

void extend(PeakRange& range, float low, float high) {
    range.minimum = std::min(range.minimum, low);
    range.maximum = std::max(range.maximum, high);
}

// Extends a column by the peaks of [first, end) of the source.
void extendByPeaks(const Peaks& peaks, int channel, std::int64_t first, std::int64_t end,
                   double gain, PeakRange& range) {
    int level = 0;
    while (level + 1 < peaks.levels() && Peaks::framesAt(level + 1) * 2 <= end - first)
        ++level;
    const std::span<const Peak> held = peaks.level(channel, level);
    const auto from = static_cast<std::size_t>(first / Peaks::framesAt(level));
    const auto to = static_cast<std::size_t>((end - 1) / Peaks::framesAt(level));
    Peak peak = held[from];
    for (std::size_t i = from + 1; i <= to; ++i) {
        peak.minimum = std::min(peak.minimum, held[i].minimum);
        peak.maximum = std::max(peak.maximum, held[i].maximum);
    }
    const auto low = static_cast<float>(peak.minimum / 32768.0 * gain);
    const auto high = static_cast<float>(peak.maximum / 32768.0 * gain);
    extend(range, std::min(low, high), std::max(low, high));
}

void fillFromPeaks(const Timeline& timeline, int channel, const Grid& grid,
                   std::span<PeakRange> out) {
    const std::int64_t end = grid.end(out.size() - 1);
    for (const Piece& piece : timeline.pieces(grid.first(0), end)) {
        std::size_t column = grid.columnOf(piece.at);
        const std::int64_t pieceEnd = piece.at + piece.count;
        for (std::int64_t at = piece.at; at < pieceEnd; ++column) {
            const std::int64_t to = std::min(pieceEnd, grid.end(column));
            if (piece.silent()) {
                extend(out[column], 0.0f, 0.0f);
            } else {
                const std::int64_t source = piece.source + (at - piece.at);
                extendByPeaks(timeline.source()->peaks(), channel, source, source + (to - at),
                              piece.gain, out[column]);
            }
            at = to;
        }
    }
}

void fillFromSamples(const Timeline& timeline, int channel, const Grid& grid,
                     std::span<PeakRange> out) {
    const int channels = timeline.format().channels;
    std::vector<double> samples;
    for (std::size_t column = 0; column < out.size();) {
        const std::int64_t first = grid.first(column);
        std::size_t behind = column + 1;
        while (behind < out.size() && grid.end(behind) - first <= kMostFrames)
            ++behind;
        const std::int64_t count = grid.end(behind - 1) - first;
        samples.resize(static_cast<std::size_t>(count * channels));
        timeline.read(first, count, samples.data());
        for (; column < behind; ++column)
            for (std::int64_t at = grid.first(column); at < grid.end(column); ++at) {
                const auto value = static_cast<float>(
                    samples[static_cast<std::size_t>((at - first) * channels + channel)]);
                extend(out[column], value, value);
            }
    }
}

}  // namespace

bool Timeline::columns(int channel, double beginFrame, double endFrame,
                       std::span<PeakRange> out) const {
    if (channel < 0 || channel >= format().channels || !(beginFrame < endFrame) ||
        !std::isfinite(endFrame - beginFrame) || out.empty())
        return false;
    constexpr float kFar = std::numeric_limits<float>::infinity();
    std::fill(out.begin(), out.end(), PeakRange{kFar, -kFar});
    const Grid grid(beginFrame, endFrame, out.size(), frames());
    bool filled = true;
    try {
        if (grid.width() >= kNarrowFrames)
            fillFromPeaks(*this, channel, grid, out);
        else
            fillFromSamples(*this, channel, grid, out);
    } catch (const SoundError&) {
        filled = false;
    }
    for (PeakRange& range : out)
        if (range.minimum > range.maximum) range = {};
    return filled;
}

}  // namespace tarnwick::sound
