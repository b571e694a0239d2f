#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "sound/writing/encoder.h"

struct lame_global_struct;

namespace tarnwick::sound {

// The constant bit rates, in bits per second and rising, that MP3 files of `rate` frames per second
// can have. Empty for rates that MP3 does not support. Asks the encoder, which takes about 30 ms.
// Any thread.
std::vector<int> mp3BitRates(int rate);

// Writes MP3 of a constant bit rate, through LAME, without changing the level and without clipping.
// The length tag at the beginning lets decoders return exactly the frames that were written. At the
// lowest bit rates there is no room for it, and decoders return about 2,000 frames more.
class Mp3Encoder : public Encoder {
  public:
    // `bitRate` in bits per second, 1 or 2 channels. Throws SoundError(BadFormat) if the encoder
    // does not accept all three.
    Mp3Encoder(int rate, int channels, int bitRate, AtomicFile& file);

    void write(const double* interleaved, std::int64_t frames) override;
    void finish() override;

  private:
    struct Close {
        void operator()(lame_global_struct* lame) const;
    };
    using Lame = std::unique_ptr<lame_global_struct, Close>;

    static Lame makeLame(int rate, int channels, int bitRate);
    friend std::vector<int> mp3BitRates(int rate);

    void append(int encoded);
    void writeOwnTag();

    AtomicFile& file_;
    int channels_;
    int bitRate_;
    Lame lame_;
    double gain_;              // undoes LAME's attenuation of the sound
    std::size_t ownTagBytes_;  // size of the length tag if we write it instead of LAME, or 0
    std::vector<double> values_;
    std::vector<unsigned char> bytes_;
};

}  // namespace tarnwick::sound
