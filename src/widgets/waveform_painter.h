#pragma once

#include <QImage>

#include "engine/waveform.h"
#include "widgets/waveform_bands.h"
#include "widgets/waveform_colours.h"
#include "widgets/waveform_layout.h"

namespace tarnwick::widgets {

// The part of the sound that a waveform shows.
TimeRange shownRange(const engine::Waveform& waveform);

// Draws the part of a waveform picture that does not change while a sound plays: the wave of each
// channel, zero lines, the time ruler and the level scale; if the layout has a strip, also what the
// last scan found. In device pixels. UI thread.
QImage renderWaveform(const engine::Waveform& waveform, const WaveformLayout& layout,
                      const WaveformColours& colours, const ShownRows& rows = {});

}  // namespace tarnwick::widgets
