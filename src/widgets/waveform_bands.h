#pragma once

#include "widgets/band_geometry.h"
#include "widgets/row_marks.h"
#include "widgets/waveform_colours.h"
#include "widgets/waveform_layout.h"

class QPainter;

namespace tarnwick::widgets {

// Size of a mark at a slip, in logical pixels.
inline constexpr int kMarkWidth = 9;
inline constexpr int kMarkHeight = 7;

// What is shown of the rows, besides the stretches themselves.
struct ShownRows {
    RowMarks marks;
    int pressed = 0;  // the stretch with a marked edge, from 1; 0: none

    friend bool operator==(const ShownRows&, const ShownRows&) = default;
};

// These draw what a scan found, in device pixels. The silences as bands, to be drawn behind the
// wave; a band narrower than a column becomes a tint.
void drawBands(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
               const TimeRange& view, Silences silences);
// In the strip the numbers of the stretches and the edge of the pressed one; over the wave the
// marks. Numbers that do not fit are left out evenly, marks never.
void drawRows(QPainter& painter, const WaveformLayout& layout, const WaveformColours& colours,
              const TimeRange& view, Silences silences, const ShownRows& rows);

}  // namespace tarnwick::widgets
