#include "sound/mp3_decoder.h"

#include <mpg123.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <exception>
#include <functional>
#include <thread>
#include <vector>

#include "sound/peaks_builder.h"
#include "sound/sound_error.h"
#include "sound/steady_percent.h"

namespace tarnwick::sound {

namespace {

constexpr std::int64_t kTurnFrames = 16 * 1024;
// Under this length a second decoder costs more than it saves.
constexpr std::int64_t kWorthSplitting = 1 << 20;
// A decoder that begins in the middle decodes so many frames before, to have the bits and the
// overlap that they leave to later ones.
constexpr long kPreFrames = 32;
// Two decoders join without a trace where the synthesis window of both stands at its beginning: it
// goes round in 16 blocks of 32 samples, and a frame has 36 blocks. (In the short frames of the
// rates under 32 kHz this holds only by luck; those are decoded in one go.)
constexpr std::int64_t kJointGrid = 4 * 1152;
constexpr int kLowestSplitRate = 32000;
// How much the first decoder decodes beyond the joint to see that the second gives the same.
constexpr std::int64_t kCheckFrames = 2048;

// One decoder on the file, giving floating samples in the format of the first frame.
class Decoder {
  public:
    explicit Decoder(const SourceFile& file) : file_(file) {
        handle_ = mpg123_new(nullptr, nullptr);
        if (!handle_) throw SoundError(SoundFailure::NoSpace, "no decoder can be made");
        try {
            start();
        } catch (...) {
            mpg123_delete(handle_);
            throw;
        }
    }
    ~Decoder() { mpg123_delete(handle_); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    int rate() const { return static_cast<int>(rate_); }
    int channels() const { return channels_; }
    std::int64_t frames() const { return mpg123_length(handle_); }

    // The last frame up to `wanted` at which two decoders join without a trace; 0 if there is none.
    std::int64_t joint(std::int64_t wanted) const {
        long encoderDelay = 0;
        long decoderDelay = 0;
        mpg123_getstate(handle_, MPG123_ENC_DELAY, &encoderDelay, nullptr);
        mpg123_getstate(handle_, MPG123_DEC_DELAY, &decoderDelay, nullptr);
        const std::int64_t cut = encoderDelay >= 0 ? encoderDelay + decoderDelay : 0;
        return std::max<std::int64_t>((wanted + cut) / kJointGrid * kJointGrid - cut, 0);
    }

    void seek(std::int64_t frame) {
        if (mpg123_seek(handle_, frame, SEEK_SET) != frame) damaged();
    }

    // Decodes up to interleaved.size() values; returns how many, 0 at the end.
    std::size_t decode(std::span<float> interleaved) {
        std::size_t bytes = 0;
        const int result =
            mpg123_read(handle_, interleaved.data(), interleaved.size_bytes(), &bytes);
        if (result != MPG123_OK && result != MPG123_DONE && result != MPG123_NEW_FORMAT) damaged();
        if (result == MPG123_NEW_FORMAT) {
            long rate = 0;
            int channels = 0;
            int encoding = 0;
            mpg123_getformat(handle_, &rate, &channels, &encoding);
            if (rate != rate_ || channels != channels_ || encoding != MPG123_ENC_FLOAT_32)
                damaged();
            if (bytes == 0) return decode(interleaved);
        }
        return bytes / sizeof(float);
    }

  private:
    [[noreturn]] static void damaged() {
        throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
    }

    static ::ssize_t readBytes(void* self, void* bytes, std::size_t count) {
        auto* const decoder = static_cast<Decoder*>(self);
        try {
            const std::size_t got = decoder->file_.readSome(
                decoder->at_, std::span(static_cast<std::uint8_t*>(bytes), count));
            decoder->at_ += static_cast<std::int64_t>(got);
            return static_cast<::ssize_t>(got);
        } catch (const SoundError&) {
            return -1;
        }
    }

    static ::off_t moveTo(void* self, ::off_t offset, int from) {
        auto* const decoder = static_cast<Decoder*>(self);
        if (from == SEEK_CUR) offset += decoder->at_;
        if (from == SEEK_END) offset += decoder->file_.size();
        if (offset < 0) return -1;
        return decoder->at_ = offset;
    }

    void start() {
        mpg123_param(handle_, MPG123_ADD_FLAGS,
                     MPG123_QUIET | MPG123_GAPLESS | MPG123_SKIP_ID3V2 | MPG123_FORCE_FLOAT, 0.0);
        mpg123_param(handle_, MPG123_PREFRAMES, kPreFrames, 0.0);
        mpg123_param(handle_, MPG123_RESYNC_LIMIT, -1, 0.0);
        mpg123_replace_reader_handle(handle_, &Decoder::readBytes, &Decoder::moveTo, nullptr);
        int encoding = 0;
        if (mpg123_open_handle(handle_, this) != MPG123_OK ||
            mpg123_getformat(handle_, &rate_, &channels_, &encoding) != MPG123_OK)
            throw SoundError(SoundFailure::NotASound, "no sound in the file");
        if (encoding != MPG123_ENC_FLOAT_32 || mpg123_scan(handle_) != MPG123_OK) damaged();
    }

    const SourceFile& file_;
    mpg123_handle* handle_ = nullptr;
    std::int64_t at_ = 0;  // byte that the decoder reads next
    long rate_ = 0;
    int channels_ = 0;
};

// Rounds to the nearest of 24 bits, halves to the even one, and clips.
void pack24(std::span<const float> values, std::uint8_t* bytes) {
    constexpr float kScale = 8388608.0f;
    for (const float value : values) {
        const float clipped = std::clamp(value * kScale, -kScale, kScale - 1.0f);
        const auto sample = static_cast<std::int32_t>(std::lrint(clipped));
        *bytes++ = static_cast<std::uint8_t>(sample);
        *bytes++ = static_cast<std::uint8_t>(sample >> 8);
        *bytes++ = static_cast<std::uint8_t>(sample >> 16);
    }
}

// The decoding of one file into one scratch file, in one stretch or in two at once.
class Decoding {
  public:
    Decoding(const StoredSound& sound, std::shared_ptr<SourceFile> scratch, std::stop_token stop)
        : sound_(sound),
          scratch_(std::move(scratch)),
          stop_(std::move(stop)),
          peaks_(sound.format.channels, sound.frames) {}

