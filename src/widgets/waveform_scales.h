#pragma once

#include <QString>

#include "widgets/waveform_colours.h"
#include "widgets/waveform_layout.h"

class QPainter;

namespace tarnwick::widgets {

// A ruler mark as text: "1:05", "1:00:05", with milliseconds where the step needs them.
QString rulerText(qint32 ms, qint32 stepMs);

// Draw the scales beside a wave into their places in the layout, in device pixels, over a ground of
// their colour. Texts never meet, and what does not fit whole is left out.
void drawTimeRuler(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                   const TimeRange& view, qint32 durationMs);
// In decibels under full scale, for waves drawn `verticalScale` times their height.
void drawLevelScale(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
                    int channels, float verticalScale);

}  // namespace tarnwick::widgets
