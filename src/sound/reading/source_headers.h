#pragma once

#include <optional>

#include "sound/reading/block_decoder.h"
#include "sound/reading/source_file.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

// What a header says about a file's sound. If `blocks` is set, the samples must be decoded first:
// `sound` then describes the decoded samples, and its offset is that of the first block.
struct FoundSound {
    StoredSound sound;
    std::optional<BlockLayout> blocks = {};
    std::int64_t claimedFrames = 0;  // the header's count if the file ends before them, else 0
};

// Finds the samples of a file, or its blocks of coded samples. Returns none if the file is not of
// that kind. Throws SoundError if the kind is right but the sound is not usable: NotASound for an
// unknown coding, a rate outside 1 to 768000, channels outside 1 to 2 or no frame; Damaged if the
// header ends early or describes the format after the data.
std::optional<FoundSound> readWaveHeader(const SourceFile& file);  // RIFF, RF64, BW64
std::optional<FoundSound> readAiffHeader(const SourceFile& file);  // AIFF, AIFC

// Throws NotASound unless rate and channels are within the limits above and there is at least one
// frame.
void checkUsable(const StoredSound& sound);

}  // namespace tarnwick::sound
