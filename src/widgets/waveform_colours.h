#pragma once

#include <QColor>
#include <QPalette>

namespace tarnwick::widgets {

// The colours of a waveform picture, made from a palette so that they follow light and dark
// desktops. The selection is translucent: it lies over the wave.
struct WaveformColours {
    explicit WaveformColours(const QPalette& palette);

    QColor background;
    QColor outside;  // behind the end of the sound
    QColor frame;
    QColor wave;
    QColor zeroLine;
    QColor ruler;
    QColor selection;
    QColor selectionEdge;
    QColor cursor;
    QColor playHead;
};

}  // namespace tarnwick::widgets
