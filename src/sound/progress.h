#pragma once

#include <functional>
#include <stop_token>

namespace tarnwick::sound {

// How long work reports and is told to give up. `percent` (may be empty) is called from the
// working thread with 0 to 100, each value once at most, rising. When a stop is requested the work
// throws SoundError(Cancelled) soon.
struct Progress {
    std::function<void(int percent)> percent;
    std::stop_token stop;
};

}  // namespace tarnwick::sound
