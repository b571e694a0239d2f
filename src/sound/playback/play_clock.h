#pragma once

#include <chrono>
#include <cstdint>

namespace tarnwick::sound {

// Tells which frame is heard now: runs with the steady clock and lets itself be put right by what
// the sound device reports, which may be coarse. Without reports it is a clock of its own, with
// which a sound can be played in silence. Counts frames from 0, never goes back. Not synchronised.
class PlayClock {
  public:
    using Time = std::chrono::steady_clock::time_point;

    explicit PlayClock(int rate = 1) : rate_(rate) {}

    void run(Time now);   // starts or goes on
    void hold(Time now);  // stands still
    bool running() const { return running_; }

    // The clock never passes this frame: nothing after it has been handed to the device.
    void limit(std::int64_t frames) { limit_ = frames; }

    // The device has played `frames` frames at `now`. Small differences are made up for little by
    // little, others at once.
    void report(Time now, std::int64_t frames);

    std::int64_t position(Time now);

  private:
    double expected(Time now) const;

    int rate_;
    bool running_ = false;
    Time anchor_{};  // when the clock stood at base_
    double base_ = 0.0;
    std::int64_t limit_ = 0;
    std::int64_t told_ = 0;  // the last position given out
};

}  // namespace tarnwick::sound
