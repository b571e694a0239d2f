#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sound/samples/progress.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::sound {

struct FrameRange {
    std::int64_t first = 0;
    std::int64_t end = 0;  // one past the last frame

    friend bool operator==(const FrameRange&, const FrameRange&) = default;
};

// A frame is loud when any channel's |sample| is over threshold / 32767 of full scale. `threshold`
// is 0 to 32767; values outside are taken as the nearest. Exact to the frame; peaks tell where to
// look, so that samples are read only near the answers. Any thread. All throw SoundError.

// Every longest stretch without a loud frame that lasts at least `minimumFrames` (at least 1), in
// order.
std::vector<FrameRange> findSilences(const Timeline& timeline, int threshold,
                                     std::int64_t minimumFrames, const Progress& progress = {});

// The sound without what is not loud in [range.first, range.end). Between two loud frames of the
// range only stretches of at least `minimumFrames` (at least 1) go, so that sound which passes
// through zero stays whole; at the edges of the range, any length. Throws BadRange too.
Timeline withoutSilence(const Timeline& timeline, FrameRange range, int threshold,
                        std::int64_t minimumFrames, const Progress& progress = {});

// From the first loud frame to behind the last one; none when no frame is loud.
std::optional<FrameRange> audibleRange(const Timeline& timeline, int threshold,
                                       const Progress& progress = {});

}  // namespace tarnwick::sound
