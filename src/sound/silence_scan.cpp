#include "sound/silence_scan.h"

#include <algorithm>

#include "sound/loud_search.h"
#include "sound/steady_percent.h"

namespace tarnwick::sound {

namespace {

// Frames between two looks at the stop request.
constexpr std::int64_t kReportFrames = 1 << 16;

double limitOf(int threshold) { return std::clamp(threshold, 0, 32767) / 32767.0; }

}  // namespace

// A silence of the minimum length that begins at or behind a frame covers the last frame of the
// window of that length; so a loud frame there moves the window on by nearly its whole length, and
// most of the sound is never looked at. (The idea of Boyer and Moore's string search, 1977.)
std::vector<FrameRange> findSilences(const Timeline& timeline, int threshold,
                                     std::int64_t minimumFrames, const Progress& progress) {
    timeline.source()->checkUnchanged();
    LoudSearch search(timeline, limitOf(threshold));
    const std::int64_t frames = timeline.frames();
    const std::int64_t minimum = std::max<std::int64_t>(minimumFrames, 1);
    SteadyPercent percent(progress, frames);
    std::vector<FrameRange> found;
    std::int64_t report = 0;
    // No silence that has not been found begins before `first`; if one begins there, the frame
    // before it is loud or the sound's edge.
    std::int64_t first = 0;
    while (first <= frames - minimum) {
        if (first >= report) {
            percent.checkStop();
            percent.reached(first);
            report = first + kReportFrames;
        }
        const std::int64_t end = first + minimum;
        if (const std::int64_t quick = search.quickLoud(first, end); quick > first) {
            first = quick;
            continue;
        }
        if (const std::int64_t loud = search.lastLoud(first, end); loud >= 0) {
            first = loud + 1;
            continue;
        }
        const std::int64_t next = search.firstLoud(end, frames);
        found.push_back({first, next < 0 ? frames : next});
        first = found.back().end + 1;
    }
    percent.reached(frames);
    return found;
}

std::optional<FrameRange> audibleRange(const Timeline& timeline, int threshold,
                                       const Progress& progress) {
    timeline.source()->checkUnchanged();
    LoudSearch search(timeline, limitOf(threshold));
    SteadyPercent percent(progress, 2);
    percent.checkStop();
    const std::int64_t first = search.firstLoud(0, timeline.frames());
    percent.checkStop();
    percent.reached(1);
    if (first < 0) return {};
    const std::int64_t last = search.lastLoud(first, timeline.frames());
    percent.reached(2);
    return FrameRange{first, last + 1};
}

}  // namespace tarnwick::sound
