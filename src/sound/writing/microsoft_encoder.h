#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sound/writing/encoder.h"

namespace tarnwick::sound {

// Writes WAV with Microsoft ADPCM. For each channel of a block it tries several predictors and
// first steps and keeps the result closest to the sound. The last block is padded with the last
// frame; the fact chunk holds the true length.
class MicrosoftEncoder : public Encoder {
  public:
    // Writes the header. Throws SoundError; BadFormat for more frames than the 32-bit sizes of a
    // WAV allow.
    MicrosoftEncoder(const AudioFormat& format, std::int64_t frames, AtomicFile& file);

    void write(const double* interleaved, std::int64_t frames) override;
    void finish() override;

  private:
    void encodeBlock();

    AtomicFile& file_;
    std::size_t channels_;
    std::size_t blockFrames_;
    std::vector<std::int16_t> pending_;  // interleaved, less than a block
    std::vector<unsigned char> block_;
    // Those of the previous block, by channel.
    std::array<std::size_t, 2> predictors_ = {};
    std::array<int, 2> steps_ = {16, 16};
};

}  // namespace tarnwick::sound
