#pragma once

#include <cstdint>
#include <vector>

#include "sound/timeline/source_search.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::sound {

// Finds loud frames on a timeline piece by piece. Skips silences and searches the source for the
// other pieces. Searches near the previous one are the fastest. One thread.
class LoudSearch {
  public:
    // A frame is loud if any channel exceeds `limit`, in parts of full scale. The timeline's source
    // must outlive the search.
    LoudSearch(const Timeline& timeline, double limit);

    // The first or last loud frame in [first, end); -1 if there is none. Throws SoundError.
    std::int64_t firstLoud(std::int64_t first, std::int64_t end);
    std::int64_t lastLoud(std::int64_t first, std::int64_t end);

    // A frame in [first, end) for which a loud frame certainly lies at or after it, before `end`;
    // -1 if the peaks near the end show none. Fast, as it reads no samples.
    std::int64_t quickLoud(std::int64_t first, std::int64_t end);

  private:
    const Piece& moveTo(std::int64_t frame);

    SourceSearch search_;
    std::vector<Piece> pieces_;
    std::size_t piece_ = 0;  // the one searched last
};

}  // namespace tarnwick::sound
