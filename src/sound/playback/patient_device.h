#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "sound/playback/audio_device.h"

namespace tarnwick::sound {

// The default sound device on its own thread, so that callers never wait long for a hung sound
// server. While the server hangs there is no device; once it answers there is one again. Used by
// one thread. Throws nothing but std::bad_alloc.
class PatientDevice {
  public:
    PatientDevice();
    ~PatientDevice();
    PatientDevice(const PatientDevice&) = delete;
    PatientDevice& operator=(const PatientDevice&) = delete;

    void prepare();  // connects in advance, without waiting

    // As in AudioDevice; also false if the device takes too long.
    bool open(int rate, int channels, std::int64_t frames, std::shared_ptr<FrameRing> ring);
    bool start();
    // As in AudioDevice, without waiting.
    void hold();
    void close();

    bool isOpen() const { return open_; }
    // As in AudioDevice. lost() and taken() only while it is open; otherwise played() is nothing.
    bool lost() const;
    std::int64_t taken() const;
    std::optional<std::int64_t> played() const;

  private:
    class Line;  // state that both threads share

    std::shared_ptr<Line> line_;
    std::thread thread_;
    bool open_ = false;
};

}  // namespace tarnwick::sound
