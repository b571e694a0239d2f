#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "sound/playback/audio_device.h"

namespace tarnwick::sound {

// The default sound device on a thread of its own, so that nobody waits long for a sound server
// that hangs: while it does, there is no device, and once it answers there is one again. Used by
// one thread; nothing throws but for memory.
class PatientDevice {
  public:
    PatientDevice();
    ~PatientDevice();
    PatientDevice(const PatientDevice&) = delete;
    PatientDevice& operator=(const PatientDevice&) = delete;

    void prepare();  // connects beforehand; not waited for

    // As those of AudioDevice; false too when the device takes too long.
    bool open(int rate, int channels, std::int64_t frames, std::shared_ptr<FrameRing> ring);
    bool start();
    // These are asked for and not waited for.
    void hold();
    void close();

    bool isOpen() const { return open_; }
    // While it is open, as those of AudioDevice.
    bool lost() const;
    std::int64_t taken() const;
    std::optional<std::int64_t> played() const;

  private:
    class Line;  // what both threads share

    std::shared_ptr<Line> line_;
    std::thread thread_;
    bool open_ = false;
};

}  // namespace tarnwick::sound