    // Decodes from `first` until `end` or the end of the file; returns where it ended.
    template <class Report>
    std::int64_t run(Decoder& decoder, std::int64_t first, std::int64_t end, Report report) {
        const int channels = sound_.format.channels;
        std::vector<float> values(static_cast<std::size_t>(kTurnFrames * channels));
        std::vector<std::uint8_t> bytes(values.size() * 3);
        while (first < end && !givenUp_) {
            if (stop_.stop_requested())
                throw SoundError(SoundFailure::Cancelled, "opening was cancelled");
            // Turns end on the grid of the peaks, so that no two turns share one but at the joint.
            const std::int64_t turnEnd = std::min(end, (first / kTurnFrames + 1) * kTurnFrames);
            const auto wanted = static_cast<std::size_t>((turnEnd - first) * channels);
            std::size_t got = 0;
            while (got < wanted) {
                const std::size_t more =
                    decoder.decode(std::span(values).first(wanted).subspan(got));
                if (more == 0) break;
                got += more;
            }
            const std::int64_t frames = static_cast<std::int64_t>(got) / channels;
            pack24(std::span(values).first(static_cast<std::size_t>(frames * channels)),
                   bytes.data());
            store(first, frames, bytes);
            first += frames;
            if (got < wanted) break;
            report(first);
        }
        return first;
    }

    void giveUp() { givenUp_ = true; }

    // Lets the decoder that has come to the joint go a little further. Where that is not what the
    // other one gave, it decodes the rest itself. Returns where the sound ends.
    std::int64_t proveJoint(Decoder& decoder, std::int64_t joint, std::int64_t end) {
        const int channels = sound_.format.channels;
        std::vector<float> values(static_cast<std::size_t>(kCheckFrames * channels));
        std::vector<std::uint8_t> bytes(values.size() * 3);
        std::vector<std::uint8_t> other(bytes.size());
        const std::size_t got = decoder.decode(values);
        const std::int64_t frames = static_cast<std::int64_t>(got) / channels;
        pack24(std::span(values).first(got), bytes.data());
        bytes.resize(got * 3);
        other.resize(scratch_->readSome(joint * frameBytes(), std::span(other).first(got * 3)));
        if (bytes == other) return end;
        peaksSpoilt_ = true;
        scratch_->write(joint * frameBytes(), bytes);
        return run(decoder, joint + frames, INT64_MAX, [](std::int64_t) {});
    }

