#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>

namespace tarnwick::widgets {

// The colours of a waveform picture, derived from a palette so that they follow light and dark
// desktops. With any palette, the contrast with the ground is at least 3:1 for the wave, selected
// or not, on a band or not, and for the marks, and 4.5:1 for the scales and numbers (WCAG 2.1), as
// far as black or white allows.
struct WaveformColours {
    explicit WaveformColours(const QPalette& palette);

    QColor background;
    QColor outside;  // past the end of the sound
    QColor frame;
    QColor focus;
    QColor wave;
    QColor clipped;  // samples at full scale
    QColor zeroLine;
    QColor scaleGround;
    QColor ruler;
    // Drawn over the picture with `blending`, which keeps more contrast than transparency would.
    QColor selection;
    QPainter::CompositionMode blending;
    QColor selectionEdge;
    QColor cursor;
    QColor playHead;
    QColor band;     // behind the wave in a silence
    QColor flagged;  // number of a doubtful stretch
    QColor pressed;  // edge of the pressed stretch
    QColor slip;     // mark over the wave

    // The background where a band covers a share of it, 0.0 to 1.0.
    QColor banded(double share) const;
    // A colour of the picture as it looks inside the selection.
    QColor selected(const QColor& colour) const;

  private:
    void chooseRowColours(const QColor& text, const QColor& accent);
};

// Contrast of two colours, 1 to 21, as WCAG 2.1 defines it.
double contrast(const QColor& one, const QColor& other);

}  // namespace tarnwick::widgets
