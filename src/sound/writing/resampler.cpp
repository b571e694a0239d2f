#include "sound/writing/resampler.h"

#include <soxr.h>

#include <algorithm>

#include "sound/samples/sound_error.h"
#include "sound/writing/sound_writer.h"

namespace tarnwick::sound {

namespace {

// Extra room, as one step can output more than the plain ratio.
constexpr std::int64_t kSlack = 4096;

}  // namespace

std::int64_t resampledLength(std::int64_t frames, int fromRate, int toRate) {
    const std::int64_t from = fromRate;
    return (2 * frames * toRate + from) / (2 * from);
}

Resampler::Resampler(int fromRate, int toRate, int channels, std::int64_t frames)
    : channels_(channels) {
    if (fromRate <= 0 || toRate <= 0 || channels <= 0) {
        throw SoundError(SoundFailure::BadFormat, "a rate or channel count that cannot be");
    }
    ratio_ = static_cast<double>(toRate) / fromRate;
    left_ = resampledLength(frames, fromRate, toRate);
    const soxr_io_spec_t samples = soxr_io_spec(SOXR_FLOAT64_I, SOXR_FLOAT64_I);
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ, 0);
    soxr_error_t error = nullptr;
    soxr_ = soxr_create(fromRate, toRate, static_cast<unsigned>(channels), &error, &samples,
                        &quality, nullptr);
    if (!soxr_ || error) {
        soxr_delete(soxr_);
        throw SoundError(SoundFailure::NoSpace, "no memory for changing the rate");
    }
}

Resampler::~Resampler() { soxr_delete(soxr_); }

const std::vector<double>& Resampler::process(const double* interleaved, std::int64_t frames) {
    out_.clear();
    pull(interleaved, frames);
    return out_;
}

const std::vector<double>& Resampler::finish() {
    out_.clear();
    pull(nullptr, 0);
    // The library rounds the length differently, so at most one frame is missing.
    out_.resize(out_.size() + static_cast<std::size_t>(left_ * channels_), 0.0);
    return out_;
}

// Feeds the library and appends its output to out_ until it has consumed everything or, at the end,
// returned everything.
void Resampler::pull(const double* interleaved, std::int64_t frames) {
    const bool atEnd = interleaved == nullptr;
    for (;;) {
        const std::size_t before = out_.size();
        const auto room = static_cast<std::int64_t>(frames * ratio_) + kSlack;
        out_.resize(before + static_cast<std::size_t>(room * channels_));
        std::size_t taken = 0;
        std::size_t given = 0;
        const soxr_error_t error =
            soxr_process(soxr_, interleaved, static_cast<std::size_t>(frames), &taken,
                         out_.data() + before, static_cast<std::size_t>(room), &given);
        if (error) throw SoundError(SoundFailure::NoSpace, "the rate cannot be changed");
        const std::int64_t kept = std::min(static_cast<std::int64_t>(given), left_);
        left_ -= kept;
        out_.resize(before + static_cast<std::size_t>(kept * channels_));
        if (atEnd ? given == 0 : static_cast<std::int64_t>(taken) == frames) return;
        if (!atEnd) {
            interleaved += taken * static_cast<std::size_t>(channels_);
            frames -= static_cast<std::int64_t>(taken);
        }
    }
}

}  // namespace tarnwick::sound
