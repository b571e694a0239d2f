#pragma once

#include <cstdint>
#include <optional>

#include "sound/reading/source_file.h"

namespace tarnwick::sound {

// The header of an MPEG Layer III frame.
struct Mp3Header {
    static constexpr int kBytes = 4;  // of the header itself

    int bytes = {};             // of the whole frame
    int rate = {};              // samples per second
    int channels = {};          // 1 or 2
    int samples = {};           // per channel
    int sideAt = {};            // offset of its side information, after header and checksum
    int sideBytes = {};         // of the side information
    int backBits = {};          // width of the field that says how far back the frame's bits begin
    std::uint32_t shared = {};  // the header bits that are the same in all frames of a stream

    // None if these four bytes are not a header that we can read.
    static std::optional<Mp3Header> read(std::uint32_t word);
    // The header at a byte offset of a file; none also if the file ends within it.
    static std::optional<Mp3Header> at(const SourceFile& file, std::int64_t byte);
};

}  // namespace tarnwick::sound
