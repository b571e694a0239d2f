#include "engine/view_range.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::engine {

namespace {

ViewRange around(double centreMs, qint64 length, qint32 durationMs) {
    if (length >= durationMs) return {};
    const qint64 begin = std::clamp<qint64>(
        std::llround(centreMs - static_cast<double>(length) / 2), 0, durationMs - length);
    return {static_cast<qint32>(begin), static_cast<qint32>(begin + length)};
}

qint64 lengthOf(ViewRange view) { return qint64{view.end} - view.begin; }

}  // namespace

ViewRange resolved(ViewRange view, qint32 durationMs) {
    if (view.end == -1) view.end = std::max(view.begin, durationMs);
    return view;
}

ViewRange zoomedIn(ViewRange view, double centreMs, qint32 durationMs) {
    if (durationMs == 0) return view;
    const qint64 length = lengthOf(resolved(view, durationMs));
    const qint64 least = std::min<qint64>(length, kShortestViewMs);
    return around(centreMs, std::max(length / 2, least), durationMs);
}

ViewRange zoomedOut(ViewRange view, double centreMs, qint32 durationMs) {
    if (durationMs == 0) return view;
    const qint64 length = lengthOf(resolved(view, durationMs));
    return around(centreMs, std::max<qint64>(length * 2, kShortestViewMs), durationMs);
}

ViewRange zoomedTo(ViewRange selection, qint32 durationMs) {
    const double centre = selection.begin + lengthOf(selection) / 2.0;
    return around(centre, std::max<qint64>(lengthOf(selection), kShortestViewMs), durationMs);
}

}  // namespace tarnwick::engine
