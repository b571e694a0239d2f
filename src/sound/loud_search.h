#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sound/loud_maps.h"
#include "sound/timeline.h"

namespace tarnwick::sound {

// Finds loud frames on a timeline: through the peaks, and sample by sample only in the blocks that
// hold both kinds or that a question cuts. Questions near the last one are answered fastest. One
// thread.
class LoudSearch {
  public:
    // Loud is what exceeds `limit`, in parts of full scale, in any channel.
    LoudSearch(const Timeline& timeline, double limit);

    // The first or last loud frame in [first, end); -1 without one. Throws SoundError.
    std::int64_t firstLoud(std::int64_t first, std::int64_t end);
    std::int64_t lastLoud(std::int64_t first, std::int64_t end);

    // A frame in [first, end) at or behind which, still in [first, end), there certainly is a loud
    // one; -1 when a quick look near the end shows none. Reads no samples.
    std::int64_t quickLoud(std::int64_t first, std::int64_t end);

  private:
    void moveTo(std::int64_t frame);
    bool quiet(int level, std::int64_t frame) const;
    bool certainlyLoud(std::int64_t block) const;
    std::int64_t pastQuiet(std::int64_t frame) const;
    std::int64_t beforeQuiet(std::int64_t frame) const;
    const LoudBits& bits(std::int64_t block);
    std::int64_t firstInSource(std::int64_t first, std::int64_t end);
    std::int64_t lastInSource(std::int64_t first, std::int64_t end);

    const Source& source_;
    std::vector<std::array<const Peak*, 2>> peaks_;  // by level and channel
    double limit_;
    int channels_;
    std::vector<Piece> pieces_;
    std::size_t piece_ = 0;  // the one asked last
    // What peaks of that piece say: surely quiet at or under the one, surely loud above the other.
    double gain_ = 0.0;
    int quietPeak_ = 0;
    int loudPeak_ = 32769;
    // The block looked into last.
    LoudMaps::Key bitsKey_;
    std::int64_t bitsBlock_ = -1;
    LoudBits bits_;
};

}  // namespace tarnwick::sound
