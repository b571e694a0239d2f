#pragma once

#include <QString>

#include "widgets/waveform_colours.h"
#include "widgets/waveform_layout.h"

class QPainter;

namespace tarnwick::widgets {

// The text of a ruler mark: "1:05", "1:00:05", with milliseconds if the step needs them.
QString rulerText(qint32 ms, qint32 stepMs);

// These draw the scales beside a wave at their places in the layout, in device pixels, on a
// background that is already painted. Texts never overlap, and a text that does not fit is left
// out.
void drawTimeRuler(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                   const TimeRange& view, qint32 durationMs);
// In decibels below full scale, for waves drawn at `verticalScale` times their height.
void drawLevelScale(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                    int channels, float verticalScale);

}  // namespace tarnwick::widgets
