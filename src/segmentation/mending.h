#pragma once

#include <QtGlobal>

#include "engine/waveform.h"
#include "segmentation/likely_slips.h"
#include "segmentation/row_view.h"
#include "segmentation/silence_detection.h"

// Where on the waveform a likely slip lies and where the edit belongs that mends it. All positions
// in ms.

namespace tarnwick::segmentation {

// The place for a mark: the pause of a split or a missing row, the projected border of merged rows,
// the middle of an extra stretch.
qint32 placeOf(const LikelySlip& slip, const SilenceArray& silences);

// What to select: an extra stretch, to be deleted; so much of the pause inside a split row that the
// rest no longer divides it, with pauses of `shortestPauseMs` (from 0) dividing; else a caret
// (begin equal to end), for merged rows in the quietest place near the projected border.
ViewRange mendingOf(const LikelySlip& slip, const SilenceArray& silences, qint32 shortestPauseMs,
                    const engine::Waveform& waveform);

// The view that shows `range` in its middle, narrowed to half a minute if `now` is so wide that the
// range would hardly be seen; else with the width of `now`, or `now` if it already shows the range.
ViewRange viewShowing(ViewRange range, ViewRange now);

}  // namespace tarnwick::segmentation
