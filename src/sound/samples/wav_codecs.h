#pragma once

#include <vector>

#include "sound/samples/audio_format.h"

namespace tarnwick::sound {

// The codecs that WAV files are written with. Values of OutputFormat::codec and indices into
// wavCodecs().
enum WavCodec : int { kPcmCodec, kALawCodec, kMuLawCodec, kImaAdpcm, kMsAdpcm, kGsm610 };

struct WavCodecInfo {
    const char* name;
    // Every format the codec can be written in, ordered by rate, bits, channels. Bits are those of
    // a coded sample, 0 where the codec has no whole number of bits per sample.
    std::vector<AudioFormat> formats;
};

// Indexed by WavCodec. Any thread.
const std::vector<WavCodecInfo>& wavCodecs();

}  // namespace tarnwick::sound
