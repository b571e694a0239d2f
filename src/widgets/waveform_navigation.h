#pragma once

#include "engine/waveform.h"
#include "widgets/waveform_geometry.h"

namespace tarnwick::widgets {

// Moves the part of a sound that a waveform shows. UI thread.
class WaveformNavigation {
  public:
    // `waveform` outlives this object.
    explicit WaveformNavigation(engine::Waveform& waveform) : waveform_(waveform) {}

    void zoom(double factor, double fixedMs);  // `fixedMs` stays where it is on the screen
    void scroll(double byMs);
    void scrollByViews(double views);
    void show(double ms);  // brings it into the view

  private:
    void setRange(const TimeRange& range);

    engine::Waveform& waveform_;
};

}  // namespace tarnwick::widgets
