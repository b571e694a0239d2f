#pragma once

#include "sound/reading/source_file.h"
#include "sound/samples/peaks.h"
#include "sound/samples/progress.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

// Reads a stored sound once, on two threads, and returns its complete peaks. Reports progress from
// the calling thread. Throws SoundError.
Peaks buildPeaks(const StoredSound& sound, const SourceFile& file, const Progress& progress);

// Computes the finest peaks of the `frames` frames stored at `bytes`. `first` is the number of the
// first one, a multiple of Peaks::kFinestFrames.
void measureStretch(const StoredSound& sound, const std::uint8_t* bytes, std::int64_t first,
                    std::int64_t frames, Peaks& peaks);

}  // namespace tarnwick::sound
