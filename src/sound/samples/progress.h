#pragma once

#include <functional>
#include <stop_token>

#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

// How long work reports and is told to give up. `percent` (may be empty) is called from the
// working thread with 0 to 100, each value once at most, rising. When a stop is requested the work
// throws SoundError(Cancelled) soon.
struct Progress {
    std::function<void(int percent)> percent;
    std::stop_token stop;
};

// Throws SoundError(Cancelled) when a stop was requested.
inline void checkStop(const std::stop_token& stop) {
    if (stop.stop_requested()) throw SoundError(SoundFailure::Cancelled, "the work was called off");
}

}  // namespace tarnwick::sound
