#pragma once

#include <cstdint>
#include <optional>

#include "sound/reading/source_file.h"

namespace tarnwick::sound {

// The header of an MPEG Layer III frame.
struct Mp3Header {
    static constexpr int kBytes = 4;  // of the header itself

    int bytes = 0;             // of the whole frame
    int rate = 0;              // samples per second
    int channels = 0;          // 1 or 2
    int samples = 0;           // per channel
    int sideAt = 0;            // offset of its side information, after header and checksum
    int sideBytes = 0;         // of the side information
    int backBits = 0;          // width of the field that says how far back the frame's bits begin
    std::uint32_t shared = 0;  // the header bits that are the same in all frames of a stream

    // None if these four bytes are not a header that we can read.
    static std::optional<Mp3Header> read(std::uint32_t word);
    // The header at a byte offset of a file; none also if the file ends within it.
    static std::optional<Mp3Header> at(const SourceFile& file, std::int64_t byte);
};

}  // namespace tarnwick::sound
