#pragma once

#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <vector>

#include "sound/reading/mp3_start.h"
#include "sound/reading/source_file.h"

namespace tarnwick::sound {

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

}  // namespace tarnwick::sound
