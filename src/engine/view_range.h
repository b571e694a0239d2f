#pragma once

#include <QtGlobal>

namespace tarnwick::engine {

// The part of a sound that a display shows, in ms. An end of -1 is the end of the sound and follows
// it when an edit moves it.
struct ViewRange {
    qint32 begin = 0;
    qint32 end = -1;

    friend bool operator==(const ViewRange&, const ViewRange&) = default;
};

// Zooming stops at a view of this length.
inline constexpr qint32 kShortestViewMs = 10;

// The view with an end of -1 replaced by the end of the sound.
ViewRange resolved(ViewRange view, qint32 durationMs);

// Halve or double the view around `centreMs`, and move it to lie inside the sound. Limited to the
// shortest view and the whole sound. Without a sound (duration 0) the view stays.
ViewRange zoomedIn(ViewRange view, double centreMs, qint32 durationMs);
ViewRange zoomedOut(ViewRange view, double centreMs, qint32 durationMs);

// The view that shows just the selection; for a cursor or a very short selection, the shortest view
// around it.
ViewRange zoomedTo(ViewRange selection, qint32 durationMs);

}  // namespace tarnwick::engine
