#pragma once

#include <bit>
#include <cstdint>

// The two laws of ITU-T G.711: eight bits per sample, with finer resolution for quieter samples.

namespace tarnwick::sound {

enum class Companding { None, ALaw, MuLaw };

// Both laws keep the position of the highest set bit of the magnitude and the four bits below it.
inline int companded(int magnitude, int exponent) {
    return exponent << 4 | (magnitude >> (exponent + 3) & 15);
}

// The code of a 16-bit sample.
inline std::uint8_t toALaw(std::int32_t sample) {
    const int magnitude = sample < 0 ? ~sample : sample;
    const int width = std::bit_width(static_cast<unsigned>(magnitude));
    const int code = width > 8 ? companded(magnitude, width - 8) : magnitude >> 4;
    return static_cast<std::uint8_t>(code ^ (sample < 0 ? 0x55 : 0xD5));
}

inline std::uint8_t toMuLaw(std::int32_t sample) {
    constexpr int kBias = 132;
    constexpr int kLoudest = 32767 - kBias;
    int magnitude = sample < 0 ? -sample : sample;
    magnitude = (magnitude < kLoudest ? magnitude : kLoudest) + kBias;
    const int exponent = std::bit_width(static_cast<unsigned>(magnitude)) - 8;
    return static_cast<std::uint8_t>(companded(magnitude, exponent) ^ (sample < 0 ? 0x7F : 0xFF));
}

}  // namespace tarnwick::sound
