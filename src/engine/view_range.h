#pragma once

#include <QtGlobal>

namespace tarnwick::engine {

// The part of a sound that a display shows, in ms. An end of -1 is the end of the sound, also of
// the sound as it will be after an edit.
struct ViewRange {
    qint32 begin = 0;
    qint32 end = -1;

    friend bool operator==(const ViewRange&, const ViewRange&) = default;
};

// Zooming stops at a view of this length.
inline constexpr qint32 kShortestViewMs = 10;

// The view with its end told in ms.
ViewRange resolved(ViewRange view, qint32 durationMs);

// Half and twice the view around `centreMs`, moved to lie inside the sound. The shortest view, and
// the whole sound, are where they end. Without a sound (duration 0) the view stays.
ViewRange zoomedIn(ViewRange view, double centreMs, qint32 durationMs);
ViewRange zoomedOut(ViewRange view, double centreMs, qint32 durationMs);

// The view that a selection fills; a cursor or a very short selection gets the shortest view
// around it.
ViewRange zoomedTo(ViewRange selection, qint32 durationMs);

}  // namespace tarnwick::engine
