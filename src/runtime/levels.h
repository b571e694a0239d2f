#pragma once

#include <QString>

// Conversion of levels between decibels relative to full scale, percent of full scale and the
// engine's amplitude scale. Values too large for a double fault with "Overflow".

namespace tarnwick::runtime {

double percentOfDecibels(double decibels);

// Faults with "Invalid procedure call or argument" for 0 and less, which have no decibel value.
double decibelsOfPercent(double percent);

// A percentage as an amplitude from 0 to 32767, rounded down, as text. Strict: faults with
// "Type mismatch" if the text is not a number. The boxes show percentages with one decimal, so the
// result can differ slightly from the exact amplitude of the decibel value.
QString amplitudeOfPercent(const QString& percent);

}  // namespace tarnwick::runtime
