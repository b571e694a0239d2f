#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tarnwick::fuzz {

using Bytes = std::span<const std::uint8_t>;

// Each target passes the bytes to a reader and uses everything it returns. It must return for any
// bytes, also if the reader refuses them. An exception that escapes is a fault of the reader:
// either of an unexpected type, or a broken promise.
void waveHeader(Bytes bytes);
void aiffHeader(Bytes bytes);
void source(Bytes bytes);    // a sound file of any kind, opened and read
void longMp3(Bytes bytes);   // repeated until long enough for two decoders
void timeline(Bytes bytes);  // the bytes are a list of edits
void compoundFile(Bytes bytes);
void workbook(Bytes bytes);       // a zip package
void workbookParts(Bytes bytes);  // the parts inside one, separated by zero bytes
void wordDocument(Bytes bytes);   // a zip package
void wordBody(Bytes bytes);       // the body of the document inside one

struct Target {
    const char* name;  // of its program, its seeds and its finds
    void (*run)(Bytes bytes);
};

inline constexpr std::array kTargets = {
    Target{"wave_header", waveHeader},
    Target{"aiff_header", aiffHeader},
    Target{"source", source},
    Target{"mp3", source},
    Target{"long_mp3", longMp3},
    Target{"timeline", timeline},
    Target{"compound_file", compoundFile},
    Target{"workbook", workbook},
    Target{"workbook_parts", workbookParts},
    Target{"word_document", wordDocument},
    Target{"word_body", wordBody},
};

}  // namespace tarnwick::fuzz
