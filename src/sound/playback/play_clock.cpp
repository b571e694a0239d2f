#include "sound/playback/play_clock.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::sound {

namespace {

constexpr double kJumpSeconds = 0.02;  // larger differences are noticeable
constexpr double kShare = 0.125;       // part of a small difference that each report corrects

}  // namespace

double PlayClock::expected(Time now) const {
    if (!running_) return base_;
    return base_ + std::chrono::duration<double>(now - anchor_).count() * rate_;
}

void PlayClock::run(Time now) {
    if (running_) return;
    anchor_ = now;
    running_ = true;
}

void PlayClock::hold(Time now) {
    base_ = static_cast<double>(position(now));
    running_ = false;
}

void PlayClock::report(Time now, std::int64_t frames) {
    const double at = expected(now);
    const double difference = static_cast<double>(frames) - at;
    const bool jumps = std::fabs(difference) > kJumpSeconds * rate_;
    base_ = at + difference * (jumps ? 1.0 : kShare);
    anchor_ = now;
}

std::int64_t PlayClock::position(Time now) {
    const auto at = static_cast<std::int64_t>(expected(now));
    told_ = std::max(told_, std::min(at, limit_));
    return told_;
}

}  // namespace tarnwick::sound
