#include "sound/reading/scratch_decoder.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <thread>
#include <vector>

#include "sound/reading/peaks_builder.h"
#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"
#include "sound/samples/steady_percent.h"

namespace tarnwick::sound {

namespace {

// Frames decoded at a time: few enough to be still in the cache when written and measured.
constexpr std::int64_t kTurnFrames = 16 * 1024;
// Frames that the first stream decodes past the joint to compare with the second.
constexpr std::int64_t kCheckFrames = 2048;

// Decodes one sound into one scratch file, by one stream or by two at once.
class Decoding {
  public:
    Decoding(const StoredSound& sound, std::stop_token stop)
        : sound_(sound),
          frameBytes_(std::int64_t{bytesOf(sound.coding)} * sound.format.channels),
          scratch_(SourceFile::scratch(sound.frames * frameBytes_)),
          stop_(std::move(stop)),
          peaks_(sound.format.channels, sound.frames) {
        sound_.offset = 0;
    }

    // Decodes from `first` up to `end` or the end of the stream; returns the frame reached.
    template <class Report>
    std::int64_t run(SampleStream& stream, std::int64_t first, std::int64_t end, Report report) {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(kTurnFrames * frameBytes_));
        while (first < end && !givenUp_) {
            checkStop(stop_);
            // Turns end on peak boundaries, so that two turns share a peak only at the joint.
            const std::int64_t turnEnd = std::min(end, (first / kTurnFrames + 1) * kTurnFrames);
            const std::int64_t wanted = turnEnd - first;
            const std::int64_t frames = stream.decode(wanted, bytes.data());
            store(first, frames, bytes);
            first += frames;
            if (frames < wanted) break;
            report(first);
        }
        return first;
    }

    void giveUp() { givenUp_ = true; }

    // Decodes a little past the joint with the first stream. If the result differs from what the
    // second stream wrote, the first decodes the rest itself. Returns the end of the sound.
    std::int64_t proveJoint(SampleStream& stream, std::int64_t joint, std::int64_t end) {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(kCheckFrames * frameBytes_));
        const std::int64_t frames = stream.decode(kCheckFrames, bytes.data());
        bytes.resize(static_cast<std::size_t>(frames * frameBytes_));
        std::vector<std::uint8_t> other(bytes.size());
        other.resize(scratch_->readSome(joint * frameBytes_, other));
        joined_ = bytes == other;
        if (joined_) return end;
        scratch_->write(joint * frameBytes_, bytes);
        return run(stream, joint + frames, INT64_MAX, [](std::int64_t) {});
    }

    // Returns the sound, `frames` long. Recomputes the peaks that decoding could not measure.
    DecodedSound finished(std::int64_t frames, std::int64_t joint) {
        const bool foreseen = frames == sound_.frames && joined_ == (joint > 0);
        sound_.frames = frames;
        if (!foreseen) {
            peaks_ = buildPeaks(sound_, *scratch_, {{}, stop_});
        } else {
            const std::int64_t first = joint / Peaks::kFinestFrames * Peaks::kFinestFrames;
            const std::int64_t count = std::min(Peaks::kFinestFrames, frames - first);
            std::vector<std::uint8_t> bytes(static_cast<std::size_t>(count * frameBytes_));
            scratch_->read(first * frameBytes_, bytes);
            measureStretch(sound_, bytes.data(), first, count, peaks_);
            peaks_.makeCoarser();
        }
        return {sound_, scratch_, std::move(peaks_), joined_};
    }

  private:
    void store(std::int64_t first, std::int64_t frames, std::span<const std::uint8_t> bytes) {
        if (frames == 0) return;
        scratch_->write(first * frameBytes_,
                        bytes.first(static_cast<std::size_t>(frames * frameBytes_)));
        const std::int64_t skipped =
            (Peaks::kFinestFrames - first % Peaks::kFinestFrames) % Peaks::kFinestFrames;
        if (skipped < frames && first + frames <= sound_.frames)
            measureStretch(sound_, bytes.data() + skipped * frameBytes_, first + skipped,
                           frames - skipped, peaks_);
    }

    StoredSound sound_;
    std::int64_t frameBytes_;
    std::shared_ptr<SourceFile> scratch_;
    std::stop_token stop_;
    Peaks peaks_;
    bool joined_ = false;
    std::atomic<bool> givenUp_ = false;
};

// Decodes from `joint` to the end on a second thread while the caller decodes what comes before.
template <class Report>
std::int64_t runBoth(Decoding& decoding, const StreamMaker& streamFrom, std::int64_t joint,
                     Report report) {
    std::exception_ptr failed;
    std::int64_t end = 0;
    const std::unique_ptr<SampleStream> stream = streamFrom(0);
    {
        std::jthread helper([&] {
            try {
                end = decoding.run(*streamFrom(joint), joint, INT64_MAX, [](std::int64_t) {});
            } catch (...) {
                failed = std::current_exception();
                decoding.giveUp();
            }
        });
        try {
            const std::int64_t reached = decoding.run(*stream, 0, joint, report);
            if (reached < joint) {
                decoding.giveUp();
                helper.join();
                if (!failed) throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
            }
        } catch (...) {
            decoding.giveUp();
            throw;
        }
    }
    if (failed) std::rethrow_exception(failed);
    return decoding.proveJoint(*stream, joint, end);
}

}  // namespace

DecodedSound decodeToScratch(const StoredSound& sound, const StreamMaker& streamFrom,
                             std::int64_t joint, const Progress& progress) {
    Decoding decoding(sound, progress.stop);
    SteadyPercent percent(progress, joint > 0 ? joint : sound.frames);
    const auto report = [&](std::int64_t done) { percent.reached(done); };
    const std::int64_t frames = joint > 0 ? runBoth(decoding, streamFrom, joint, report)
                                          : decoding.run(*streamFrom(0), 0, INT64_MAX, report);
    if (frames < 1) throw SoundError(SoundFailure::NotASound, "no sound in the file");
    return decoding.finished(frames, joint);
}

}  // namespace tarnwick::sound
