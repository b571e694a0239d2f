#include "sound/timeline/peak_level.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "sound/samples/steady_percent.h"

namespace tarnwick::sound {

namespace {

constexpr std::int64_t kBlock = Peaks::kFinestFrames;

// Finds the largest |sample| in stretches of a source. The peaks give a lower bound first; then
// only the samples of blocks that may exceed it are read.
class PeakSearch {
  public:
    explicit PeakSearch(const Source& source)
        : source_(source), bounded_(!source.format().floating) {}

    // Raises the lower bound by the peaks of a piece.
    void prove(const Piece& piece) {
        descend(piece, [&](std::int64_t block, std::int64_t first, std::int64_t end) {
            const std::int64_t blockEnd = std::min((block + 1) * kBlock, source_.frames());
            if (first > block * kBlock || end < blockEnd) return;
            // A peak may have been rounded up by one.
            proven_ = std::max(proven_, (peakAt(0, block) - 1) / 32768.0 * std::abs(piece.gain));
        });
    }

    // Reads the samples of a piece that may be the largest. Call after prove() for all pieces.
    void read(const Piece& piece, const SteadyPercent& percent) {
        descend(piece, [&](std::int64_t, std::int64_t first, std::int64_t end) {
            percent.checkStop();
            std::array<double, kBlock * 2> samples;
            source_.read(first, end - first, samples.data());
            const auto values = static_cast<std::size_t>(end - first) *
                                static_cast<std::size_t>(source_.format().channels);
            for (std::size_t i = 0; i < values; ++i)
                found_ = std::max(found_, std::abs(samples[i] * piece.gain));
        });
    }

    double found() const { return found_; }

  private:
    int peakAt(int level, std::int64_t index) const {
        int most = 0;
        for (int channel = 0; channel < source_.format().channels; ++channel) {
            const Peak peak =
                source_.peaks().level(channel, level)[static_cast<std::size_t>(index)];
            most = std::max({most, int{peak.maximum}, -int{peak.minimum}});
        }
        return most;
    }

    // The upper bound of the samples that a peak covers.
    double boundOf(int peak) const {
        if (peak < 32767) return peak / 32768.0;
        return bounded_ ? 1.0 : std::numeric_limits<double>::infinity();
    }

    // Calls visit(block, first, end) for the part of each finest block that lies in the piece and
    // may exceed the level known so far.
    template <class Visit>
    void descend(const Piece& piece, const Visit& visit) {
        const std::int64_t end = piece.source + piece.count;
        const int top = source_.peaks().levels() - 1;
        for (std::int64_t at = piece.source; at < end;) {
            int level = top;
            while (level > 0 && at % Peaks::framesAt(level) != 0)
                --level;
            while (level > 0 && mayHoldMore(level, at, piece.gain))
                --level;
            const std::int64_t next = (at / Peaks::framesAt(level) + 1) * Peaks::framesAt(level);
            if (level == 0 && mayHoldMore(0, at, piece.gain))
                visit(at / kBlock, at, std::min(next, end));
            at = next;
        }
    }

    bool mayHoldMore(int level, std::int64_t frame, double gain) const {
        const double bound =
            boundOf(peakAt(level, frame / Peaks::framesAt(level))) * std::abs(gain);
        return bound > found_ && bound >= proven_;
    }

    const Source& source_;
    bool bounded_;
    double proven_ = 0.0;  // lower bound of the result
    double found_ = 0.0;   // the largest sample read so far
};

}  // namespace

double peakLevel(const Timeline& timeline, FrameRange range, const Progress& progress) {
    timeline.source()->checkUnchanged();
    PeakSearch search(*timeline.source());
    const std::vector<Piece> pieces = timeline.pieces(range.first, range.end);
    SteadyPercent percent(progress, range.end - range.first);
    for (const Piece& piece : pieces)
        if (!piece.silent()) search.prove(piece);
    for (const Piece& piece : pieces) {
        percent.reached(piece.at - range.first);
        if (!piece.silent()) search.read(piece, percent);
    }
    percent.reached(range.end - range.first);
    return search.found();
}

}  // namespace tarnwick::sound
