#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "sound/samples/peaks.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

int bytesOf(Coding coding);

// The byte that silence consists of, in codings of which each sample can be copied as it is: plain
// integers. None for the others: what is no number is not handed on.
std::optional<std::uint8_t> silentByte(Coding coding);

// Turns stored samples into parts of full scale; what is no finite number becomes 0. `bytes` holds
// values.size() samples.
void unpack(Coding coding, const std::uint8_t* bytes, std::span<double> values);

// The extremes of one stretch of interleaved frames, one Peak for each channel (1 or 2). At most
// Peaks::kFinestFrames frames, at least 1.
void measure(Coding coding, int channels, const std::uint8_t* bytes, std::int64_t frames,
             std::span<Peak> peaks);

}  // namespace tarnwick::sound
