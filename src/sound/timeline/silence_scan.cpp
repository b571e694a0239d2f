#include "sound/timeline/silence_scan.h"

#include <algorithm>

#include "sound/samples/sound_error.h"
#include "sound/samples/steady_percent.h"
#include "sound/timeline/loud_search.h"

namespace tarnwick::sound {

namespace {

// Frames between two progress reports and checks for a stop request.
constexpr std::int64_t kReportFrames = 1 << 16;

double limitOf(int threshold) { return std::clamp(threshold, 0, 32767) / 32767.0; }

// Every maximal stretch in `range` without a loud frame that lasts at least `minimum`, in order.
//
// A silence of at least the minimum length that begins inside a window of that length covers the
// window's last frame. So a loud frame there lets the window jump ahead by nearly its whole length,
// and most of the sound is never examined. (The idea of the Boyer-Moore string search, 1977.)
std::vector<FrameRange> silencesIn(LoudSearch& search, FrameRange range, std::int64_t minimum,
                                   const Progress& progress) {
    SteadyPercent percent(progress, range.end - range.first);
    std::vector<FrameRange> found;
    std::int64_t report = range.first;
    // All silences that begin before `first` have been found. If one begins at `first`, the frame
    // before it is loud or outside the range.
    std::int64_t first = range.first;
    while (first <= range.end - minimum) {
        if (first >= report) {
            percent.checkStop();
            percent.reached(first - range.first);
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
        const std::int64_t next = search.firstLoud(end, range.end);
        found.push_back({first, next < 0 ? range.end : next});
        first = found.back().end + 1;
    }
    percent.reached(range.end - range.first);
    return found;
}

}  // namespace

std::vector<FrameRange> findSilences(const Timeline& timeline, int threshold,
                                     std::int64_t minimumFrames, const Progress& progress) {
    timeline.source()->checkUnchanged();
    LoudSearch search(timeline, limitOf(threshold));
    return silencesIn(search, {0, timeline.frames()}, std::max<std::int64_t>(minimumFrames, 1),
                      progress);
}

Timeline withoutSilence(const Timeline& timeline, FrameRange range, int threshold,
                        std::int64_t minimumFrames, const Progress& progress) {
    timeline.source()->checkUnchanged();
    if (range.first < 0 || range.first > range.end || range.end > timeline.frames())
        throw SoundError(SoundFailure::BadRange, "a stretch outside the sound");
    LoudSearch search(timeline, limitOf(threshold));
    const std::int64_t loud = search.firstLoud(range.first, range.end);
    if (loud < 0) return timeline.removed(range.first, range.end);
    const FrameRange inner{loud, search.lastLoud(loud, range.end) + 1};
    const auto silences =
        silencesIn(search, inner, std::max<std::int64_t>(minimumFrames, 1), progress);
    // From back to front, so that the positions of the silences still to be removed stay valid.
    Timeline left = timeline.removed(inner.end, range.end);
    for (auto silence = silences.rbegin(); silence != silences.rend(); ++silence) {
        checkStop(progress.stop);
        left = left.removed(silence->first, silence->end);
    }
    return left.removed(range.first, inner.first);
}

std::optional<FrameRange> audibleRange(const Timeline& timeline, int threshold,
                                       const Progress& progress) {
    timeline.source()->checkUnchanged();
    LoudSearch search(timeline, limitOf(threshold));
    SteadyPercent percent(progress, 2);
    percent.checkStop();
    const std::int64_t first = search.firstLoud(0, timeline.frames());
    percent.reached(1);
    percent.checkStop();
    if (first < 0) return {};
    const std::int64_t last = search.lastLoud(first, timeline.frames());
    percent.reached(2);
    return FrameRange{first, last + 1};
}

}  // namespace tarnwick::sound
