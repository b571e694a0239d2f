#pragma once

#include <QtGlobal>
#include <algorithm>
#include <limits>
#include <optional>

#include "sound/samples/time.h"
#include "sound/timeline/silence_scan.h"
#include "sound/timeline/timeline.h"

namespace tarnwick::engine {

// Converts positions in milliseconds to frames of a sound.

// The length of a sound in ms, rounded down.
inline qint64 lengthOf(const sound::Timeline& timeline) {
    return sound::msFloor(timeline.frames(), timeline.format().rate);
}

// The same, limited to 32 bits as in the contract.
inline qint32 durationOf(const sound::Timeline& timeline) {
    return static_cast<qint32>(
        std::min<qint64>(lengthOf(timeline), std::numeric_limits<qint32>::max()));
}

// A position as the caller meant it. If it was the end of the sound at the call, it stays the end,
// even if an earlier edit that has not run yet moves that.
class Position {
  public:
    // `ms` in a sound of `durationMs`; none if it is negative and not -1.
    static std::optional<Position> of(qint32 ms, qint32 durationMs) {
        if (ms < -1) return {};
        return Position(ms, ms == -1 || (ms > 0 && ms >= durationMs));
    }

    // `frameAt` rounds a time between two frames.
    qint64 frameIn(const sound::Timeline& timeline,
                   std::int64_t (*frameAt)(std::int64_t, int) = sound::frameAt) const {
        if (end_ || (ms_ > 0 && ms_ >= lengthOf(timeline))) return timeline.frames();
        return std::min<qint64>(frameAt(ms_, timeline.format().rate), timeline.frames());
    }

    friend bool operator<(const Position& a, const Position& b) {
        return !a.end_ && (b.end_ || a.ms_ < b.ms_);
    }

  private:
    Position(qint32 ms, bool end) : ms_(ms), end_(end) {}

    qint32 ms_;
    bool end_;
};

// From one position to another. A reversed stretch counts as empty.
struct Stretch {
    Position begin;
    Position end;

    // None if a position is negative and not -1.
    static std::optional<Stretch> of(qint32 beginMs, qint32 endMs, qint32 durationMs) {
        const auto begin = Position::of(beginMs, durationMs);
        const auto end = Position::of(endMs, durationMs);
        if (!begin || !end) return {};
        return Stretch{*begin, *end};
    }

    bool reversed() const { return end < begin; }

    qint64 firstIn(const sound::Timeline& timeline) const { return begin.frameIn(timeline); }
    qint64 endIn(const sound::Timeline& timeline) const {
        return std::max(end.frameIn(timeline), firstIn(timeline));
    }

    // The frames of the stretch, including those it covers only in part.
    sound::FrameRange outwardIn(const sound::Timeline& timeline) const {
        const qint64 first = begin.frameIn(timeline, sound::frameFloor);
        return {first, std::max(end.frameIn(timeline, sound::frameCeil), first)};
    }
};

}  // namespace tarnwick::engine
