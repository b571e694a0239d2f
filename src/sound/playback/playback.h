#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "sound/playback/frame_ring.h"
#include "sound/playback/patient_device.h"
#include "sound/samples/frame_reader.h"

namespace tarnwick::sound {

// A stretch of a sound.
struct Stretch {
    std::shared_ptr<const FrameReader> sound;
    std::int64_t first{};
    std::int64_t end{};

    std::int64_t frames() const { return end - first; }
};

// Plays one stretch on the sound device, or in silence if there is none. Used by one thread.
class Playback {
  public:
    Playback(Stretch stretch, PatientDevice& device);
    ~Playback();  // falls silent at once

    // Buffers some of the sound for the device; false if it has enough for now. Throws what reading
    // the sound throws.
    bool feed();

    void start();  // begins, or continues after hold()
    void hold();

    // Checks the device. If it has gone away or is stuck, playing continues without one.
    void watch(std::chrono::steady_clock::time_point now);

    bool audible() const { return device_.isOpen(); }  // false if it plays in silence
    std::int64_t frames() const { return stretch_.frames(); }
    // Frames that the device has played (nothing if there is none or it cannot tell) and taken (all
    // if there is none).
    std::optional<std::int64_t> played() const { return device_.played(); }
    std::int64_t taken() const { return audible() ? device_.taken() : frames(); }

  private:
    Stretch stretch_;
    PatientDevice& device_;
    std::shared_ptr<FrameRing> ring_;  // the device may keep it longer
    std::int64_t fed_ = 0;
    std::int64_t lastTaken_{};
    std::optional<std::int64_t> lastPlayed_;
    std::chrono::steady_clock::time_point lastSign_{};
    std::vector<double> block_;
    std::vector<float> samples_;
};

}  // namespace tarnwick::sound
