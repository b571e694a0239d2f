#include "sound/writing/rate_blocks.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"
#include "sound/writing/sound_writer.h"

namespace tarnwick::sound {

namespace {

// Values in a block, few enough to stay in the processor's cache through all the steps.
constexpr std::int64_t kBlockValues = 32768;
// Values in an independent block, long compared with its lead-in.
constexpr std::int64_t kLargeBlockValues = 262144;
// With fewer independent blocks splitting is not worth it: the whole takes a fraction of a second.
constexpr std::int64_t kLeastBlocks = 4;
// A stretch of at least this length is worth a thread.
constexpr std::int64_t kLongFrames = 1 << 20;
// Frames fed to the resampler at a time.
constexpr std::int64_t kChunkFrames = 16384;
// The library's filters extend over less than this many frames of the lower rate.
constexpr std::int64_t kFilterFrames = 1024;
// Blocks begin at multiples of this many steps of the ratio, as the library counts several at once.
constexpr std::int64_t kStepsTogether = 16;

std::int64_t roundedUp(std::int64_t value, std::int64_t step) {
    return (value + step - 1) / step * step;
}

}  // namespace

// Determined by comparing blocks with a single pass for many ratios; the tests repeat some of each
// kind.
bool splitsExactly(int fromRate, int toRate) {
    const int common = std::gcd(fromRate, toRate);
    const int from = fromRate / common;
    const int to = toRate / common;
    // Small ratios are computed in the frequency domain, most with their own block length.
    constexpr int kSmall = 24;
    if (from <= kSmall && to <= kSmall) {
        constexpr std::pair<int, int> kExact[] = {{1, 2},  {1, 3},  {1, 4},  {1, 8},  {1, 12},
                                                  {1, 16}, {1, 24}, {3, 4},  {3, 8},  {3, 2},
                                                  {3, 1},  {6, 1},  {12, 1}, {24, 1}, {8, 3}};
        return std::ranges::find(kExact, std::pair{from, to}) != std::end(kExact);
    }
    // With larger numbers than this the library's ratio is no longer exact.
    constexpr int kLargest = 2000;
    if (std::min(from, to) < 10 || std::max(from, to) > kLargest) return false;
    // Between a half and about two thirds, a first step lowers the rate in the frequency domain.
    return to <= from / 2 || 10 * to >= 7 * from;
}

const double* withChannels(const double* in, std::int64_t frames, int from, int to,
                           std::vector<double>& out) {
    if (from == to) return in;
    out.resize(static_cast<std::size_t>(frames * to));
    for (std::int64_t i = 0; i < frames; ++i) {
        if (to == 2) {
            out[2 * i] = out[2 * i + 1] = in[i];
        } else {
            out[i] = (in[2 * i] + in[2 * i + 1]) * 0.5;
        }
    }
    return out.data();
}

// If channels are merged or doubled, the rate is changed while there is only one.
RateBlocks::RateBlocks(const FrameReader& sound, std::int64_t first, std::int64_t end, int rate,
                       int channels)
    : sound_(sound),
      first_(first),
      framesIn_(end - first),
      from_(sound.format().rate),
      to_(rate),
      channels_(std::min(sound.format().channels, channels)),
      framesOut_(resampledLength(framesIn_, from_, to_)) {
    blockIn_ = from_ == to_ ? kBlockValues / channels_ : kChunkFrames;
    if (splitsExactly(from_, to_)) {
        const std::int64_t common = std::gcd(from_, to_);
        const std::int64_t stepIn = kStepsTogether * (from_ / common);
        const std::int64_t stepOut = kStepsTogether * (to_ / common);
        const std::int64_t steps = kLargeBlockValues / channels_ / stepOut;  // at least 4
        if (framesOut_ >= kLeastBlocks * steps * stepOut) {
            blockIn_ = steps * stepIn;
            blockOut_ = steps * stepOut;
            lead_ = roundedUp(kFilterFrames * (from_ / to_ + 1), stepIn);
        }
    }
    if (from_ != to_ && blockOut_ == 0) following_.emplace(from_, to_, channels_, framesIn_);
    count_ = (framesIn_ + blockIn_ - 1) / blockIn_;
}

bool RateBlocks::isLong() const { return std::max(framesIn_, framesOut_) >= kLongFrames; }

void RateBlocks::readInto(std::int64_t at, std::int64_t count, std::vector<double>& scratch,
                          std::vector<double>& frames) const {
    const int channels = sound_.format().channels;
    std::vector<double>& read = channels == channels_ ? frames : scratch;
    read.resize(static_cast<std::size_t>(count * channels));
    sound_.read(first_ + at, count, read.data());
    withChannels(read.data(), count, channels, channels_, frames);
}

void RateBlocks::copyStored(Coding coding) {
    if (from_ == to_) stored_ = coding;
}

void RateBlocks::make(std::int64_t number, SoundBlock& made, const std::function<bool()>& givenUp) {
    std::vector<double>& block = made.values;
    if (blockOut_ != 0) return makeAlone(number, block, givenUp);
    if (givenUp()) throw SoundError(SoundFailure::Cancelled, "the writing was called off");
    const std::int64_t at = number * blockIn_;
    const std::int64_t count = std::min(blockIn_, framesIn_ - at);
    if (stored_) {
        made.stored.resize(static_cast<std::size_t>(count * channels_ * bytesOf(*stored_)));
        if (sound_.readStored(first_ + at, count, *stored_, made.stored.data())) return;
        made.stored.clear();
    }
    if (!following_) return readInto(at, count, scratch_, block);
    readInto(at, count, scratch_, frames_);
    block = following_->process(frames_.data(), count);
    if (number + 1 < count_) return;
    const std::vector<double>& rest = following_->finish();
    block.insert(block.end(), rest.begin(), rest.end());
}

void RateBlocks::makeAlone(std::int64_t number, std::vector<double>& block,
                           const std::function<bool()>& givenUp) const {
    const std::int64_t firstOut = number * blockOut_;
    const auto wanted =
        static_cast<std::size_t>(std::min(blockOut_, framesOut_ - firstOut) * channels_);
    std::int64_t at = std::max<std::int64_t>(number * blockIn_ - lead_, 0);
    // Values of the lead-in, which belong to the block before.
    auto skip = static_cast<std::size_t>((firstOut - resampledLength(at, from_, to_)) * channels_);
    Resampler resampler(from_, to_, channels_, framesIn_ - at);
    std::vector<double> scratch;
    std::vector<double> frames;
    block.reserve(wanted);
    const auto take = [&](const std::vector<double>& ready) {
        const std::size_t passed = std::min(skip, ready.size());
        skip -= passed;
        const std::size_t taken = std::min(ready.size() - passed, wanted - block.size());
        const auto begin = ready.begin() + static_cast<std::ptrdiff_t>(passed);
        block.insert(block.end(), begin, begin + static_cast<std::ptrdiff_t>(taken));
    };
    while (block.size() < wanted) {
        if (givenUp()) throw SoundError(SoundFailure::Cancelled, "the writing was called off");
        // Never 0, as no ratio that splits is that extreme.
        const std::int64_t most = kChunkFrames * from_ / to_;
        const std::int64_t count = std::min({kChunkFrames, most, framesIn_ - at});
        if (count == 0) {
            take(resampler.finish());
            return;
        }
        readInto(at, count, scratch, frames);
        take(resampler.process(frames.data(), count));
        at += count;
    }
}

}  // namespace tarnwick::sound
