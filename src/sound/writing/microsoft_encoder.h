#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sound/writing/encoder.h"

namespace tarnwick::sound {

// Writes WAV of Microsoft ADPCM. For each channel of a block it tries several predictors and first
// steps and keeps what comes nearest to the sound. The last block is filled up with its last
// frame; the fact chunk tells the true length.
class MicrosoftEncoder : public Encoder {
  public:
    // Writes the header. Throws SoundError; BadFormat for more frames than the 32-bit sizes of a
    // WAV can tell.
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
    // Of the block before, by channel.
    std::array<std::size_t, 2> predictors_ = {};
    std::array<int, 2> steps_ = {16, 16};
};

}  // namespace tarnwick::sound
