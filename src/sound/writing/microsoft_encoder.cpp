#include "sound/writing/microsoft_encoder.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "sound/samples/adpcm.h"
#include "sound/samples/quantiser.h"
#include "sound/writing/header_writer.h"

namespace tarnwick::sound {

namespace {

constexpr std::size_t kHeadBytes = 7;  // of a block, for each channel
constexpr int kLeastStep = 16;
constexpr int kMostStep = 32767;  // decoders may store it in 16 bits

// One channel of a block, encoded.
struct Coded {
    std::size_t predictor{};
    int firstStep = kLeastStep;
    int lastStep = kLeastStep;
    double noise = std::numeric_limits<double>::max();  // sum of squared errors
    std::vector<unsigned char> codes;
};

int predicted(const AdpcmWeights& weights, int last, int before) {
    return (last * weights[0] + before * weights[1]) >> 8;
}

// Encodes a channel with one predictor and first step, and keeps the result if it is better than
// `best`. Gives up once it is worse or needs a step above kMostStep, which the predictor with zero
// weights never does.
void code(const std::vector<int>& samples, std::size_t predictor, int firstStep, Coded& best) {
    const AdpcmWeights& weights = kStandardWeights[predictor];
    Coded tried{predictor, firstStep, firstStep, 0.0, {}};
    tried.codes.resize(samples.size() - 2);
    int before = samples[0];
    int last = samples[1];
    int step = firstStep;
    for (std::size_t i = 2; i < samples.size() && tried.noise < best.noise; ++i) {
        const int guess = predicted(weights, last, before);
        const int half = samples[i] < guess ? -step / 2 : step / 2;
        const int difference = std::clamp((samples[i] - guess + half) / step, -8, 7);
        before = last;
        last = std::clamp(guess + difference * step, -32768, 32767);
        const int error = samples[i] - last;
        tried.noise += static_cast<double>(error) * error;
        tried.codes[i - 2] = static_cast<unsigned char>(difference & 15);
        step = std::max(step * kMicrosoftGrowth[tried.codes[i - 2]] >> 8, kLeastStep);
        if (step > kMostStep) return;
    }
    tried.lastStep = step;
    if (tried.noise < best.noise) best = std::move(tried);
}

// A first step that suits a predictor: half the mean of its errors in the first frames.
int openingStep(const std::vector<int>& samples, const AdpcmWeights& weights) {
    constexpr std::size_t kOpening = 24;
    const std::size_t end = std::min(samples.size(), kOpening);
    int sum = 0;
    for (std::size_t i = 2; i < end; ++i)
        sum += std::abs(samples[i] - predicted(weights, samples[i - 1], samples[i - 2]));
    return std::clamp(sum / static_cast<int>(2 * (end - 2)), kLeastStep, kMostStep);
}

// Starts with what was best in the previous block, so that the others give up sooner.
Coded nearest(const std::vector<int>& samples, std::size_t predictorBefore, int stepBefore) {
    Coded best;
    for (std::size_t tried = 0; tried < kStandardWeights.size(); ++tried) {
        const std::size_t predictor = (predictorBefore + tried) % kStandardWeights.size();
        code(samples, predictor, stepBefore, best);
        code(samples, predictor, openingStep(samples, kStandardWeights[predictor]), best);
    }
    return best;
}

// 256 bytes per channel for each 11025 Hz, as other writers use.
std::size_t blockBytes(const AudioFormat& format) {
    return static_cast<std::size_t>(256 * format.channels * std::max(1, format.rate / 11025));
}

}  // namespace

MicrosoftEncoder::MicrosoftEncoder(const AudioFormat& format, std::int64_t frames, AtomicFile& file)
    : file_(file),
      channels_(static_cast<std::size_t>(format.channels)),
      blockFrames_((blockBytes(format) / channels_ - kHeadBytes) * 2 + 2),
      block_(blockBytes(format)) {
    const std::vector<unsigned char> header =
        adpcmHeader(format, frames, static_cast<std::int64_t>(block_.size()),
                    static_cast<std::int64_t>(blockFrames_));
    file_.write(header.data(), header.size());
}

void MicrosoftEncoder::write(const double* interleaved, std::int64_t frames) {
    const std::size_t whole = blockFrames_ * channels_;
    auto left = static_cast<std::size_t>(frames) * channels_;
    while (left > 0) {
        const std::size_t held = pending_.size();
        const std::size_t count = std::min(left, whole - held);
        pending_.resize(held + count);
        quantise(interleaved, count, {.bits = 16},
                 reinterpret_cast<unsigned char*>(&pending_[held]));
        interleaved += count;
        left -= count;
        if (pending_.size() == whole) encodeBlock();
    }
}

void MicrosoftEncoder::finish() {
    if (pending_.empty()) return;
    while (pending_.size() < blockFrames_ * channels_)
        pending_.push_back(pending_[pending_.size() - channels_]);
    encodeBlock();
}

void MicrosoftEncoder::encodeBlock() {
    const auto put16 = [this](std::size_t at, int value) {
        block_[at] = static_cast<unsigned char>(value);
        block_[at + 1] = static_cast<unsigned char>(value >> 8);
    };
    std::fill(block_.begin(), block_.end(), 0);
    std::vector<int> samples(blockFrames_);
    for (std::size_t channel = 0; channel < channels_; ++channel) {
        for (std::size_t i = 0; i < blockFrames_; ++i)
            samples[i] = pending_[i * channels_ + channel];
        const Coded coded = nearest(samples, predictors_[channel], steps_[channel]);
        predictors_[channel] = coded.predictor;
        steps_[channel] = coded.lastStep;
        block_[channel] = static_cast<unsigned char>(coded.predictor);
        put16(channels_ + 2 * channel, coded.firstStep);
        put16(3 * channels_ + 2 * channel, samples[1]);
        put16(5 * channels_ + 2 * channel, samples[0]);
        for (std::size_t i = 0; i < coded.codes.size(); ++i) {
            // The codes of the channels alternate; the upper half of a byte comes first.
            const std::size_t at = i * channels_ + channel;
            const int shift = at % 2 == 0 ? 4 : 0;
            block_[kHeadBytes * channels_ + at / 2] |=
                static_cast<unsigned char>(coded.codes[i] << shift);
        }
    }
    file_.write(block_.data(), block_.size());
    pending_.clear();
}

}  // namespace tarnwick::sound
