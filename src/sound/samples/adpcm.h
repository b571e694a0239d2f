#pragma once

#include <array>
#include <cstdint>
#include <span>

// Adaptive differential coding: every sample is four bits, what it differs from a prediction in
// units of a step that follows the sound (IMA, see there; Microsoft, "New Multimedia Data Types and
// Data Techniques", 1994). Each block begins with the predictor's whole state. A
// block that is cut off gives what is whole in it. Any bytes give some sound; nothing fails.

namespace tarnwick::sound {

// A pair of weights for the last two samples, in units of 1/256.
using AdpcmWeights = std::array<int, 2>;

// The pairs that every Microsoft ADPCM file has; others may follow in its header.
constexpr std::array<AdpcmWeights, 7> kStandardWeights = {
    {{256, 0}, {512, -256}, {0, 0}, {192, 64}, {240, 0}, {460, -208}, {392, -232}}};

// How the step of Microsoft's coding grows with the size of the last difference, in 1/256; by the
// code of four bits.
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
