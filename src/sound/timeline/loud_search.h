#pragma once

#include <cstdint>
#include <vector>

#include "sound/timeline/source_search.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::sound {

// Finds loud frames on a timeline, piece by piece: silences are passed over, and a stretch of the
// source is searched there. Questions near the last one are answered fastest. One thread.
class LoudSearch {
  public:
    // Loud is what exceeds `limit`, in parts of full scale, in any channel. The timeline's source
    // must outlive the search.
    LoudSearch(const Timeline& timeline, double limit);

    // The first or last loud frame in [first, end); -1 without one. Throws SoundError.
    std::int64_t firstLoud(std::int64_t first, std::int64_t end);
    std::int64_t lastLoud(std::int64_t first, std::int64_t end);

    // A frame in [first, end) at or behind which, still in [first, end), there certainly is a loud
    // one; -1 when a quick look near the end shows none. Reads no samples.
    std::int64_t quickLoud(std::int64_t first, std::int64_t end);

  private:
    const Piece& moveTo(std::int64_t frame);

    SourceSearch search_;
    std::vector<Piece> pieces_;
    std::size_t piece_ = 0;  // the one asked last
};

}  // namespace tarnwick::sound
