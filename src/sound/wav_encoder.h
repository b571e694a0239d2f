#pragma once

#include <cstdint>
#include <vector>

#include "sound/encoder.h"
#include "sound/quantiser.h"

namespace tarnwick::sound {

// Writes WAV: plain PCM in 8 to 32 bits, or 32-bit floating point. Past what the 32-bit sizes of a
// WAV can tell it writes RF64 (EBU Tech 3306).
class WavEncoder : public Encoder {
  public:
    // Writes the header. Throws SoundError.
    WavEncoder(const AudioFormat& format, std::int64_t frames, AtomicFile& file);

    void write(const double* interleaved, std::int64_t frames) override;
    void finish() override;

  private:
    AtomicFile& file_;
    SampleLayout layout_;
    int channels_;
    std::int64_t dataBytes_;
    std::vector<unsigned char> bytes_;
};

// The bytes that stand before the samples in a WAV of `frames` frames.
std::vector<unsigned char> wavHeader(const AudioFormat& format, std::int64_t frames);

}  // namespace tarnwick::sound
