#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "sound/samples/progress.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::sound {

struct FrameRange {
    std::int64_t first{};
    std::int64_t end{};  // one past the last frame

    friend bool operator==(const FrameRange&, const FrameRange&) = default;
};

// A frame is loud if any channel's |sample| is over threshold / 32767 of full scale. `threshold` is
// 0 to 32767; values outside are clamped. Results are exact to the frame; with the help of the
// peaks samples are read only near them. Any thread. All functions throw SoundError.

// Every maximal stretch without a loud frame that lasts at least `minimumFrames` (at least 1), in
// order.
std::vector<FrameRange> findSilences(const Timeline& timeline, int threshold,
                                     std::int64_t minimumFrames, const Progress& progress = {});

// Removes the stretches without a loud frame from [range.first, range.end). Between two loud frames
// of the range, only stretches of at least `minimumFrames` (at least 1) are removed, so that zero
// crossings stay; at the edges of the range, stretches of any length. Throws BadRange too.
Timeline withoutSilence(const Timeline& timeline, FrameRange range, int threshold,
                        std::int64_t minimumFrames, const Progress& progress = {});

// The range from the first to the last loud frame; none if no frame is loud.
std::optional<FrameRange> audibleRange(const Timeline& timeline, int threshold,
                                       const Progress& progress = {});

}  // namespace tarnwick::sound
