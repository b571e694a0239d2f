#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

struct cubeb;
struct cubeb_stream;

namespace tarnwick::sound {

class FrameRing;

// The default sound device, through the cubeb library: one stream at a time. The connection is made
// at the first connect() or open() and kept. Any call may take as long as the sound server does.
// Used by one thread, except for lost(), taken() and played(), which another may call while the
// stream is open. Nothing throws.
class AudioDevice {
  public:
    AudioDevice() = default;
    ~AudioDevice();
    AudioDevice(const AudioDevice&) = delete;
    AudioDevice& operator=(const AudioDevice&) = delete;

    // Makes the connection in advance, which takes most of the time of the first open().
    bool connect();
    // Prepares a stream that takes its `frames` frames from `ring` and plays silence while the ring
    // is empty. Returns false if there is no device.
    bool open(int rate, int channels, std::int64_t frames, std::shared_ptr<FrameRing> ring);
    bool start();  // starts, or continues after hold(); false if the device is lost
    void hold();
    void close();  // ends the stream at once

    bool lost() const { return lost_.load(); }  // the device went away

    // Frames of the ring that the device has taken so far.
    std::int64_t taken() const { return taken_.load(); }
    // Frames of the ring that have been heard; nothing if the device cannot tell.
    std::optional<std::int64_t> played() const;

  private:
    static long fill(cubeb_stream*, void* self, const void*, void* out, long frames);
    static void changed(cubeb_stream*, void* self, int state);
    void disconnect();
    bool openStream(int rate, int channels);

    cubeb* context_ = nullptr;
    cubeb_stream* stream_ = nullptr;
    std::shared_ptr<FrameRing> ring_;
    int channels_{};
    std::int64_t frames_{};
    std::atomic<std::int64_t> taken_{};
    std::atomic<std::int64_t> gaps_{};  // frames of silence played because the ring ran dry
    std::atomic<bool> lost_{};
};

}  // namespace tarnwick::sound
