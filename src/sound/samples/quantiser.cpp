#include "sound/samples/quantiser.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace tarnwick::sound {

namespace {

// After adding 1.5 * 2^52 a double has no bits left for a fraction: the processor rounds to the
// nearest integer, and the low 32 bits of the sum are that integer in two's complement. Unlike one
// with lrint, a loop over this is vectorised.
constexpr double kRounder = 6755399441055744.0;

constexpr std::size_t kBlock = 1024;

void toIntegers(const double* values, std::size_t count, int bits, std::int32_t* out) {
    const double scale = std::ldexp(1.0, bits - 1);
    const double lowest = -scale;
    const double highest = scale - 1.0;
    for (std::size_t i = 0; i < count; ++i) {
        double value = values[i] * scale;
        value = value == value ? value : 0.0;
        value = value < lowest ? lowest : value;
        value = value > highest ? highest : value;
        out[i] = static_cast<std::int32_t>(
            static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(value + kRounder)));
    }
}

// `count` is at least 1.
void pack(const std::int32_t* samples, std::size_t count, const SampleLayout& layout,
          unsigned char* out) {
    switch (layout.bits) {
        case 8: {
            const int middle = layout.unsigned8 ? 128 : 0;
            for (std::size_t i = 0; i < count; ++i) {
                out[i] = static_cast<unsigned char>(samples[i] + middle);
            }
            break;
        }
        case 16:
            for (std::size_t i = 0; i < count; ++i) {
                const auto sample = static_cast<std::int16_t>(samples[i]);
                std::memcpy(out + 2 * i, &sample, 2);
            }
            break;
        case 24:
            // Writes four bytes each time; the next sample overwrites the fourth. The last sample
            // writes three, as nothing follows it.
            for (std::size_t i = 0; i + 1 < count; ++i)
                std::memcpy(out + 3 * i, &samples[i], 4);
            std::memcpy(out + 3 * (count - 1), &samples[count - 1], 3);
            break;
        default:
            std::memcpy(out, samples, 4 * count);
    }
}

void toFloats(const double* values, std::size_t count, unsigned char* out) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < count; ++i) {
        double value = values[i];
        value = value == value ? value : 0.0;
        value = value < -kLargest ? -kLargest : value;
        value = value > kLargest ? kLargest : value;
        const auto sample = static_cast<float>(value);
        std::memcpy(out + 4 * i, &sample, 4);
    }
}

void compand(const std::int32_t* samples, std::size_t count, Companding law, unsigned char* out) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = law == Companding::ALaw ? toALaw(samples[i]) : toMuLaw(samples[i]);
}

template <std::size_t kWidth>
void turnRound(unsigned char* bytes, std::size_t samples) {
    for (std::size_t i = 0; i < samples; ++i, bytes += kWidth)
        std::reverse(bytes, bytes + kWidth);
}

void toBigEndian(unsigned char* bytes, std::size_t samples, std::size_t width) {
    if (width == 2) turnRound<2>(bytes, samples);
    if (width == 3) turnRound<3>(bytes, samples);
    if (width == 4) turnRound<4>(bytes, samples);
}

}  // namespace

void quantise(const double* values, std::size_t count, const SampleLayout& layout,
              unsigned char* out) {
    static_assert(std::endian::native == std::endian::little);
    const auto width = static_cast<std::size_t>(layout.bytes());
    std::int32_t samples[kBlock];
    for (std::size_t done = 0; done < count; done += kBlock) {
        const std::size_t now = std::min(kBlock, count - done);
        unsigned char* place = out + done * width;
        if (layout.floating) {
            toFloats(values + done, now, place);
        } else if (layout.law != Companding::None) {
            toIntegers(values + done, now, 16, samples);
            compand(samples, now, layout.law, place);
        } else {
            toIntegers(values + done, now, layout.bits, samples);
            pack(samples, now, layout, place);
        }
        if (layout.bigEndian) toBigEndian(place, now, width);
    }
}

}  // namespace tarnwick::sound
