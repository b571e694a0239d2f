#include "sound/samples/adpcm.h"

#include <algorithm>

#include "sound/samples/byte_order.h"

namespace tarnwick::sound {

namespace {

// Bytes at the beginning of a block, for each channel.
constexpr int kImaHead = 4;
constexpr int kMicrosoftHead = 7;

// From "Recommended Practices for Enhancing Digital Audio Compatibility in Multimedia Systems",
// IMA, 1992.
constexpr std::array<int, 89> kSteps = {
    7,     8,     9,     10,    11,    12,    13,    14,    16,    17,    19,   21,    23,
    25,    28,    31,    34,    37,    41,    45,    50,    55,    60,    66,   73,    80,
    88,    97,    107,   118,   130,   143,   157,   173,   190,   209,   230,  253,   279,
    307,   337,   371,   408,   449,   494,   544,   598,   658,   724,   796,  876,   963,
    1060,  1166,  1282,  1411,  1552,  1707,  1878,  2066,  2272,  2499,  2749, 3024,  3327,
    3660,  4026,  4428,  4871,  5358,  5894,  6484,  7132,  7845,  8630,  9493, 10442, 11487,
    12635, 13899, 15289, 16818, 18500, 20350, 22385, 24623, 27086, 29794, 32767};
constexpr std::array<int, 8> kStepMoves = {-1, -1, -1, -1, 2, 4, 6, 8};

constexpr int kLeastStep = 16;
constexpr int kMostStep = 1 << 20;  // real sound stays below it; stops overflow on crafted files

std::int16_t clipped(int value) {
    return static_cast<std::int16_t>(std::clamp(value, -32768, 32767));
}

struct ImaState {
    int value;
    int index;

    std::int16_t next(int code) {
        // Each part is truncated by itself, as encoders do it, rather than the sum once.
        const int step = kSteps[static_cast<std::size_t>(index)];
        int difference = step >> 3;
        if ((code & 4) != 0) difference += step;
        if ((code & 2) != 0) difference += step >> 1;
        if ((code & 1) != 0) difference += step >> 2;
        value = clipped((code & 8) != 0 ? value - difference : value + difference);
        index = std::clamp(index + kStepMoves[static_cast<std::size_t>(code & 7)], 0, 88);
        return static_cast<std::int16_t>(value);
    }
};

struct MicrosoftState {
    AdpcmWeights weights;
    int step;
    int last;
    int before;

    std::int16_t next(int code) {
        const auto sum = std::int64_t{last} * weights[0] + std::int64_t{before} * weights[1];
        const int predicted = static_cast<int>(sum >> 8);
        before = last;
        last = clipped(predicted + (code >= 8 ? code - 16 : code) * step);
        step = std::clamp(step * kMicrosoftGrowth[static_cast<std::size_t>(code)] >> 8, kLeastStep,
                          kMostStep);
        return static_cast<std::int16_t>(last);
    }
};

int signed16(const std::uint8_t* bytes) { return static_cast<std::int16_t>(little16(bytes)); }

}  // namespace

std::int64_t imaFrames(std::int64_t bytes, int channels) {
    const std::int64_t head = kImaHead * channels;
    return bytes < head ? 0 : 1 + (bytes - head) / head * 8;
}

std::int64_t microsoftFrames(std::int64_t bytes, int channels) {
    const std::int64_t head = kMicrosoftHead * channels;
    return bytes < head ? 0 : 2 + (bytes - head) * 2 / channels;
}

void decodeImaBlock(std::span<const std::uint8_t> block, int channels, std::int16_t* interleaved) {
    const std::int64_t frames = imaFrames(static_cast<std::int64_t>(block.size()), channels);
    if (frames == 0) return;
    for (int channel = 0; channel < channels; ++channel) {
        const std::uint8_t* bytes = block.data() + kImaHead * channel;
        ImaState state{signed16(bytes), std::min<int>(bytes[2], 88)};
        std::int16_t* out = interleaved + channel;
        *out = static_cast<std::int16_t>(state.value);
        out += channels;
        // The channels alternate every four bytes, which are eight samples.
        for (std::int64_t done = 1; done < frames; done += 8) {
            bytes += kImaHead * channels;
            for (int i = 0; i < 4; ++i) {
                out[0] = state.next(bytes[i] & 15);
                out[channels] = state.next(bytes[i] >> 4);
                out += 2 * channels;
            }
        }
    }
}

void decodeMicrosoftBlock(std::span<const std::uint8_t> block, int channels,
                          std::span<const AdpcmWeights> weights, std::int16_t* interleaved) {
    if (microsoftFrames(static_cast<std::int64_t>(block.size()), channels) == 0) return;
    const std::uint8_t* bytes = block.data();
    std::array<MicrosoftState, 2> states;
    for (int channel = 0; channel < channels; ++channel) {
        const std::size_t chosen = bytes[channel];
        const std::uint8_t* words = bytes + channels + 2 * channel;
        MicrosoftState& state = states[static_cast<std::size_t>(channel)];
        state.weights = weights[chosen < weights.size() ? chosen : 0];
        state.step = signed16(words);
        state.last = signed16(words + 2 * channels);
        state.before = signed16(words + 4 * channels);
        interleaved[channel] = static_cast<std::int16_t>(state.before);
        interleaved[channels + channel] = static_cast<std::int16_t>(state.last);
    }
    std::int16_t* out = interleaved + 2 * channels;
    MicrosoftState& first = states[0];
    MicrosoftState& second = states[static_cast<std::size_t>(channels - 1)];
    for (const std::uint8_t byte :
         block.subspan(static_cast<std::size_t>(kMicrosoftHead * channels))) {
        *out++ = first.next(byte >> 4);
        *out++ = second.next(byte & 15);
    }
}

}  // namespace tarnwick::sound
