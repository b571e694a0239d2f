#pragma once

#include <QFont>
#include <QImage>
#include <QPalette>
#include <QSize>
#include <QString>

#include "engine/waveform.h"
#include "widgets/waveform_geometry.h"

class QPainter;

namespace tarnwick::widgets {

struct WaveformColours;

// Draws the part of a waveform picture that stands still while a sound plays: the wave of each
// channel, zero lines, the ruler and the level scale. UI thread.
class WaveformPainter {
  public:
    // What a picture is made for. Sizes are logical pixels; the picture has `ratio` times as many.
    struct Surface {
        QSize size;
        qreal ratio = 1.0;
        QPalette palette;
        QFont font;
    };

    WaveformPainter(const engine::Waveform& waveform, const Surface& surface);

    // Time axis of the wave's area in logical pixels, for everything that is drawn over the
    // picture.
    TimeAxis axis() const;
    // The wave's area, without ruler and level scale, in logical pixels.
    QRect area() const { return area_; }

    QImage render() const;

  private:
    void drawChannel(QPainter& painter, int channel, const QRect& deviceArea,
                     const WaveformColours& colours) const;
    void drawRuler(QPainter& painter, const WaveformColours& colours) const;
    void drawLevels(QPainter& painter, const WaveformColours& colours) const;

    const engine::Waveform& waveform_;
    Surface surface_;
    TimeRange view_;
    engine::WaveformSettings settings_;
    QRect area_;
};

// A ruler mark as text: "1:05", "1:00:05", with milliseconds where the step needs them.
QString rulerText(qint32 ms, qint32 stepMs);

}  // namespace tarnwick::widgets
