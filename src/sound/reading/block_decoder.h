#pragma once

#include <cstdint>
#include <vector>

#include "sound/reading/scratch_decoder.h"
#include "sound/reading/source_file.h"
#include "sound/samples/adpcm.h"
#include "sound/samples/progress.h"
#include "sound/samples/stored_sound.h"

namespace tarnwick::sound {

enum class BlockCodec { ImaAdpcm, MicrosoftAdpcm, Gsm610 };

// How the samples of a file lie in blocks of equal size.
struct BlockLayout {
    BlockCodec codec = BlockCodec::ImaAdpcm;
    int blockBytes = 0;
    std::int64_t bytes = 0;                  // of all blocks; the last one may be cut off
    std::vector<AdpcmWeights> weights = {};  // for Microsoft ADPCM, not empty

    // Frames that `size` bytes, of one block or many, hold.
    std::int64_t framesIn(std::int64_t size, int channels) const;
};

// Whether a sound can lie so: 1 or 2 channels, GSM 1, and blocks of a size that holds frames.
bool isUsable(const BlockLayout& layout, int channels);

// Decodes the blocks from sound.offset on, a long sound on two threads; `sound` is in Little16.
// Throws SoundError: Damaged, SourceChanged, NoSpace, Cancelled.
DecodedSound decodeBlocks(const SourceFile& file, const StoredSound& sound,
                          const BlockLayout& layout, const Progress& progress);

}  // namespace tarnwick::sound
