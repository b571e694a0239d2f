#pragma once

#include <cstdint>
#include <vector>

#include "sound/reading/mp3_index.h"
#include "sound/reading/source_file.h"

namespace tarnwick::sound {

// The first bytes for decoding from the middle, starting at a frame in the index. Frames that need
// bits from before that point are replaced by silent ones.
struct Mp3LeadIn {
    std::int64_t frame = {};          // the first frame
    std::int64_t settled = {};        // the first frame that decodes correctly
    std::int64_t begin = {};          // byte of the file where the first frame begins
    std::vector<std::uint8_t> bytes;  // replaces the bytes of the file from there on
};

// Throws SoundError(Damaged) if the frames there are not contiguous.
Mp3LeadIn leadIn(const SourceFile& file, Mp3Index::Entry from);

}  // namespace tarnwick::sound
