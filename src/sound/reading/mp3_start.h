#pragma once

#include <cstdint>
#include <optional>

#include "sound/reading/mp3_header.h"
#include "sound/reading/source_file.h"

namespace tarnwick::sound {

// What an encoder notes in a frame in front of the others.
struct Mp3Tag {
    std::int64_t frames = 0;  // without this one; 0 when it does not tell
    int delay = 0;            // samples that the encoder put in front of the sound
    int padding = 0;          // and behind it
};

struct Mp3Start {
    std::int64_t byte = 0;  // of the first frame that sounds
    Mp3Header header;       // its header
    std::optional<Mp3Tag> tag;
};

// The beginning of a file that starts, behind tags and a little junk, with a run of MP3 frames that
// fit together; none in other files. (The decoder itself finds frames in any garbage.)
std::optional<Mp3Start> findMp3(const SourceFile& file);

// The byte at or behind `from`, but for tags and a little junk, where frames that fit together
// follow each other; none when no such frames are found.
std::optional<std::int64_t> searchMp3Frames(const SourceFile& file, std::int64_t from);

}  // namespace tarnwick::sound
