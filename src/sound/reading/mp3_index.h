#pragma once

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <vector>

#include "sound/reading/mp3_start.h"
#include "sound/reading/source_file.h"

namespace tarnwick::sound {

// The positions of the frames in a file.
class Mp3Index {
  public:
    // The numbers of the listed frames are multiples of this.
    static constexpr std::int64_t kGrid = 8;

    struct Entry {
        std::int64_t frame = {};
        std::int64_t byte = {};
    };

    // Throws SoundError(Cancelled).
    Mp3Index(const SourceFile& file, const Mp3Start& start, const std::stop_token& stop);

    std::int64_t frames() const { return frames_; }
    // The byte after the last frame.
    std::int64_t end() const { return end_; }
    // Whether the frames are contiguous.
    bool unbroken() const { return gaps_ == 0; }
    // Whether the count ended because frames of another rate follow.
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

}  // namespace tarnwick::sound
