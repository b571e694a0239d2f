#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sound/reading/source.h"
#include "sound/samples/loud_maps.h"

namespace tarnwick::sound {

// Finds loud frames of a source that is played with a gain: through its peaks, and sample by sample
// only in the blocks that hold both kinds or that a question cuts. One thread.
class SourceSearch {
  public:
    // Loud is what exceeds `limit`, in parts of full scale, in any channel, after the gain. The
    // source must outlive the search.
    SourceSearch(const Source& source, double limit);

    // The gain for the questions that follow, not 0. Is to be called before the first of them.
    void setGain(double gain);

    // The first or last loud frame in [first, end); -1 without one. Throws SoundError.
    std::int64_t firstLoud(std::int64_t first, std::int64_t end);
    std::int64_t lastLoud(std::int64_t first, std::int64_t end);

    // The beginning of a whole block in [first, end) that certainly holds a loud frame; -1 when a
    // quick look near the end shows none. Reads no samples.
    std::int64_t quickLoud(std::int64_t first, std::int64_t end) const;

  private:
    bool quiet(int level, std::int64_t frame) const;
    bool certainlyLoud(std::int64_t block) const;
    int quietLevel(std::int64_t frame) const;
    const LoudBits& bits(std::int64_t block);

    const Source& source_;
    std::vector<std::array<const Peak*, 2>> peaks_;  // by level and channel
    double limit_;
    int channels_;
    double gain_ = 0.0;
    // What a peak says under the gain: surely quiet at or under the one, surely loud above the
    // other.
    int quietPeak_ = 0;
    int loudPeak_ = 32769;
    // The block looked into last.
    LoudMaps::Key bitsKey_;
    std::int64_t bitsBlock_ = -1;
    LoudBits bits_;
};

}  // namespace tarnwick::sound
