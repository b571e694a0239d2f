#pragma once

#include <QString>

// Conversion between text and numbers. "Lenient" reads the number at the start of a text;
// "strict" requires the whole text to be a number and faults with "Type mismatch" otherwise.
// Numbers out of range fault with "Overflow". Conversions to integers round halves to the even
// number; texts with one decimal round them away from zero.

namespace tarnwick::runtime {

double val(QStringView text);  // lenient; 0 if the text does not begin with a number

// The value of a box that the program also fills: strict if the whole text is a number (it may be
// infinite), lenient otherwise.
double shownValue(QStringView text);

double strictDouble(QStringView text);  // decimal point or the regional separators
bool isNumber(QStringView text);        // strict, with a decimal point only
qint32 strictLong(QStringView text);
qint16 strictInteger(QStringView text);

qint32 roundToLong(double value);
qint16 roundToInteger(double value);

// One decimal and at least one digit before the point, with the regional separators. The C locale
// does not group digits.
QString fixedOneDecimal(double value);
// The pattern "0.0": the same without digit grouping.
QString patternOneDecimal(double value);

// A whole number as text, with a blank in front if it is not negative.
QString signedText(double wholeNumber);

// A number in short form: no exponent for ordinary sizes, no trailing zeros, a decimal point.
QString plainText(double value);

}  // namespace tarnwick::runtime
