#pragma once

#include <QString>

// The silence threshold's way from decibels to the engine's scale. It passes through the percentage
// rounded to one decimal, so the engine's number is not the exact value of the decibel figure.

namespace tarnwick::segmentation {

// Decibels below full scale as percent of full scale, one decimal, regional format. Strict:
// faults with "Type mismatch" when the text is no number.
QString thresholdPercent(const QString& decibels);

// That percentage as amplitude on the scale 0 to 32767, rounded down, as text.
QString thresholdAmplitude(const QString& percent);

}  // namespace tarnwick::segmentation
