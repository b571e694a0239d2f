#pragma once

#include "engine/waveform.h"

namespace tarnwick::segmentation {

// What is selected on the waveform, in ms from the start of the sound.
struct Selection {
    bool available;  // false: nothing is selected; true: a stretch, or a cursor (begin equals end)
    qint32 begin;
    qint32 end;
};

inline Selection selectionOf(const engine::Waveform& waveform) {
    qint16 available{};
    qint32 begin{};
    qint32 end{};
    waveform.GetSelection(available, begin, end);
    return {available == 1, begin, end};
}

}  // namespace tarnwick::segmentation
