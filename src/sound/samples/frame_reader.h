#pragma once

#include <cstdint>

#include "sound/samples/audio_format.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

// A finite sound with random access. Several threads may read at once.
class FrameReader {
  public:
    virtual ~FrameReader() = default;

    virtual AudioFormat format() const = 0;
    virtual std::int64_t frames() const = 0;

    // Reads `count` frames from `first` into `interleaved` (count x channels values). Values are
    // parts of full scale: an integer sample s of b bits is exactly s / 2^(b-1), a floating sample
    // is unchanged. The stretch must lie inside the sound. Throws SoundError.
    virtual void read(std::int64_t first, std::int64_t count, double* interleaved) const = 0;

    // Copies the frames as bytes of `coding` if that needs no conversion. Otherwise returns false
    // and leaves `bytes` undefined. Range and errors as for read().
    virtual bool readStored(std::int64_t, std::int64_t, Coding, std::uint8_t*) const {
        return false;
    }
};

}  // namespace tarnwick::sound
