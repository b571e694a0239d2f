#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "sound/samples/sample_coding.h"

// One codec type per coding of uncompressed samples, so that loops can be instantiated for each.

namespace tarnwick::sound {

static_assert(std::endian::native == std::endian::little);

// Each codec loads one sample: integers into the upper bits of an int32, floating ones unchanged.
template <class Word, bool kBig>
Word loadWord(const std::uint8_t* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    if constexpr (kBig && sizeof(Word) == 2) word = __builtin_bswap16(word);
    if constexpr (kBig && sizeof(Word) == 4) word = __builtin_bswap32(word);
    if constexpr (kBig && sizeof(Word) == 8) word = __builtin_bswap64(word);
    return word;
}

template <std::uint8_t kBias>
struct Integer8 {
    static constexpr int kBytes = 1;
    static std::int32_t load(const std::uint8_t* bytes) {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(*bytes ^ kBias) << 24);
    }
};

// The two codings of ITU-T G.711, expanded to 16 bits. A code is a sign, three bits of exponent and
// four of mantissa; A-law stores every other bit inverted, mu-law all of them.
constexpr std::int16_t aLawValue(int code) {
    code ^= 0x55;
    const int exponent = code >> 4 & 7;
    const int mantissa = (code & 15) * 16 + (exponent > 0 ? 264 : 8);
    const int value = mantissa << (exponent > 1 ? exponent - 1 : 0);
    return static_cast<std::int16_t>((code & 0x80) != 0 ? value : -value);
}

constexpr std::int16_t muLawValue(int code) {
    constexpr int kBias = 132;
    code ^= 0xFF;
    const int value = (((code & 15) * 8 + kBias) << (code >> 4 & 7)) - kBias;
    return static_cast<std::int16_t>((code & 0x80) != 0 ? -value : value);
}

template <std::int16_t (*kValue)(int)>
struct Law {
    static constexpr int kBytes = 1;
    static constexpr std::array<std::int32_t, 256> kValues = [] {
        std::array<std::int32_t, 256> values = {};
        for (std::size_t code = 0; code < values.size(); ++code)
            values[code] = kValue(static_cast<int>(code)) * 65536;
        return values;
    }();
    static std::int32_t load(const std::uint8_t* bytes) { return kValues[*bytes]; }
};

template <bool kBig>
struct Integer16 {
    static constexpr int kBytes = 2;
    static std::int32_t load(const std::uint8_t* bytes) {
        return static_cast<std::int32_t>(
            static_cast<std::uint32_t>(loadWord<std::uint16_t, kBig>(bytes)) << 16);
    }
};

template <bool kBig>
struct Integer24 {
    static constexpr int kBytes = 3;
    static std::int32_t load(const std::uint8_t* bytes) {
        const std::uint32_t high = kBig ? bytes[0] : bytes[2];
        const std::uint32_t low = kBig ? bytes[2] : bytes[0];
        return static_cast<std::int32_t>(high << 24 | std::uint32_t{bytes[1]} << 16 | low << 8);
    }
    // The same in a single load, for use where the byte after the sample may be read too.
    static std::int32_t loadInside(const std::uint8_t* bytes) {
        const auto word = loadWord<std::uint32_t, kBig>(bytes);
        return static_cast<std::int32_t>(kBig ? word & 0xFFFFFF00 : word << 8);
    }
};

template <bool kBig>
struct Integer32 {
    static constexpr int kBytes = 4;
    static std::int32_t load(const std::uint8_t* bytes) {
        return static_cast<std::int32_t>(loadWord<std::uint32_t, kBig>(bytes));
    }
};

// Larger values, infinities and NaN are not samples and load as 0: a single one would spoil
// everything computed from it.
constexpr float kLargestFloat = std::numeric_limits<float>::max();

template <bool kBig>
struct Floating32 {
    static constexpr int kBytes = 4;
    static float load(const std::uint8_t* bytes) {
        const auto value = std::bit_cast<float>(loadWord<std::uint32_t, kBig>(bytes));
        return std::abs(value) <= kLargestFloat ? value : 0.0f;
    }
};

template <bool kBig>
struct Floating64 {
    static constexpr int kBytes = 8;
    static double load(const std::uint8_t* bytes) {
        const auto value = std::bit_cast<double>(loadWord<std::uint64_t, kBig>(bytes));
        return std::abs(value) <= kLargestFloat ? value : 0.0;
    }
};

// Calls `work` with the codec of a coding.
template <class Work>
auto withCodec(Coding coding, Work work) {
    switch (coding) {
        case Coding::Unsigned8:
            return work(Integer8<0x80>{});
        case Coding::Signed8:
            return work(Integer8<0>{});
        case Coding::ALaw:
            return work(Law<aLawValue>{});
        case Coding::MuLaw:
            return work(Law<muLawValue>{});
        case Coding::Little16:
            return work(Integer16<false>{});
        case Coding::Little24:
            return work(Integer24<false>{});
        case Coding::Little32:
            return work(Integer32<false>{});
        case Coding::LittleFloat32:
            return work(Floating32<false>{});
        case Coding::LittleFloat64:
            return work(Floating64<false>{});
        case Coding::Big16:
            return work(Integer16<true>{});
        case Coding::Big24:
            return work(Integer24<true>{});
        case Coding::Big32:
            return work(Integer32<true>{});
        case Coding::BigFloat32:
            return work(Floating32<true>{});
        case Coding::BigFloat64:
            break;
    }
    return work(Floating64<true>{});
}

}  // namespace tarnwick::sound
