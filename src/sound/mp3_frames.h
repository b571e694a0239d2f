#pragma once

#include <cstdint>
#include <optional>
#include <stop_token>
#include <vector>

#include "sound/source_file.h"

namespace tarnwick::sound {

// What the header of a Layer III frame tells.
struct Mp3Header {
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
};

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

// Where the frames of a file lie.
class Mp3Index {
  public:
    // The number of every listed frame is a multiple of this.
    static constexpr std::int64_t kGrid = 8;

    struct Entry {
        std::int64_t frame = 0;
        std::int64_t byte = 0;
    };

    // Throws SoundError(Cancelled).
    Mp3Index(const SourceFile& file, const Mp3Start& start, const std::stop_token& stop);

    std::int64_t frames() const { return frames_; }
    // The byte behind the last one.
    std::int64_t end() const { return end_; }
    // Whether they follow each other without a gap.
    bool unbroken() const { return gaps_ == 0; }
    // Whether frames of another rate follow, which end the count.
    bool changesKind() const { return changesKind_; }
    // The last listed frame at or before `frame`.
    Entry before(std::int64_t frame) const;

  private:
    static constexpr std::size_t kMostEntries = 1 << 17;
    static constexpr int kMostGaps = 100;

    void add(std::int64_t byte, int size);

    std::vector<std::int64_t> bytes_;  // of every step_-th frame
    std::int64_t step_ = kGrid;
    std::int64_t frames_ = 0;
    std::int64_t end_ = 0;
    int gaps_ = 0;
    bool changesKind_ = false;
};

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
