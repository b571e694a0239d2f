#pragma once

#include <cstdint>
#include <span>

#include "sound/peaks.h"
#include "sound/stored_sound.h"

namespace tarnwick::sound {

int bytesOf(Coding coding);

// Turns stored samples into parts of full scale; what is no finite number becomes 0. `bytes` holds
// values.size() samples.
void unpack(Coding coding, const std::uint8_t* bytes, std::span<double> values);

// The extremes of one stretch of interleaved frames, one Peak for each channel (1 or 2). At most
// Peaks::kFinestFrames frames, at least 1.
void measure(Coding coding, int channels, const std::uint8_t* bytes, std::int64_t frames,
             std::span<Peak> peaks);

}  // namespace tarnwick::sound
