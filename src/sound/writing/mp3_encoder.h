#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "sound/writing/encoder.h"

struct lame_global_struct;

namespace tarnwick::sound {

// The constant bit rates, in bits per second and rising, that MP3 files of `rate` frames per second
// can have. Empty for rates that MP3 does not know. Asks the encoder: takes some 30 ms. Any thread.
std::vector<int> mp3BitRates(int rate);

// Writes MP3 of a constant bit rate, through LAME, at the level of the sound and without clipping.
// The length tag in front lets decoders give exactly the frames that were written; at the very
// lowest bit rates there is no room for it, and decoders give some 2,000 frames more.
class Mp3Encoder : public Encoder {
  public:
    // `bitRate` in bits per second, 1 or 2 channels. Throws SoundError(BadFormat) when the encoder
    // does not honour all three.
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
    double gain_;              // takes back what LAME turns the sound down
    std::size_t ownTagBytes_;  // of the length tag where LAME makes none, or 0
    std::vector<double> values_;
    std::vector<unsigned char> bytes_;
};

}  // namespace tarnwick::sound
