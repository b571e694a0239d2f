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

// How a file stores its samples in blocks of equal size.
struct BlockLayout {
    BlockCodec codec = BlockCodec::ImaAdpcm;
    int blockBytes = {};
    std::int64_t bytes = {};                 // of all blocks; the last one may be truncated
    std::vector<AdpcmWeights> weights = {};  // for Microsoft ADPCM, not empty

    // Frames held by `size` bytes, which may span several blocks.
    std::int64_t framesIn(std::int64_t size, int channels) const;
};

// Whether the layout is valid: 1 or 2 channels (GSM only 1) and blocks large enough for frames.
bool isUsable(const BlockLayout& layout, int channels);

// Decodes the blocks that begin at sound.offset, using two threads for a long sound. `sound` must
// be in Little16. Throws SoundError: Damaged, SourceChanged, NoSpace, Cancelled.
DecodedSound decodeBlocks(const SourceFile& file, const StoredSound& sound,
                          const BlockLayout& layout, const Progress& progress);

}  // namespace tarnwick::sound