    // The sound of `frames` in all; the peaks are made anew where decoding could not make them.
    DecodedSound finished(std::int64_t frames, std::int64_t joint) {
        const bool foreseen = frames == sound_.frames && !peaksSpoilt_;
        sound_.frames = frames;
        if (!foreseen) {
            peaks_ = buildPeaks(sound_, *scratch_, {{}, stop_});
        } else {
            const std::int64_t first = joint / Peaks::kFinestFrames * Peaks::kFinestFrames;
            const std::int64_t count = std::min(Peaks::kFinestFrames, frames - first);
            std::vector<std::uint8_t> bytes(static_cast<std::size_t>(count * frameBytes()));
            scratch_->read(first * frameBytes(), bytes);
            measureStretch(sound_, bytes.data(), first, count, peaks_);
            peaks_.makeCoarser();
        }
        return {sound_, scratch_, std::move(peaks_)};
    }

  private:
    std::int64_t frameBytes() const { return std::int64_t{3} * sound_.format.channels; }

    void store(std::int64_t first, std::int64_t frames, std::span<const std::uint8_t> bytes) {
        if (frames == 0) return;
        scratch_->write(first * frameBytes(),
                        bytes.first(static_cast<std::size_t>(frames * frameBytes())));
        const std::int64_t skipped =
            (Peaks::kFinestFrames - first % Peaks::kFinestFrames) % Peaks::kFinestFrames;
        if (skipped < frames && first + frames <= sound_.frames)
            measureStretch(sound_, bytes.data() + skipped * frameBytes(), first + skipped,
                           frames - skipped, peaks_);
    }

    StoredSound sound_;
    std::shared_ptr<SourceFile> scratch_;
    std::stop_token stop_;
    Peaks peaks_;
    bool peaksSpoilt_ = false;
    std::atomic<bool> givenUp_ = false;
};

// Decodes from `joint` to the end on a thread of its own while the caller decodes what is before.
std::int64_t runBoth(const SourceFile& file, Decoding& decoding, Decoder& decoder,
                     std::int64_t joint, const std::function<void(std::int64_t)>& report) {
    std::exception_ptr failed;
    std::int64_t end = 0;
    {
        std::jthread helper([&] {
            try {
                Decoder second(file);
                second.seek(joint);
                end = decoding.run(second, joint, INT64_MAX, [](std::int64_t) {});
            } catch (...) {
                failed = std::current_exception();
                decoding.giveUp();
            }
        });
        try {
            if (decoding.run(decoder, 0, joint, report) < joint)
                throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
        } catch (...) {
            decoding.giveUp();
            throw;
        }
    }
    if (failed) std::rethrow_exception(failed);
    return decoding.proveJoint(decoder, joint, end);
}

}  // namespace

DecodedSound decodeMp3(const SourceFile& file, const Progress& progress) {
    Decoder decoder(file);
    StoredSound sound;
    sound.format = {decoder.rate(), decoder.channels(), 24, false};
    sound.coding = Coding::Little24;
    sound.frames = decoder.frames();
    if (sound.frames < 1) throw SoundError(SoundFailure::NotASound, "no sound in the file");

    std::shared_ptr<SourceFile> scratch =
        SourceFile::scratch(sound.frames * sound.format.channels * 3);
    Decoding decoding(sound, scratch, progress.stop);
    const bool split = sound.frames >= kWorthSplitting && sound.format.rate >= kLowestSplitRate;
    const std::int64_t joint = split ? decoder.joint(sound.frames / 2) : 0;
    SteadyPercent percent(progress, split ? joint : sound.frames);
    const auto report = [&](std::int64_t done) { percent.reached(done); };
    const std::int64_t frames = joint > 0 ? runBoth(file, decoding, decoder, joint, report)
                                          : decoding.run(decoder, 0, INT64_MAX, report);
    if (frames < 1) throw SoundError(SoundFailure::NotASound, "no sound in the file");
    if (joint > 0 && frames <= joint)
        throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
    return decoding.finished(frames, joint);
}

}  // namespace tarnwick::sound
