#pragma once

#include <cstdint>
#include <vector>

struct soxr;

namespace tarnwick::sound {

// Changes the sample rate of a stream of interleaved frames, with the soxr library at its very high
// quality. The result has exactly resampledLength() frames. Used by one thread.
class Resampler {
  public:
    // `frames`: how many frames will come in. Throws SoundError: BadFormat, or NoSpace when memory
    // runs out.
    Resampler(int fromRate, int toRate, int channels, std::int64_t frames);
    ~Resampler();
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    // Takes `frames` frames in and gives what became ready, interleaved; valid until the next call.
    const std::vector<double>& process(const double* interleaved, std::int64_t frames);

    // All has come in: gives the rest.
    const std::vector<double>& finish();

  private:
    void pull(const double* interleaved, std::int64_t frames);

    ::soxr* soxr_ = nullptr;
    int channels_;
    double ratio_;
    std::int64_t left_;  // frames still to be given out
    std::vector<double> out_;
};

}  // namespace tarnwick::sound
