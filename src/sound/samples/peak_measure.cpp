#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "sound/samples/sample_codecs.h"

// Computes peaks directly from packed samples. On processors with AVX2 the same loops handle eight
// samples at a time, and one shuffle unpacks eight 24-bit samples.

namespace tarnwick::sound {

namespace {

Peak outward(std::int32_t minimum, std::int32_t maximum) {
    const std::int64_t ceiling = (std::int64_t{maximum} + 0xFFFF) >> 16;
    return {static_cast<std::int16_t>(minimum >> 16),
            static_cast<std::int16_t>(std::min<std::int64_t>(ceiling, INT16_MAX))};
}

template <class Float>
Peak outward(Float minimum, Float maximum) {
    const auto bounded = [](double value) {
        return static_cast<std::int16_t>(std::clamp<double>(value, INT16_MIN, INT16_MAX));
    };
    return {bounded(std::floor(minimum * 32768.0)), bounded(std::ceil(maximum * 32768.0))};
}

template <class Codec>
using ValueOf = decltype(Codec::load(nullptr));

template <class Codec>
[[gnu::always_inline]] inline void unpackFrom(std::size_t i, const std::uint8_t* bytes,
                                              std::size_t count, ValueOf<Codec>* values) {
    if constexpr (requires { Codec::loadInside(bytes); })
        for (; i + 1 < count; ++i)
            values[i] = Codec::loadInside(bytes + i * Codec::kBytes);
    for (; i < count; ++i)
        values[i] = Codec::load(bytes + i * Codec::kBytes);
}

// The values of the channels are interleaved; `count` is a multiple of the number of channels.
template <class Value, int kChannels>
[[gnu::always_inline]] inline void findExtremes(const Value* values, std::size_t count,
                                                Peak* peaks) {
    constexpr std::size_t kLanes = 16;  // a multiple of kChannels, so each lane sees one channel
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

// Unpacks first, so that the comparison loop can be vectorised. `spread` unpacks as many values as
// it can and returns their number.
template <class Codec, int kChannels, class Spread>
[[gnu::always_inline]] inline void measureAs(const std::uint8_t* bytes, std::int64_t frames,
                                             Peak* peaks, Spread spread) {
    using Value = ValueOf<Codec>;
    std::array<Value, Peaks::kFinestFrames * kChannels> values;
    const auto count = static_cast<std::size_t>(frames * kChannels);
    unpackFrom<Codec>(spread(bytes, count, values.data()), bytes, count, values.data());
    findExtremes<Value, kChannels>(values.data(), count, peaks);
}

constexpr auto kSpreadNothing = [](auto...) { return std::size_t{0}; };

#if defined(__x86_64__)

// Moves 24-bit samples into the upper bytes of 32-bit values, eight at a time, and returns the
// number of values done. Each load reads four bytes past its samples, so the loop stops early.
[[gnu::target("avx2")]] std::size_t spread24(const std::uint8_t* bytes, std::size_t count,
                                             std::int32_t* values) {
    constexpr char kZero = -1;
    const __m256i places =
        _mm256_setr_epi8(kZero, 0, 1, 2, kZero, 3, 4, 5, kZero, 6, 7, 8, kZero, 9, 10, 11,  //
                         kZero, 0, 1, 2, kZero, 3, 4, 5, kZero, 6, 7, 8, kZero, 9, 10, 11);
    std::size_t i = 0;
    for (; i + 10 <= count; i += 8) {
        const auto* low = reinterpret_cast<const __m128i*>(bytes + 3 * i);
        const auto* high = reinterpret_cast<const __m128i*>(bytes + 3 * i + 12);
        const __m256i packed = _mm256_set_m128i(_mm_loadu_si128(high), _mm_loadu_si128(low));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(values + i),
                            _mm256_shuffle_epi8(packed, places));
    }
    return i;
}

template <class Codec, int kChannels>
[[gnu::target("avx2")]] void measureWide(const std::uint8_t* bytes, std::int64_t frames,
                                         Peak* peaks) {
    if constexpr (std::is_same_v<Codec, Integer24<false>>)
        measureAs<Codec, kChannels>(bytes, frames, peaks, spread24);
    else
        measureAs<Codec, kChannels>(bytes, frames, peaks, kSpreadNothing);
}

bool wideVectors() {
    static const bool present = __builtin_cpu_supports("avx2");
    return present;
}

template <class Codec, int kChannels>
void measureBest(const std::uint8_t* bytes, std::int64_t frames, Peak* peaks) {
    if (wideVectors())
        measureWide<Codec, kChannels>(bytes, frames, peaks);
    else
        measureAs<Codec, kChannels>(bytes, frames, peaks, kSpreadNothing);
}

#else

template <class Codec, int kChannels>
void measureBest(const std::uint8_t* bytes, std::int64_t frames, Peak* peaks) {
    measureAs<Codec, kChannels>(bytes, frames, peaks, kSpreadNothing);
}

#endif

}  // namespace

void measure(Coding coding, int channels, const std::uint8_t* bytes, std::int64_t frames,
             std::span<Peak> peaks) {
    withCodec(coding, [&](auto codec) {
        if (channels == 1)
            measureBest<decltype(codec), 1>(bytes, frames, peaks.data());
        else
            measureBest<decltype(codec), 2>(bytes, frames, peaks.data());
    });
}

}  // namespace tarnwick::sound
