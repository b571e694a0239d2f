#pragma once

#include <memory>
#include <optional>

#include "sound/peaks.h"
#include "sound/progress.h"
#include "sound/source_file.h"
#include "sound/stored_sound.h"

namespace tarnwick::sound {

// A compressed sound as samples of 24 bits in a scratch file of its own.
struct DecodedSound {
    StoredSound sound;
    std::shared_ptr<const SourceFile> file;
    Peaks peaks;
};

// Whether the file begins, behind tags and a little junk, with a run of MP3 frames that fit
// together. The decoder itself finds frames in any garbage.
bool looksLikeMp3(const SourceFile& file);

// Decodes a whole MP3 file, a long one on two threads; the encoder's delay and padding are cut off
// where the file tells them. Throws SoundError: NotASound, Damaged, NoSpace, Cancelled.
DecodedSound decodeMp3(const SourceFile& file, const Progress& progress);

}  // namespace tarnwick::sound
