#pragma once

#include "sound/reading/mp3_start.h"
#include "sound/reading/scratch_decoder.h"
#include "sound/reading/source_file.h"
#include "sound/samples/progress.h"

namespace tarnwick::sound {

// Decodes a whole MP3 file, using two threads for a long one. Cuts off the encoder's delay and
// padding if the file states them. Throws SoundError: NotASound, Damaged, NoSpace, Cancelled.
DecodedSound decodeMp3(const SourceFile& file, const Mp3Start& start, const Progress& progress);

}  // namespace tarnwick::sound
