#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "sound/samples/peaks.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

int bytesOf(Coding coding);

// The byte that silence consists of, for codings whose samples can be copied unchecked: plain
// integers. None for the others, as a float may be NaN, which must not be passed on.
std::optional<std::uint8_t> silentByte(Coding coding);

// Converts stored samples to parts of full scale; NaN and infinities become 0. `bytes` holds
// values.size() samples.
void unpack(Coding coding, const std::uint8_t* bytes, std::span<double> values);

// The extremes of one stretch of interleaved frames, one Peak per channel (1 or 2). `frames` is
// from 1 to Peaks::kFinestFrames.
void measure(Coding coding, int channels, const std::uint8_t* bytes, std::int64_t frames,
             std::span<Peak> peaks);

}  // namespace tarnwick::sound
