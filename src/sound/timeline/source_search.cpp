#include "sound/timeline/source_search.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::sound {

namespace {

constexpr std::int64_t kBlock = Peaks::kFinestFrames;
// How many blocks quickLoud() examines, going back from the end.
constexpr int kQuickBlocks = 12;

}  // namespace

SourceSearch::SourceSearch(const Source& source, double limit)
    : source_(source), limit_(limit), channels_(source.format().channels) {
    // Fetched once, as the searches below spend most of their time on peaks.
    for (int level = 0; level < source.peaks().levels(); ++level)
        peaks_.push_back({source.peaks().level(0, level).data(),
                          source.peaks().level(channels_ - 1, level).data()});
}

void SourceSearch::takeGain(double gain) {
    gain_ = gain;
    const double factor = std::abs(gain);
    const auto within = [&](int peak) { return peak / 32768.0 * factor <= limit_; };
    int peak = static_cast<int>(std::clamp(std::floor(limit_ / factor * 32768.0), 0.0, 32768.0));
    while (peak > 0 && !within(peak))
        --peak;
    while (peak < 32768 && within(peak + 1))
        ++peak;
    loudPeak_ = peak + 1;  // a peak of this value may be rounded up from a quiet sample
    // A peak at the end of its range means "or beyond", unless samples cannot exceed full scale.
    const bool bounded = !source_.format().floating;
    quietPeak_ = bounded && peak == 32768 ? peak : std::min(peak, 32766);
}

bool SourceSearch::quiet(int level, std::int64_t frame) const {
    // Frames are not negative, so a shift divides.
    const auto index = static_cast<std::size_t>(frame) >> (8 + 4 * level);
    static_assert(Peaks::kFinestFrames == 1 << 8 && Peaks::kStep == 1 << 4);
    for (const Peak* const channel : peaks_[static_cast<std::size_t>(level)]) {
        const Peak peak = channel[index];
        if (peak.maximum > quietPeak_ || peak.minimum < -quietPeak_) return false;
    }
    return true;
}

bool SourceSearch::certainlyLoud(std::int64_t block) const {
    for (const Peak* const channel : peaks_[0]) {
        const Peak peak = channel[block];
        if (peak.maximum > loudPeak_ || -peak.minimum > loudPeak_) return true;
    }
    return false;
}

// The coarsest level whose stretch around a frame is certainly quiet; -1 if there is none.
int SourceSearch::quietLevel(std::int64_t frame) const {
    int level = -1;
    const int levels = static_cast<int>(peaks_.size());
    while (level + 1 < levels && quiet(level + 1, frame))
        ++level;
    return level;
}

const LoudBits& SourceSearch::bits(std::int64_t block) {
    const LoudMaps::Key key{limit_, gain_};
    if (block == bitsBlock_ && key == bitsKey_) return bits_;
    if (const auto known = source_.loudMaps().find(key, block)) {
        bits_ = *known;
    } else {
        std::array<double, kBlock * 2> samples;
        const std::int64_t frames = std::min(kBlock, source_.frames() - block * kBlock);
        source_.read(block * kBlock, frames, samples.data());
        LoudBits made;
        for (int i = 0; i < static_cast<int>(frames) * channels_; ++i)
            if (std::abs(samples[static_cast<std::size_t>(i)] * gain_) > limit_)
                made.set(i / channels_);
        source_.loudMaps().keep(key, block, made);
        bits_ = made;
    }
    bitsKey_ = key;
    bitsBlock_ = block;
    return bits_;
}

std::int64_t SourceSearch::firstLoud(std::int64_t first, std::int64_t end) {
    while (first < end) {
        if (const int level = quietLevel(first); level >= 0) {
            const std::int64_t stretch = Peaks::framesAt(level);
            first = (first / stretch + 1) * stretch;
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

std::int64_t SourceSearch::lastLoud(std::int64_t first, std::int64_t end) {
    while (first < end) {
        if (const int level = quietLevel(end - 1); level >= 0) {
            const std::int64_t stretch = Peaks::framesAt(level);
            end = (end - 1) / stretch * stretch;
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

std::int64_t SourceSearch::quickLoud(std::int64_t first, std::int64_t end) const {
    std::int64_t block = end / kBlock - 1;
    for (int looked = 0; looked < kQuickBlocks && block * kBlock >= first; ++looked, --block)
        if (certainlyLoud(block)) return block * kBlock;
    return -1;
}

}  // namespace tarnwick::sound
