#pragma once

#include <array>
#include <cstdint>
#include <span>

// Adaptive differential PCM: each sample is four bits, its difference from a prediction in units of
// a step size that adapts to the sound (IMA: source in adpcm.cpp; Microsoft: "New Multimedia Data
// Types and Data Techniques", 1994). Each block begins with the complete state of the predictor.
// A truncated block yields the complete samples it holds. Any bytes decode to some sound without an
// error.

namespace tarnwick::sound {

// A pair of weights for the last two samples, in units of 1/256.
using AdpcmWeights = std::array<int, 2>;

// The pairs that every Microsoft ADPCM file has; its header may add others.
constexpr std::array<AdpcmWeights, 7> kStandardWeights = {
    {{256, 0}, {512, -256}, {0, 0}, {192, 64}, {240, 0}, {460, -208}, {392, -232}}};

// Factor by which Microsoft's step size changes after a sample, in units of 1/256, indexed by the
// sample's four-bit code.
constexpr std::array<int, 16> kMicrosoftGrowth = {230, 230, 230, 230, 307, 409, 512, 614,
                                                  768, 614, 512, 409, 307, 230, 230, 230};

// Frames that `bytes` of one block hold.
std::int64_t imaFrames(std::int64_t bytes, int channels);
std::int64_t microsoftFrames(std::int64_t bytes, int channels);

// Decodes one block (1 or 2 channels) into `interleaved`, which has room for its frames.
void decodeImaBlock(std::span<const std::uint8_t> block, int channels, std::int16_t* interleaved);
void decodeMicrosoftBlock(std::span<const std::uint8_t> block, int channels,
                          std::span<const AdpcmWeights> weights, std::int16_t* interleaved);

}  // namespace tarnwick::sound
