#include "sound/sample_coding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace tarnwick::sound {

namespace {

static_assert(std::endian::native == std::endian::little);

// Each codec loads one sample: integers as the upper bits of an int32, floating ones as they are.
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
    // The same in one step, where the byte behind the sample may be read too.
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

template <bool kBig>
struct Floating32 {
    static constexpr int kBytes = 4;
    static float load(const std::uint8_t* bytes) {
        const auto value = std::bit_cast<float>(loadWord<std::uint32_t, kBig>(bytes));
        return value == value ? value : 0.0f;
    }
};

template <bool kBig>
struct Floating64 {
    static constexpr int kBytes = 8;
    static double load(const std::uint8_t* bytes) {
        const auto value = std::bit_cast<double>(loadWord<std::uint64_t, kBig>(bytes));
        return value == value ? value : 0.0;
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

constexpr double kIntegerScale = 1.0 / 2147483648.0;

Peak outward(std::int32_t minimum, std::int32_t maximum) {
    const std::int64_t ceiling = (std::int64_t{maximum} + 0xFFFF) >> 16;
    return {static_cast<std::int16_t>(minimum >> 16),
            static_cast<std::int16_t>(std::min<std::int64_t>(ceiling, 32767))};
}

template <class Float>
Peak outward(Float minimum, Float maximum) {
    const auto bounded = [](double value) {
        return static_cast<std::int16_t>(std::clamp(value, -32768.0, 32767.0));
    };
    return {bounded(std::floor(minimum * 32768.0)), bounded(std::ceil(maximum * 32768.0))};
}

template <class Codec, int kChannels>
void measureAs(const std::uint8_t* bytes, std::int64_t frames, Peak* peaks) {
    using Value = decltype(Codec::load(nullptr));
    // Unpacked first: the loop of comparisons then runs on whole vectors.
    std::array<Value, Peaks::kFinestFrames * kChannels> values;
    const auto count = static_cast<std::size_t>(frames * kChannels);
    if constexpr (requires { Codec::loadInside(bytes); }) {
        for (std::size_t i = 0; i + 1 < count; ++i)
            values[i] = Codec::loadInside(bytes + i * Codec::kBytes);
        values[count - 1] = Codec::load(bytes + (count - 1) * Codec::kBytes);
    } else {
        for (std::size_t i = 0; i < count; ++i)
            values[i] = Codec::load(bytes + i * Codec::kBytes);
    }

    constexpr std::size_t kLanes = 16;  // a multiple of the channels: lanes never mix them
    std::array<Value, kLanes> minimum;
    std::array<Value, kLanes> maximum;
    minimum.fill(std::numeric_limits<Value>::max());
    maximum.fill(std::numeric_limits<Value>::lowest());
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes)
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            minimum[lane] = std::min(minimum[lane], values[i + lane]);
            maximum[lane] = std::max(maximum[lane], values[i + lane]);
        }
    for (std::size_t lane = 0; i < count; ++i, ++lane) {
        minimum[lane] = std::min(minimum[lane], values[i]);
        maximum[lane] = std::max(maximum[lane], values[i]);
    }
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        for (std::size_t lane = channel; lane < kLanes; lane += kChannels) {
            minimum[channel] = std::min(minimum[channel], minimum[lane]);
            maximum[channel] = std::max(maximum[channel], maximum[lane]);
        }
        peaks[channel] = outward(minimum[channel], maximum[channel]);
    }
}

}  // namespace

int bytesOf(Coding coding) {
    return withCodec(coding, [](auto codec) { return decltype(codec)::kBytes; });
}

void unpack(Coding coding, const std::uint8_t* bytes, std::span<double> values) {
    withCodec(coding, [&](auto codec) {
        using Codec = decltype(codec);
        constexpr bool kInteger = std::is_integral_v<decltype(Codec::load(nullptr))>;
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = Codec::load(bytes + i * Codec::kBytes) * (kInteger ? kIntegerScale : 1.0);
    });
}

void measure(Coding coding, int channels, const std::uint8_t* bytes, std::int64_t frames,
             std::span<Peak> peaks) {
    withCodec(coding, [&](auto codec) {
        if (channels == 1)
            measureAs<decltype(codec), 1>(bytes, frames, peaks.data());
        else
            measureAs<decltype(codec), 2>(bytes, frames, peaks.data());
    });
}

}  // namespace tarnwick::sound
