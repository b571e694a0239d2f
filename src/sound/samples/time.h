#pragma once

#include <cstdint>

namespace tarnwick::sound {

// Conversions between milliseconds and frames. `rate` is in frames per second and positive; times
// and frames are not negative.

// The frame at a time: ms x rate / 1000, rounded to nearest, halves to even.
constexpr std::int64_t frameAt(std::int64_t ms, int rate) {
    const std::int64_t scaled = ms * rate;
    const std::int64_t whole = scaled / 1000;
    const std::int64_t rest = scaled % 1000;
    return whole + (rest > 500 || (rest == 500 && whole % 2 != 0) ? 1 : 0);
}

// The last frame at or before a time.
constexpr std::int64_t frameFloor(std::int64_t ms, int rate) { return ms * rate / 1000; }

// The first frame at or after a time.
constexpr std::int64_t frameCeil(std::int64_t ms, int rate) { return (ms * rate + 999) / 1000; }

// The time of a frame, rounded down. For durations, positions and the ends of silences.
constexpr std::int64_t msFloor(std::int64_t frame, int rate) { return frame * 1000 / rate; }

// The time of a frame, rounded up. For the starts of silences.
constexpr std::int64_t msCeil(std::int64_t frame, int rate) {
    return (frame * 1000 + rate - 1) / rate;
}

}  // namespace tarnwick::sound
