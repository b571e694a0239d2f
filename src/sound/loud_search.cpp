#include "sound/loud_search.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarnwick::sound {

namespace {

constexpr std::int64_t kBlock = Peaks::kFinestFrames;
// How many blocks a quick look goes back.
constexpr int kQuickBlocks = 12;

}  // namespace

LoudSearch::LoudSearch(const Timeline& timeline, double limit)
    : source_(*timeline.source()),
      limit_(limit),
      channels_(timeline.format().channels),
      pieces_(timeline.pieces(0, timeline.frames())) {
    // Asked for once: the searches below are little else than looks at peaks.
    for (int level = 0; level < source_.peaks().levels(); ++level)
        peaks_.push_back({source_.peaks().level(0, level).data(),
                          source_.peaks().level(channels_ - 1, level).data()});
}

// Makes the piece that holds a frame the present one.
void LoudSearch::moveTo(std::int64_t frame) {
    while (frame < pieces_[piece_].at)
        --piece_;
    while (frame >= pieces_[piece_].at + pieces_[piece_].count)
        ++piece_;
    const double gain = std::abs(pieces_[piece_].gain);
    if (pieces_[piece_].silent() || gain == gain_) return;
    gain_ = gain;
    const auto within = [&](int peak) { return peak / 32768.0 * gain <= limit_; };
    int peak = static_cast<int>(std::clamp(std::floor(limit_ / gain * 32768.0), 0.0, 32768.0));
    while (peak > 0 && !within(peak))
        --peak;
    while (peak < 32768 && within(peak + 1))
        ++peak;
    loudPeak_ = peak + 1;  // a peak one more than this may have been rounded up from this
    // A peak at the end of its range only says "or beyond", unless nothing can lie beyond.
    const bool bounded = !source_.format().floating;
    quietPeak_ = bounded && peak == 32768 ? 32768 : std::min(peak, 32766);
}

bool LoudSearch::quiet(int level, std::int64_t frame) const {
    // The places are not negative: shifting divides.
    const auto index = static_cast<std::size_t>(frame) >> (8 + 4 * level);
    static_assert(Peaks::kFinestFrames == 1 << 8 && Peaks::kStep == 1 << 4);
    for (const Peak* const channel : peaks_[static_cast<std::size_t>(level)]) {
        const Peak peak = channel[index];
        if (peak.maximum > quietPeak_ || peak.minimum < -quietPeak_) return false;
    }
    return true;
}

bool LoudSearch::certainlyLoud(std::int64_t block) const {
    for (const Peak* const channel : peaks_[0]) {
        const Peak peak = channel[block];
        if (peak.maximum > loudPeak_ || -peak.minimum > loudPeak_) return true;
    }
    return false;
}

// The end of the longest stretch of peaks around a frame that is quiet; the frame itself if none.
std::int64_t LoudSearch::pastQuiet(std::int64_t frame) const {
    if (!quiet(0, frame)) return frame;
    int level = 0;
    const int levels = static_cast<int>(peaks_.size());
    while (level + 1 < levels && quiet(level + 1, frame))
        ++level;
    return (frame / Peaks::framesAt(level) + 1) * Peaks::framesAt(level);
}

// The same to the other side: the stretch's first frame, or one past the frame itself.
std::int64_t LoudSearch::beforeQuiet(std::int64_t frame) const {
    if (!quiet(0, frame)) return frame + 1;
    int level = 0;
    const int levels = static_cast<int>(peaks_.size());
    while (level + 1 < levels && quiet(level + 1, frame))
        ++level;
    return frame / Peaks::framesAt(level) * Peaks::framesAt(level);
}

const LoudBits& LoudSearch::bits(std::int64_t block) {
    const LoudMaps::Key key{limit_, pieces_[piece_].gain};
    if (block == bitsBlock_ && key == bitsKey_) return bits_;
    if (const auto known = source_.loudMaps().find(key, block)) {
        bits_ = *known;
    } else {
        std::array<double, kBlock * 2> samples;
        const std::int64_t frames = std::min(kBlock, source_.frames() - block * kBlock);
        source_.read(block * kBlock, frames, samples.data());
        LoudBits made;
        for (int i = 0; i < static_cast<int>(frames) * channels_; ++i)
            if (std::abs(samples[static_cast<std::size_t>(i)] * key.gain) > limit_)
                made.set(i / channels_);
        source_.loudMaps().keep(key, block, made);
        bits_ = made;
    }
    bitsKey_ = key;
    bitsBlock_ = block;
    return bits_;
}

std::int64_t LoudSearch::firstInSource(std::int64_t first, std::int64_t end) {
    while (first < end) {
        const std::int64_t past = pastQuiet(first);
        if (past > first) {
            first = past;
            continue;
        }
        const std::int64_t block = first / kBlock;
        const std::int64_t begin = block * kBlock;
        const int found = bits(block).firstIn(static_cast<int>(first - begin),
                                              static_cast<int>(std::min(end - begin, kBlock)));
        if (found >= 0) return begin + found;
        first = begin + kBlock;
    }
    return -1;
}

std::int64_t LoudSearch::lastInSource(std::int64_t first, std::int64_t end) {
    while (first < end) {
        const std::int64_t before = beforeQuiet(end - 1);
        if (before < end) {
            end = before;
            continue;
        }
        const std::int64_t block = (end - 1) / kBlock;
        const std::int64_t begin = block * kBlock;
        const int found =
            bits(block).lastIn(static_cast<int>(std::max<std::int64_t>(first - begin, 0)),
                               static_cast<int>(end - begin));
        if (found >= 0) return begin + found;
        end = begin;
    }
    return -1;
}

std::int64_t LoudSearch::firstLoud(std::int64_t first, std::int64_t end) {
    while (first < end) {
        moveTo(first);
        const Piece& piece = pieces_[piece_];
        const std::int64_t to = std::min(end, piece.at + piece.count);
        if (!piece.silent()) {
            const std::int64_t shift = piece.at - piece.source;
            const std::int64_t found = firstInSource(first - shift, to - shift);
            if (found >= 0) return found + shift;
        }
        first = to;
    }
    return -1;
}

std::int64_t LoudSearch::lastLoud(std::int64_t first, std::int64_t end) {
    while (first < end) {
        moveTo(end - 1);
        const Piece& piece = pieces_[piece_];
        const std::int64_t from = std::max(first, piece.at);
        if (!piece.silent()) {
            const std::int64_t shift = piece.at - piece.source;
            const std::int64_t found = lastInSource(from - shift, end - shift);
            if (found >= 0) return found + shift;
        }
        end = from;
    }
    return -1;
}

std::int64_t LoudSearch::quickLoud(std::int64_t first, std::int64_t end) {
    if (end - first < kBlock) return -1;
    moveTo(end - 1);
    const Piece& piece = pieces_[piece_];
    if (piece.silent()) return -1;
    const std::int64_t shift = piece.at - piece.source;
    const std::int64_t from = std::max(first, piece.at) - shift;
    std::int64_t block = (end - shift) / kBlock - 1;
    for (int looked = 0; looked < kQuickBlocks && block * kBlock >= from; ++looked, --block)
        if (certainlyLoud(block)) return block * kBlock + shift;
    return -1;
}

}  // namespace tarnwick::sound
