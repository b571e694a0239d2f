#pragma once

#include <cstdint>
#include <vector>

#include "sound/reading/mp3_index.h"
#include "sound/reading/source_file.h"

namespace tarnwick::sound {

// The bytes of a stream that begins in the middle, at a listed frame: frames that need bits of
// frames before the beginning are made silent ones.
struct Mp3LeadIn {
    std::int64_t frame = 0;           // the first one
    std::int64_t settled = 0;         // the first one that sounds right
    std::int64_t begin = 0;           // byte of the file where it begins
    std::vector<std::uint8_t> bytes;  // what stands there instead of the file's bytes
};

// Throws SoundError(Damaged) when the frames there do not follow each other.
Mp3LeadIn leadIn(const SourceFile& file, Mp3Index::Entry from);

}  // namespace tarnwick::sound
