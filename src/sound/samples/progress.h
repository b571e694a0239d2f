#pragma once

#include <functional>
#include <stop_token>

#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

// How a long operation reports progress and is cancelled. `percent` (may be empty) is called from
// the working thread with rising values from 0 to 100, each at most once. Soon after a stop request
// the operation throws SoundError(Cancelled).
struct Progress {
    std::function<void(int percent)> percent;
    std::stop_token stop;
};

// Throws SoundError(Cancelled) if a stop was requested.
inline void checkStop(const std::stop_token& stop) {
    if (stop.stop_requested()) throw SoundError(SoundFailure::Cancelled, "the work was called off");
}

}  // namespace tarnwick::sound
