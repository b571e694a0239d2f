#pragma once

#include <QString>

// Levels as decibels below full scale, as percent of full scale, and on the engine's scale. Figures
// that no number can hold fault with "Overflow".

namespace tarnwick::runtime {

double percentOfDecibels(double decibels);

// "Invalid procedure call or argument" for 0 and less, which no figure in decibels stands for.
double decibelsOfPercent(double percent);

// A percentage as amplitude on the scale 0 to 32767, rounded down, as text. Strict: faults with
// "Type mismatch" when the text is no number. A box shows its percentage with one decimal, so the
// engine's number is not the exact value of the decibel figure.
QString amplitudeOfPercent(const QString& percent);

}  // namespace tarnwick::runtime
