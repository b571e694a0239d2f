#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sound/reading/source.h"
#include "sound/samples/loud_maps.h"

namespace tarnwick::sound {

// Finds loud frames of a source under a gain. Examines samples only in blocks that the peaks do not
// prove quiet. One thread.
class SourceSearch {
  public:
    // A frame is loud if, after the gain, any channel exceeds `limit`, in parts of full scale. The
    // source must outlive the search.
    SourceSearch(const Source& source, double limit);

    // Sets the gain for the searches that follow, not 0. Must be called before the first search.
    void setGain(double gain) {
        if (gain != gain_) takeGain(gain);
    }

    // The first or last loud frame in [first, end); -1 if there is none. Throws SoundError.
    std::int64_t firstLoud(std::int64_t first, std::int64_t end);
    std::int64_t lastLoud(std::int64_t first, std::int64_t end);

    // The beginning of a whole block in [first, end) that certainly holds a loud frame; -1 if the
    // peaks near the end show none. Fast, as it reads no samples.
    std::int64_t quickLoud(std::int64_t first, std::int64_t end) const;

  private:
    void takeGain(double gain);
    bool quiet(int level, std::int64_t frame) const;
    bool certainlyLoud(std::int64_t block) const;
    int quietLevel(std::int64_t frame) const;
    const LoudBits& bits(std::int64_t block);

    const Source& source_;
    std::vector<std::array<const Peak*, 2>> peaks_;  // by level and channel
    double limit_;
    int channels_;
    double gain_{};
    // With the present gain a stretch is certainly quiet if its peak is at most quietPeak_, and
    // certainly holds a loud frame if its peak is above loudPeak_.
    int quietPeak_{};
    int loudPeak_{};
    // The block examined last.
    LoudMaps::Key bitsKey_;
    std::int64_t bitsBlock_ = -1;
    LoudBits bits_;
};

}  // namespace tarnwick::sound
