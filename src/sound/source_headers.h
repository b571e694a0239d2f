#pragma once

#include <optional>

#include "sound/source_file.h"
#include "sound/stored_sound.h"

namespace tarnwick::sound {

// Where the samples of an uncompressed file lie. None when the content is not of that kind. A kind
// that is recognised but holds no usable sound throws SoundError: NotASound for an unknown coding,
// a rate outside 1 to 768000, channels outside 1 to 2 or no frame; Damaged when the header ends
// early.
std::optional<StoredSound> readWaveHeader(const SourceFile& file);  // RIFF, RF64
std::optional<StoredSound> readAiffHeader(const SourceFile& file);  // AIFF, AIFC

// Throws NotASound unless rate and channels are within the limits above and there is a frame.
void checkUsable(const StoredSound& sound);

}  // namespace tarnwick::sound
