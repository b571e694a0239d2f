#pragma once

#include "engine/waveform.h"
#include "widgets/waveform_geometry.h"

namespace tarnwick::widgets {

// Moves the part of a sound that a waveform shows. UI thread.
class WaveformNavigation {
  public:
    // `waveform` must outlive this object.
    explicit WaveformNavigation(engine::Waveform& waveform) : waveform_(waveform) {}

    void zoom(double factor, double fixedMs);  // `fixedMs` stays at its place on the screen
    void scroll(double byMs);
    void scrollByViews(double views);
    void show(double ms);  // scrolls it into the view

  private:
    void setRange(const TimeRange& range);

    engine::Waveform& waveform_;
};

}  // namespace tarnwick::widgets
