#include "sound/sound_writer.h"

#include <algorithm>
#include <new>
#include <optional>
#include <vector>

#include "sound/atomic_file.h"
#include "sound/encoder.h"
#include "sound/resampler.h"
#include "sound/sound_error.h"

namespace tarnwick::sound {

namespace {

// Small enough to stay in the processor's cache through all the steps.
constexpr std::int64_t kBlockFrames = 16384;

void check(const FrameReader& sound, std::int64_t first, std::int64_t end,
           const OutputFormat& output) {
    if (first < 0 || first > end || end > sound.frames()) {
        throw SoundError(SoundFailure::BadRange, "a stretch outside the sound");
    }
    const auto countable = [](int channels) { return channels == 1 || channels == 2; };
    const int rate = output.format.rate;
    if (!countable(output.format.channels) || !countable(sound.format().channels) ||
        rate < kLowestRate || rate > kHighestRate) {
        throw SoundError(SoundFailure::BadFormat, "a rate or channel count that is not written");
    }
}

// Mono to stereo copies, stereo to mono averages. Into `out` unless nothing is to be changed.
const double* withChannels(const double* in, std::int64_t frames, int from, int to,
                           std::vector<double>& out) {
    if (from == to) return in;
    out.resize(static_cast<std::size_t>(frames * to));
    for (std::int64_t i = 0; i < frames; ++i) {
        if (to == 2) {
            out[2 * i] = out[2 * i + 1] = in[i];
        } else {
            out[i] = (in[2 * i] + in[2 * i + 1]) * 0.5;
        }
    }
    return out.data();
}

// Tells each percent once and heeds a request to stop.
class Course {
  public:
    Course(const Progress& progress, std::int64_t whole) : progress_(progress), whole_(whole) {}

    void at(std::int64_t done) {
        if (progress_.stop.stop_requested()) {
            throw SoundError(SoundFailure::Cancelled, "the writing was called off");
        }
        const int percent = whole_ > 0 ? static_cast<int>(done * 100 / whole_) : 100;
        if (percent > last_ && progress_.percent) progress_.percent(percent);
        last_ = std::max(last_, percent);
    }

  private:
    const Progress& progress_;
    std::int64_t whole_;
    int last_ = -1;
};

void encode(const FrameReader& sound, std::int64_t first, std::int64_t end,
            const OutputFormat& output, AtomicFile& file, Course& course) {
    const AudioFormat from = sound.format();
    const AudioFormat& to = output.format;
    const std::int64_t frames = end - first;
    std::optional<Resampler> resampler;
    if (from.rate != to.rate) {
        // Where channels are merged or doubled, the rate is changed while there is one.
        resampler.emplace(from.rate, to.rate, std::min(from.channels, to.channels), frames);
    }
    const auto encoder = makeEncoder(output, resampledLength(frames, from.rate, to.rate), file);
    std::vector<double> block(static_cast<std::size_t>(kBlockFrames * from.channels));
    std::vector<double> mixed;
    const int between = resampler ? std::min(from.channels, to.channels) : to.channels;
    const auto encodeResampled = [&](const std::vector<double>& ready) {
        const auto count = static_cast<std::int64_t>(ready.size()) / between;
        encoder->write(withChannels(ready.data(), count, between, to.channels, mixed), count);
    };
    for (std::int64_t at = first; at < end;) {
        course.at(at - first);
        const std::int64_t count = std::min(kBlockFrames, end - at);
        sound.read(at, count, block.data());
        const double* values = withChannels(block.data(), count, from.channels, between, mixed);
        if (resampler) {
            encodeResampled(resampler->process(values, count));
        } else {
            encoder->write(values, count);
        }
        at += count;
    }
    if (resampler) encodeResampled(resampler->finish());
    encoder->finish();
}

}  // namespace

void writeSound(const FrameReader& sound, std::int64_t first, std::int64_t end,
                const OutputFormat& output, const std::filesystem::path& target,
                const Progress& progress) try {
    check(sound, first, end, output);
    AtomicFile file(target);
    Course course(progress, end - first);
    encode(sound, first, end, output, file, course);
    course.at(end - first);
    file.commit();
} catch (const std::bad_alloc&) {
    throw SoundError(SoundFailure::NoSpace, "no memory for writing the sound");
}

}  // namespace tarnwick::sound
