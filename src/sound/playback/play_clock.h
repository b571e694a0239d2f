#pragma once

#include <chrono>
#include <cstdint>

namespace tarnwick::sound {

// Tells which frame is heard now. Runs with the steady clock and is corrected by the reports of the
// sound device, which may be coarse. Without reports it runs freely, for playing in silence. Counts
// frames from 0 and never goes back. Not thread-safe.
class PlayClock {
  public:
    using Time = std::chrono::steady_clock::time_point;

    explicit PlayClock(int rate = 1) : rate_(rate) {}

    void run(Time now);   // starts or continues
    void hold(Time now);  // stops the clock
    bool running() const { return running_; }

    // Sets the frame that the clock never passes, as the device has been given nothing after it.
    void limit(std::int64_t frames) { limit_ = frames; }

    // Call when the device has played `frames` frames at `now`. Small differences are corrected
    // gradually, others at once.
    void report(Time now, std::int64_t frames);

    std::int64_t position(Time now);

  private:
    double expected(Time now) const;

    int rate_;
    bool running_ = false;
    Time anchor_{};  // the time when the clock was at base_
    double base_{};
    std::int64_t limit_ = 0;
    std::int64_t told_ = 0;  // the last position returned
};

}  // namespace tarnwick::sound
