#pragma once

#include <cstdint>
#include <vector>

#include "sound/samples/audio_format.h"
#include "sound/samples/companding.h"

namespace tarnwick::sound {

// The bytes before the samples in a file of `frames` frames. The samples must follow, and a byte of
// padding if they take an odd number of bytes.

// WAV: plain PCM in 8 to 32 bits, 32-bit floating point, or 8 bits A-law or mu-law. RF64 (EBU Tech
// 3306) if the sizes do not fit the 32 bits of a WAV.
std::vector<unsigned char> wavHeader(const AudioFormat& format, std::int64_t frames,
                                     Companding law = Companding::None);

// WAV with Microsoft ADPCM, in blocks of `blockBytes` bytes for `blockFrames` frames; the last
// block is complete. Throws SoundError(BadFormat) if the sizes do not fit into 32 bits.
std::vector<unsigned char> adpcmHeader(const AudioFormat& format, std::int64_t frames,
                                       std::int64_t blockBytes, std::int64_t blockFrames);

// AIFF for PCM in 8 to 32 bits, AIFC for floating point. Throws SoundError(BadFormat) if the sizes
// do not fit into 32 bits.
std::vector<unsigned char> aiffHeader(const AudioFormat& format, std::int64_t frames);

}  // namespace tarnwick::sound
