#include "sound/reading/peaks_builder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <thread>
#include <vector>

#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"
#include "sound/samples/steady_percent.h"

namespace tarnwick::sound {

namespace {

// Frames that a thread takes at a time: few enough to stay in its cache while being measured.
constexpr std::int64_t kTurnFrames = 32 * 1024;

// Builds the peaks of one sound. Any number of threads may call work() and share it.
class Build {
  public:
    Build(const StoredSound& sound, const SourceFile& file, std::stop_token stop)
        : sound_(sound),
          file_(file),
          stop_(std::move(stop)),
          peaks_(sound.format.channels, sound.frames) {}

    template <class Report>
    void work(Report report) {
        const std::int64_t frameBytes = sound_.format.channels * bytesOf(sound_.coding);
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(kTurnFrames * frameBytes));
        while (!givenUp_) {
            const std::int64_t first = next_.fetch_add(kTurnFrames);
            if (first >= sound_.frames) return;
            if (stop_.stop_requested()) {
                givenUp_ = true;
                throw SoundError(SoundFailure::Cancelled, "opening was cancelled");
            }
            const std::int64_t frames = std::min(kTurnFrames, sound_.frames - first);
            file_.read(sound_.offset + first * frameBytes,
                       std::span(bytes).first(static_cast<std::size_t>(frames * frameBytes)));
            measureStretch(sound_, bytes.data(), first, frames, peaks_);
            report(first + frames);
        }
    }

    void giveUp() { givenUp_ = true; }
    Peaks& peaks() { return peaks_; }

  private:
    const StoredSound& sound_;
    const SourceFile& file_;
    std::stop_token stop_;
    Peaks peaks_;
    std::atomic<std::int64_t> next_ = 0;
    std::atomic<bool> givenUp_ = false;
};

}  // namespace

void measureStretch(const StoredSound& sound, const std::uint8_t* bytes, std::int64_t first,
                    std::int64_t frames, Peaks& peaks) {
    const int channels = sound.format.channels;
    const std::int64_t frameBytes = channels * bytesOf(sound.coding);
    const std::span<Peak> left = peaks.finest(0);
    const std::span<Peak> right = peaks.finest(channels - 1);
    std::array<Peak, 2> measured;
    for (std::int64_t done = 0; done < frames; done += Peaks::kFinestFrames) {
        measure(sound.coding, channels, bytes + done * frameBytes,
                std::min(Peaks::kFinestFrames, frames - done), measured);
        const auto index = static_cast<std::size_t>((first + done) / Peaks::kFinestFrames);
        left[index] = measured[0];
        if (channels == 2) right[index] = measured[1];
    }
}

Peaks buildPeaks(const StoredSound& sound, const SourceFile& file, const Progress& progress) {
    Build build(sound, file, progress.stop);
    SteadyPercent percent(progress, sound.frames);
    std::exception_ptr failed;
    {
        std::jthread helper([&] {
            try {
                build.work([](std::int64_t) {});
            } catch (...) {
                failed = std::current_exception();
                build.giveUp();
            }
        });
        try {
            build.work([&](std::int64_t done) { percent.reached(done); });
        } catch (...) {
            build.giveUp();
            throw;
        }
    }
    if (failed) std::rethrow_exception(failed);
    percent.reached(sound.frames);  // the helper may have taken the last turns
    build.peaks().makeCoarser();
    return std::move(build.peaks());
}

}  // namespace tarnwick::sound
