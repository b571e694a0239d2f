#pragma once

#include <cstdint>
#include <vector>

#include "sound/samples/audio_format.h"
#include "sound/samples/companding.h"

namespace tarnwick::sound {

// The bytes that stand before the samples in a file of `frames` frames. The samples follow, and a
// byte more where theirs are odd in number.

// WAV: plain PCM in 8 to 32 bits, 32-bit floating point, or 8 bits by a law. Past what the 32-bit
// sizes of a WAV can tell it is RF64 (EBU Tech 3306).
std::vector<unsigned char> wavHeader(const AudioFormat& format, std::int64_t frames,
                                     Companding law = Companding::None);

// WAV of Microsoft ADPCM, in blocks of `blockBytes` bytes for `blockFrames` frames; the last block
// is whole. Throws SoundError(BadFormat) when it does not fit into 32-bit sizes.
std::vector<unsigned char> adpcmHeader(const AudioFormat& format, std::int64_t frames,
                                       std::int64_t blockBytes, std::int64_t blockFrames);

// AIFF for PCM in 8 to 32 bits, AIFC for floating point. Throws SoundError(BadFormat) when the
// samples are more than the 32-bit sizes of the form can tell.
std::vector<unsigned char> aiffHeader(const AudioFormat& format, std::int64_t frames);

}  // namespace tarnwick::sound
