#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "sound/writing/atomic_file.h"
#include "sound/writing/sound_writer.h"

namespace tarnwick::sound {

// Encodes frames into a sound file of one container. Used by one thread.
class Encoder {
  public:
    virtual ~Encoder() = default;

    // Appends `frames` frames, interleaved, in parts of full scale. Throws SoundError.
    virtual void write(const double* interleaved, std::int64_t frames) = 0;

    // The coding in which writeStored() accepts frames, if there is one.
    virtual std::optional<Coding> storedCoding() const { return {}; }
    // Appends whole frames in that coding unchanged. Throws SoundError.
    virtual void writeStored(std::span<const std::uint8_t>) {}

    // Completes the file; no write may follow. Throws SoundError.
    virtual void finish() = 0;
};

// Creates the encoder for `output.container`. `frames` is the total number that will be written, so
// that headers are right from the start. `file` must outlive the encoder. Throws
// SoundError(BadFormat).
std::unique_ptr<Encoder> makeEncoder(const OutputFormat& output, std::int64_t frames,
                                     AtomicFile& file);

}  // namespace tarnwick::sound
