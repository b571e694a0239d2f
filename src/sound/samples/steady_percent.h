#pragma once

#include <algorithm>
#include <cstdint>

#include "sound/samples/progress.h"

namespace tarnwick::sound {

// Turns amounts of work into progress reports: rising percentages, each at most once. One thread.
class SteadyPercent {
  public:
    SteadyPercent(const Progress& progress, std::int64_t whole)
        : progress_(progress), whole_(std::max<std::int64_t>(whole, 1)) {}

    // Reports that `done` units of the whole are done.
    void reached(std::int64_t done) {
        const int percent =
            static_cast<int>(std::clamp<std::int64_t>(done, 0, whole_) * 100 / whole_);
        if (percent < next_) return;
        next_ = percent + 1;
        if (progress_.percent) progress_.percent(percent);
    }

    // Throws SoundError(Cancelled) if the caller has asked to stop.
    void checkStop() const { sound::checkStop(progress_.stop); }

  private:
    const Progress& progress_;
    std::int64_t whole_;
    int next_ = 0;  // the lowest percentage not yet reported
};

}  // namespace tarnwick::sound
