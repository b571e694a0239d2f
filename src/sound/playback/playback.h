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
    std::int64_t first = 0;
    std::int64_t end = 0;

    std::int64_t frames() const { return end - first; }
};

// One stretch on its way to the sound device, or to nobody when there is none. Used by one thread.
class Playback {
  public:
    Playback(Stretch stretch, PatientDevice& device);
    ~Playback();  // falls silent at once

    // Hands on some of what the device will soon want; false when it has enough for now. Throws
    // what reading the sound throws.
    bool feed();

    void start();  // begins, or goes on after hold()
    void hold();

    // Looks after the device, which may have gone away or got stuck; from then on there is none.
    void watch(std::chrono::steady_clock::time_point now);

    bool audible() const { return device_.isOpen(); }  // false: nobody hears it, time passes alone
    std::int64_t frames() const { return stretch_.frames(); }
    // Frames that the device took and played; nothing where there is no device, or it cannot tell.
    std::optional<std::int64_t> played() const { return device_.played(); }
    std::int64_t taken() const { return audible() ? device_.taken() : frames(); }

  private:
    Stretch stretch_;
    PatientDevice& device_;
    std::shared_ptr<FrameRing> ring_;  // the device may keep it longer
    std::int64_t fed_ = 0;
    std::int64_t lastTaken_ = -1;
    std::int64_t lastPlayed_ = -1;
    std::chrono::steady_clock::time_point lastSign_{};
    std::vector<double> block_;
    std::vector<float> samples_;
};

}  // namespace tarnwick::sound
