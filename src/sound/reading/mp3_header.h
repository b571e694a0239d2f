#pragma once

#include <cstdint>
#include <optional>

#include "sound/reading/source_file.h"

namespace tarnwick::sound {

// What the header of a Layer III frame tells.
struct Mp3Header {
    static constexpr int kBytes = 4;  // that it takes itself

    int bytes = 0;             // of the whole frame
    int rate = 0;              // samples per second
    int channels = 0;          // 1 or 2
    int samples = 0;           // per channel
    int sideAt = 0;            // where its side information begins, behind header and checksum
    int sideBytes = 0;         // of the side information
    int backBits = 0;          // of the field that tells how far back the frame's bits begin
    std::uint32_t shared = 0;  // the bits that all frames of a stream share

    // None if these four bytes are no header that we read.
    static std::optional<Mp3Header> read(std::uint32_t word);
    // The header at a byte of a file; none also where the file ends before four bytes.
    static std::optional<Mp3Header> at(const SourceFile& file, std::int64_t byte);
};

}  // namespace tarnwick::sound
