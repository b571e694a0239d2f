#pragma once

#include <cstdint>

#include "sound/samples/audio_format.h"

namespace tarnwick::sound {

// How a file stores one sample.
enum class Coding {
    Unsigned8,
    Signed8,
    ALaw,
    MuLaw,
    Little16,
    Little24,
    Little32,
    LittleFloat32,
    LittleFloat64,
    Big16,
    Big24,
    Big32,
    BigFloat32,
    BigFloat64,
};

// Interleaved samples in one stretch of a file.
struct StoredSound {
    AudioFormat format;
    Coding coding = Coding::Little16;
    std::int64_t offset = {};  // byte of the first frame
    std::int64_t frames = {};
};

}  // namespace tarnwick::sound
