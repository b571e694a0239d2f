#pragma once

#include <QRect>

#include "engine/waveform.h"
#include "widgets/waveform_colours.h"
#include "widgets/waveform_layout.h"

class QPainter;

namespace tarnwick::widgets {

// Draws the wave of one channel: for each column of the screen a bar from the lowest to the highest
// sample or, if samples are far apart, a line from sample to sample, with a dot on each if there is
// room. Samples at full scale are marked. UI thread.
class WaveformTrace {
  public:
    // The painter draws in device pixels. All references must outlive this object.
    WaveformTrace(QPainter& painter, const engine::Waveform& waveform, const WaveformLayout& layout,
                  const WaveformColours& colours, float verticalScale);

    // Draws `view` into the layout's wave.
    void draw(int channel, const TimeRange& view);

  private:
    void drawColumns(int channel, const TimeRange& view, const ChannelBand& band);
    void drawLine(int channel, const TimeRange& view, const ChannelBand& band);

    QPainter& painter_;
    const engine::Waveform& waveform_;
    const WaveformLayout& layout_;
    const WaveformColours& colours_;
    float scale_;
};

}  // namespace tarnwick::widgets
