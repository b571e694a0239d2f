#pragma once

#include <QFont>
#include <QRect>
#include <QSize>

#include "engine/waveform_settings.h"
#include "widgets/waveform_geometry.h"

namespace tarnwick::widgets {

// Where the parts of a waveform picture lie, in device pixels from its upper left corner, so that a
// column of sound is a column of the screen at any pixel density.
class WaveformLayout {
  public:
    // `size` is in logical pixels, each of which is `ratio` device pixels wide. `hasStrip`: there
    // is a strip for the numbers of stretches.
    WaveformLayout(const QSize& size, qreal ratio, const engine::WaveformSettings& settings,
                   const QFont& font, bool hasStrip = false);

    qreal ratio() const { return ratio_; }
    bool uneven() const;  // whether the ratio is fractional
    QSize size() const { return size_; }
    int hair() const { return hair_; }           // width of a thin line
    int pixels(double logical) const;            // a length, at least 1
    const QFont& font() const { return font_; }  // of the scales
    const QRect& wave() const { return wave_; }  // the wave with all its channels
    QRect ruler() const;                         // under it; empty if hidden
    QRect levels() const;                        // left of it; empty if hidden
    QRect strip() const;                         // above it; empty without
    TimeAxis axis(const TimeRange& view) const;  // of the wave
    TimeAxis logicalAxis(const TimeRange& view) const;

    // The logical pixels that a part of the picture touches.
    QRect logical(const QRect& device) const;
    // The device pixels that a logical rectangle touches.
    QRect device(const QRect& logical) const;

    friend bool operator==(const WaveformLayout&, const WaveformLayout&) = default;

  private:
    qreal ratio_;
    QSize size_;
    int hair_;
    int frame_;
    QFont font_;
    QRect wave_;
    int stripHeight_ = 0;
};

}  // namespace tarnwick::widgets
