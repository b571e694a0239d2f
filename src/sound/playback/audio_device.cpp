#include "sound/playback/audio_device.h"

#include <cubeb/cubeb.h>

#include <algorithm>
#include <utility>

#include "sound/playback/frame_ring.h"

namespace tarnwick::sound {

namespace {

// How much sound the device may buffer. Servers that can discard what they have not played yet
// start and stop at once even with a large buffer. With a small one, a server that has already
// queued up to two seconds of silence, as a sink without hardware does, starves for that long.
constexpr int kLatencyMs = 2000;
constexpr std::int64_t kMostLatency = 96000;  // the library's limit, in frames

}  // namespace

AudioDevice::~AudioDevice() { disconnect(); }

bool AudioDevice::connect() {
    return context_ || cubeb_init(&context_, "Tarnwick", nullptr) == CUBEB_OK;
}

void AudioDevice::disconnect() {
    close();
    if (context_) cubeb_destroy(context_);
    context_ = nullptr;
}

bool AudioDevice::open(int rate, int channels, std::int64_t frames,
                       std::shared_ptr<FrameRing> ring) {
    close();
    if (lost_.load()) disconnect();
    ring_ = std::move(ring);
    channels_ = channels;
    frames_ = frames;
    taken_ = 0;
    gaps_ = 0;
    lost_ = false;
    const bool kept = context_ != nullptr;
    if (connect() && openStream(rate, channels)) return true;
    // The connection does not work. If it is an old one, the sound server may have been restarted.
    disconnect();
    if (kept && connect() && openStream(rate, channels)) return true;
    disconnect();
    return false;
}

bool AudioDevice::openStream(int rate, int channels) {
    cubeb_stream_params params{};
    params.format = CUBEB_SAMPLE_FLOAT32NE;
    params.rate = static_cast<std::uint32_t>(rate);
    params.channels = static_cast<std::uint32_t>(channels);
    params.layout = channels == 1 ? CUBEB_LAYOUT_MONO : CUBEB_LAYOUT_STEREO;
    params.prefs = CUBEB_STREAM_PREF_NONE;
    const std::int64_t ahead = std::int64_t{rate} * kLatencyMs / 1000;
    const auto latency = static_cast<std::uint32_t>(std::min(ahead, kMostLatency));
    const auto stateChanged = [](cubeb_stream* stream, void* self, cubeb_state state) {
        changed(stream, self, state);
    };
    if (cubeb_stream_init(context_, &stream_, "Tarnwick", nullptr, nullptr, nullptr, &params,
                          latency, fill, stateChanged, this) != CUBEB_OK) {
        stream_ = nullptr;
    }
    return stream_ != nullptr;
}

bool AudioDevice::start() {
    if (stream_ && cubeb_stream_start(stream_) == CUBEB_OK && !lost()) return true;
    lost_ = true;
    return false;
}

void AudioDevice::hold() {
    if (stream_) cubeb_stream_stop(stream_);
}

void AudioDevice::close() {
    if (!stream_) return;
    cubeb_stream_stop(stream_);
    cubeb_stream_destroy(stream_);
    stream_ = nullptr;
}

std::optional<std::int64_t> AudioDevice::played() const {
    std::uint64_t position = 0;
    if (!stream_ || cubeb_stream_get_position(stream_, &position) != CUBEB_OK) return std::nullopt;
    // Some servers keep advancing the position while they starve.
    return std::clamp<std::int64_t>(static_cast<std::int64_t>(position) - gaps_.load(), 0, taken());
}

// Called on the device's own thread, which must not block.
long AudioDevice::fill(cubeb_stream*, void* self, const void*, void* out, long frames) {
    auto& device = *static_cast<AudioDevice*>(self);
    auto* samples = static_cast<float*>(out);
    const auto wanted = static_cast<std::size_t>(frames * device.channels_);
    const std::size_t got = device.ring_->read(samples, wanted);
    std::fill(samples + got, samples + wanted, 0.0f);
    const auto gotFrames = static_cast<std::int64_t>(got) / device.channels_;
    // After the last frame, silence follows, as a stream that ends by itself does so too late.
    if (device.taken_ + gotFrames < device.frames_) device.gaps_ += frames - gotFrames;
    device.taken_ += gotFrames;
    return frames;
}

void AudioDevice::changed(cubeb_stream*, void* self, int state) {
    if (state == CUBEB_STATE_ERROR) static_cast<AudioDevice*>(self)->lost_ = true;
}

}  // namespace tarnwick::sound
