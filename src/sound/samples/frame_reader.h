#pragma once

#include <cstdint>

#include "sound/samples/audio_format.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

// A finite sound that can be read anywhere, any number of times, from several threads at once.
class FrameReader {
  public:
    virtual ~FrameReader() = default;

    virtual AudioFormat format() const = 0;
    virtual std::int64_t frames() const = 0;

    // Reads `count` frames from `first` into `interleaved` (count x channels values). Values are
    // parts of full scale: an integer sample s of b bits is exactly s / 2^(b-1), a floating sample
    // is itself. The stretch lies inside the sound. Throws SoundError.
    virtual void read(std::int64_t first, std::int64_t count, double* interleaved) const = 0;

    // Copies the frames as bytes of `coding` when that takes no computing. Else false, and what
    // `bytes` then holds means nothing. The same stretch and errors as with read().
    virtual bool readStored(std::int64_t, std::int64_t, Coding, std::uint8_t*) const {
        return false;
    }
};

}  // namespace tarnwick::sound
