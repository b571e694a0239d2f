#pragma once

#include <optional>

#include "sound/reading/block_decoder.h"
#include "sound/reading/source_file.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

// What a header tells of a file's sound. With `blocks`, the samples must be decoded first: `sound`
// is what they will be then, and its offset is the first block's.
struct FoundSound {
    StoredSound sound;
    std::optional<BlockLayout> blocks = {};
};

// Where the samples of an uncompressed file lie, or their blocks. None when the content is not of
// that kind. A kind that is recognised but holds no usable sound throws SoundError: NotASound for
// an unknown coding, a rate outside 1 to 768000, channels outside 1 to 2 or no frame; Damaged when
// the header ends early or tells of the sound too late.
std::optional<FoundSound> readWaveHeader(const SourceFile& file);  // RIFF, RF64, BW64
std::optional<FoundSound> readAiffHeader(const SourceFile& file);  // AIFF, AIFC

// Throws NotASound unless rate and channels are within the limits above and there is a frame.
void checkUsable(const StoredSound& sound);

}  // namespace tarnwick::sound
