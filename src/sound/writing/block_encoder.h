#pragma once

#include <sndfile.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "sound/samples/wav_codecs.h"
#include "sound/writing/encoder.h"

namespace tarnwick::sound {

// Writes WAV with IMA ADPCM or GSM 6.10, through libsndfile. The last block is padded with silence;
// the fact chunk holds the true length.
class BlockEncoder : public Encoder {
  public:
    // Throws SoundError; BadFormat for more frames than the 32-bit sizes of a WAV allow.
    BlockEncoder(WavCodec codec, const AudioFormat& format, std::int64_t frames, AtomicFile& file);
    ~BlockEncoder() override;

    void write(const double* interleaved, std::int64_t frames) override;
    void finish() override;

  private:
    class Target;
    struct Close {
        void operator()(SNDFILE* library) const { sf_close(library); }
    };

    void correctLength();

    AtomicFile& file_;
    std::int64_t frames_;
    int channels_;
    std::vector<short> samples_;
    std::unique_ptr<Target> target_;
    std::unique_ptr<SNDFILE, Close> library_;  // declared last, as closing it still writes
};

}  // namespace tarnwick::sound
