#pragma once

#include <vector>

#include "sound/samples/audio_format.h"

namespace tarnwick::sound {

// The codecs that are written into WAV: OutputFormat::codec, and indices of wavCodecs().
enum WavCodec : int { kPcmCodec, kALawCodec, kMuLawCodec, kImaAdpcm, kMsAdpcm, kGsm610 };

struct WavCodecInfo {
    const char* name;
    // All that the codec can be written in, by rate, bits and channels. Bits are those of a coded
    // sample, 0 where a sample has no number of its own.
    std::vector<AudioFormat> formats;
};

// By WavCodec. Any thread.
const std::vector<WavCodecInfo>& wavCodecs();

}  // namespace tarnwick::sound
