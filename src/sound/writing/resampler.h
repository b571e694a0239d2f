#pragma once

#include <cstdint>
#include <vector>

struct soxr;

namespace tarnwick::sound {

// Changes the sample rate of a stream of interleaved frames, with the soxr library at its very high
// quality. The result has exactly resampledLength() frames. Used by one thread.
class Resampler {
  public:
    // `frames` is the total number of input frames. Throws SoundError: BadFormat, or NoSpace if
    // memory runs out.
    Resampler(int fromRate, int toRate, int channels, std::int64_t frames);
    ~Resampler();
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    // Takes `frames` frames and returns the output that is ready, interleaved; valid until the next
    // call.
    const std::vector<double>& process(const double* interleaved, std::int64_t frames);

    // Returns the rest after all input.
    const std::vector<double>& finish();

  private:
    void pull(const double* interleaved, std::int64_t frames);

    ::soxr* soxr_ = nullptr;
    int channels_;
    double ratio_{};
    std::int64_t left_{};  // output frames still to be returned
    std::vector<double> out_;
};

}  // namespace tarnwick::sound
