#pragma once

#include <QRegion>
#include <climits>

#include "engine/waveform.h"
#include "widgets/waveform_colours.h"
#include "widgets/waveform_layout.h"

class QPainter;

namespace tarnwick::widgets {

// What is drawn over a waveform picture: the selection or cursor, and the play head, each at its
// column of the screen. A value, so that comparing two shows what must be repainted. UI thread.
class WaveformOverlay {
  public:
    WaveformOverlay() = default;
    // Takes the present positions. `axis` is that of the picture, in device pixels.
    WaveformOverlay(const engine::Waveform& waveform, const WaveformLayout& layout,
                    const TimeAxis& axis);

    // In device pixels, after the picture was painted.
    void paint(QPainter& painter, const WaveformLayout& layout,
               const WaveformColours& colours) const;

    // The region where this and the other look different, in device pixels.
    QRegion difference(const WaveformOverlay& other, const WaveformLayout& layout) const;

  private:
    static constexpr int kNone = INT_MIN;

    QRegion selectionRegion(const WaveformLayout& layout) const;
    bool isStretch() const { return left_ != kNone && !cursor_; }

    int left_ = kNone;  // first column of the selection, or the cursor
    int right_ = kNone;
    bool cursor_ = false;
    int playHead_ = kNone;
};

}  // namespace tarnwick::widgets
