#pragma once

#include <QString>

// How texts become numbers and numbers texts. "Lenient" takes the leading number of a text;
// "strict" takes a text that is a number as a whole, and faults with "Type mismatch" otherwise.
// Numbers out of range fault with "Overflow". Conversions to integers round halves to the even
// number, the texts with one decimal round them away from zero.

namespace tarnwick::runtime {

double val(QStringView text);  // lenient; 0 when the text begins with no number

// What a box shows that the program fills too: strict where that gives a number, which may be
// infinite, and lenient where not.
double shownValue(QStringView text);

double strictDouble(QStringView text);  // decimal point or the regional separators
bool isNumber(QStringView text);        // strict, with a decimal point only
qint32 strictLong(QStringView text);
qint16 strictInteger(QStringView text);

qint32 roundToLong(double value);
qint16 roundToInteger(double value);

// One decimal and a leading digit, with the regional separators. The C locale groups no digits.
QString fixedOneDecimal(double value);
// The pattern "0.0": the same without grouping of digits.
QString patternOneDecimal(double value);

// A whole number as text with a blank in front when it is not negative.
QString signedText(double wholeNumber);

// A number the short way: no exponent for ordinary sizes, no trailing zeros, a decimal point.
QString plainText(double value);

}  // namespace tarnwick::runtime
