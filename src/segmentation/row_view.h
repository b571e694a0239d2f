#pragma once

#include <QtGlobal>
#include <optional>

namespace tarnwick::segmentation {

// A visible stretch of the waveform, in milliseconds.
struct ViewRange {
    qint32 begin{};
    qint32 end{};
    friend bool operator==(const ViewRange&, const ViewRange&) = default;
};

// The view for a clicked row: the current width, with the row's start a quarter of the way across.
// nullopt if the row is too near the start of the sound for that.
std::optional<ViewRange> viewOfRow(qint32 rowStart, ViewRange now);

// The view that follows the play head: when the head is in the last tenth, the view moves by eight
// tenths of its width; nullopt before that. Not clipped to the sound.
std::optional<ViewRange> viewAfterJump(qint32 position, ViewRange now);

// Play position in percent of `limit` (above 0), at most 100. Faults with "Overflow" near six
// hours.
qint32 playedPercent(qint32 position, qint32 limit);

}  // namespace tarnwick::segmentation
