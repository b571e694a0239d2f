#pragma once

#include <cstdint>
#include <optional>

#include "sound/reading/mp3_header.h"
#include "sound/reading/source_file.h"

namespace tarnwick::sound {

// What an encoder notes in an extra frame before the first one with sound.
struct Mp3Tag {
    std::int64_t frames = 0;  // without this one; 0 if not stated
    int delay = 0;            // samples that the encoder added before the sound
    int padding = 0;          // and after it
};

struct Mp3Start {
    std::int64_t byte = {};  // of the first frame with sound
    Mp3Header header;        // its header
    std::optional<Mp3Tag> tag;
};

// Finds the start of a file that begins, after tags and a little junk, with MP3 frames that follow
// each other; none for other files. (The decoder itself would find frames in any garbage.)
std::optional<Mp3Start> findMp3(const SourceFile& file);

// The byte at which frames follow each other, searched from `from` over tags and a little junk;
// none if no such frames are found.
std::optional<std::int64_t> searchMp3Frames(const SourceFile& file, std::int64_t from);

}  // namespace tarnwick::sound
