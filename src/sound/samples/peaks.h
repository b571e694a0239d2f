#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tarnwick::sound {

// Extremes of a stretch of one channel in units of 1/32768 of full scale, rounded outward. A value
// at the end of its range (-32768, 32767) means "there or beyond".
struct Peak {
    std::int16_t minimum = {};
    std::int16_t maximum = {};

    friend bool operator==(const Peak&, const Peak&) = default;
};

// The extremes of a sound per channel, for every 256 frames and then for stretches 16 times longer
// from level to level, until one stretch covers the sound. The last stretch of a level may be
// shorter. Immutable once built; any thread.
class Peaks {
  public:
    static constexpr std::int64_t kFinestFrames = 256;
    static constexpr int kStep = 16;

    Peaks(int channels, std::int64_t frames);

    int levels() const { return static_cast<int>(sizes_.size()); }
    // Frames of one stretch of a level: 256, 4096, 65536, …
    static std::int64_t framesAt(int level) { return kFinestFrames << (4 * level); }
    std::span<const Peak> level(int channel, int level) const;

    // For the builder. Threads may fill different parts of the finest level at the same time; once
    // it is full, makeCoarser() computes the other levels.
    std::span<Peak> finest(int channel);
    void makeCoarser();

  private:
    std::size_t place(int channel, int level) const;

    int channels_;
    std::vector<std::size_t> sizes_;    // peaks of one channel at each level
    std::vector<std::size_t> offsets_;  // of each level within a channel's part of all_
    std::size_t perChannel_ = 0;
    std::vector<Peak> all_;
};

}  // namespace tarnwick::sound
