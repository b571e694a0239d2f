#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>

namespace tarnwick::widgets {

// The colours of a waveform picture, made from a palette so that they follow light and dark
// desktops. Whatever the palette, the wave stands out from the ground, selected or not, by at least
// 3:1 and the scales by 4.5:1 (the contrast of WCAG 2.1), as far as black or white allows.
struct WaveformColours {
    explicit WaveformColours(const QPalette& palette);

    QColor background;
    QColor outside;  // behind the end of the sound
    QColor frame;
    QColor focus;
    QColor wave;
    QColor clipped;  // samples at full scale
    QColor zeroLine;
    QColor scaleGround;
    QColor ruler;
    // Lies over the picture by `blending`, which keeps more contrast than a veil would.
    QColor selection;
    QPainter::CompositionMode blending;
    QColor selectionEdge;
    QColor cursor;
    QColor playHead;

    // A colour of the picture as it looks when it is selected.
    QColor selected(const QColor& colour) const;
};

// Contrast of two colours, 1 to 21, as WCAG 2.1 defines it.
double contrast(const QColor& one, const QColor& other);

}  // namespace tarnwick::widgets
