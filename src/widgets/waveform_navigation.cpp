#include "widgets/waveform_navigation.h"

#include <cmath>

#include "widgets/waveform_painter.h"

namespace tarnwick::widgets {

void WaveformNavigation::zoom(double factor, double fixedMs) {
    setRange(zoomed(shownRange(waveform_), factor, fixedMs, waveform_.duration()));
}

void WaveformNavigation::scroll(double byMs) {
    setRange(scrolled(shownRange(waveform_), byMs, waveform_.duration()));
}

void WaveformNavigation::scrollByViews(double views) {
    scroll(views * shownRange(waveform_).width());
}

void WaveformNavigation::show(double ms) {
    const TimeRange view = shownRange(waveform_);
    const TimeRange moved = showing(view, ms, waveform_.duration());
    if (moved != view) setRange(moved);
}

void WaveformNavigation::setRange(const TimeRange& range) {
    const auto begin = static_cast<qint32>(std::nearbyint(range.beginMs));
    // Computed from the width, so that rounding never widens the view while scrolling.
    const auto end = begin + static_cast<qint32>(std::nearbyint(range.width()));
    const bool whole = begin == 0 && end == waveform_.duration();
    waveform_.SetDisplayRange(begin, whole ? -1 : end);
}

}  // namespace tarnwick::widgets
