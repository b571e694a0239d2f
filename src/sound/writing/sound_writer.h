#pragma once

#include <cstdint>
#include <filesystem>

#include "sound/samples/audio_format.h"
#include "sound/samples/frame_reader.h"
#include "sound/samples/progress.h"

namespace tarnwick::sound {

enum class Container {
    Wav,       // plain PCM or floating point, RF64 above 4 GiB
    Aiff,      // PCM or floating point
    Mp3,       // constant bit rate
    WavCodec,  // one of wavCodecs() inside WAV
};

// The format to write a sound file in.
struct OutputFormat {
    Container container = Container::Wav;
    AudioFormat format;  // rate and channels of the file; bits and floating for uncompressed ones
    int bitRate = 0;     // Mp3: bits per second
    int codec = 0;       // WavCodec: which codec
};

// The range of rates that files can be written at, in frames per second.
inline constexpr int kLowestRate = 8000;
inline constexpr int kHighestRate = 192000;

// The number of frames that `frames` frames become at another rate, rounded to nearest.
std::int64_t resampledLength(std::int64_t frames, int fromRate, int toRate);

// Writes the frames [first, end) as a sound file. The target is replaced completely or not at all.
// Samples that are already in the target's format are copied bit for bit. An empty stretch makes a
// file without frames. Any thread. Throws SoundError: BadRange (nothing is touched), BadFormat,
// NoSpace, WriteFailed, Cancelled, and what reading the sound throws.
void writeSound(const FrameReader& sound, std::int64_t first, std::int64_t end,
                const OutputFormat& output, const std::filesystem::path& target,
                const Progress& progress = {});

}  // namespace tarnwick::sound
