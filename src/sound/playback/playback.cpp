#include "sound/playback/playback.h"

#include <algorithm>

namespace tarnwick::sound {

namespace {

constexpr std::int64_t kBlockFrames = 4096;

// Size of the buffer: more than the device takes at once at the start, which may be two seconds.
constexpr std::size_t kReadySeconds = 3;

// A device that makes no progress for this long is stuck. Virtual ones may take two seconds to
// start.
constexpr std::chrono::seconds kPatience{4};

}  // namespace

Playback::Playback(Stretch stretch, PatientDevice& device)
    : stretch_(std::move(stretch)),
      device_(device),
      ring_(std::make_shared<FrameRing>(
          kReadySeconds * static_cast<std::size_t>(stretch_.sound->format().rate) *
          static_cast<std::size_t>(stretch_.sound->format().channels))) {
    const AudioFormat format = stretch_.sound->format();
    if (frames() > 0) device_.open(format.rate, format.channels, frames(), ring_);
}

Playback::~Playback() { device_.close(); }

bool Playback::feed() {
    if (!audible()) return false;
    const int channels = stretch_.sound->format().channels;
    const auto room = static_cast<std::int64_t>(ring_->room()) / channels;
    const std::int64_t count = std::min({room, kBlockFrames, frames() - fed_});
    if (count <= 0) return false;
    const auto values = static_cast<std::size_t>(count * channels);
    block_.resize(values);
    samples_.resize(values);
    stretch_.sound->read(stretch_.first + fed_, count, block_.data());
    std::transform(block_.begin(), block_.end(), samples_.begin(),
                   [](double value) { return static_cast<float>(std::clamp(value, -1.0, 1.0)); });
    ring_->write(samples_.data(), values);
    fed_ += count;
    return true;
}

void Playback::start() {
    lastSign_ = std::chrono::steady_clock::now();
    if (audible() && !device_.start()) device_.close();
}

void Playback::hold() { device_.hold(); }

void Playback::watch(std::chrono::steady_clock::time_point now) {
    if (!audible()) return;
    const std::int64_t taken = device_.taken();
    const std::optional<std::int64_t> played = device_.played();
    if (taken != lastTaken_ || played != lastPlayed_) lastSign_ = now;
    lastTaken_ = taken;
    lastPlayed_ = played;
    if (device_.lost() || now - lastSign_ > kPatience) device_.close();
}

}  // namespace tarnwick::sound
