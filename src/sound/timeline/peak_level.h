#pragma once

#include "sound/samples/progress.h"
#include "sound/timeline/silence_scan.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::sound {

// The exact largest |sample| of all channels in [range.first, range.end), in parts of full scale;
// 0 for an empty or silent stretch. Reads samples only where the peaks leave it open. Any thread.
// Throws SoundError: BadRange, Cancelled, and what reading the sound throws.
double peakLevel(const Timeline& timeline, FrameRange range, const Progress& progress = {});

}  // namespace tarnwick::sound
