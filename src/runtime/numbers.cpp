#include "runtime/numbers.h"

#include <QLocale>
#include <cmath>
#include <limits>
#include <optional>

#include "runtime/fault.h"

namespace tarnwick::runtime {

namespace {

bool isDigit(QStringView text, qsizetype at) {
    return at < text.size() && text[at] >= u'0' && text[at] <= u'9';
}

qsizetype afterDigits(QStringView text, qsizetype at) {
    while (isDigit(text, at))
        ++at;
    return at;
}

bool isSign(QStringView text, qsizetype at) {
    return at < text.size() && (text[at] == u'+' || text[at] == u'-');
}

// End of the number that starts at `begin`: sign, digits, point, digits, exponent.
qsizetype afterNumber(QStringView text, qsizetype begin) {
    qsizetype at = isSign(text, begin) ? begin + 1 : begin;
    const qsizetype whole = at;
    at = afterDigits(text, at);
    qsizetype digits = at - whole;
    if (at < text.size() && text[at] == u'.') {
        const qsizetype fraction = afterDigits(text, at + 1);
        digits += fraction - (at + 1);
        at = fraction;
    }
    if (digits == 0) return begin;
    if (at < text.size() && (text[at] == u'e' || text[at] == u'E')) {
        const qsizetype exponent = isSign(text, at + 1) ? at + 2 : at + 1;
        if (isDigit(text, exponent)) at = afterDigits(text, exponent);
    }
    return at;
}

// The desktop's number format. The locale is looked up by name because QLocale::system() groups
// digits when no language is set, and the C library does not.
QLocale region() {
    QByteArray name;
    for (const char* variable : {"LC_ALL", "LC_NUMERIC", "LANG"})
        if (name.isEmpty()) name = qgetenv(variable);
    return QLocale(QString::fromLocal8Bit(name));
}

// The value if the whole text is a number; may be infinite.
std::optional<double> wholeNumber(QStringView text) {
    if (isNumber(text)) return val(text);
    bool ok = false;
    const double value = region().toDouble(text.trimmed(), &ok);
    return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

template <class Int>
Int rounded(double value) {
    const double whole = std::nearbyint(value);  // halves to even in the default rounding mode
    if (!(whole >= std::numeric_limits<Int>::min() && whole <= std::numeric_limits<Int>::max()))
        overflow();
    return static_cast<Int>(whole);
}

// Rounds the number as written with 15 digits, so that 8.45 is a half.
double roundedToTenth(double value) {
    if (std::fabs(value) >= 1e15) return value;
    const double tenths = QByteArray::number(value * 10.0, 'g', 15).toDouble();
    return std::round(tenths) / 10.0;
}

}  // namespace

double val(QStringView text) {
    qsizetype begin = 0;
    while (begin < text.size() && text[begin].isSpace())
        ++begin;
    const qsizetype end = afterNumber(text, begin);
    if (end == begin) return 0.0;
    QStringView number = text.mid(begin, end - begin);
    if (number.startsWith(u'+')) number = number.mid(1);
    return QLocale::c().toDouble(number);
}

bool isNumber(QStringView text) {
    const QStringView trimmed = text.trimmed();
    return !trimmed.isEmpty() && afterNumber(trimmed, 0) == trimmed.size();
}

double shownValue(QStringView text) { return wholeNumber(text).value_or(val(text)); }

double strictDouble(QStringView text) {
    const std::optional<double> value = wholeNumber(text);
    if (!value) typeMismatch();
    if (!std::isfinite(*value)) overflow();
    return *value;
}

qint32 strictLong(QStringView text) { return roundToLong(strictDouble(text)); }
qint16 strictInteger(QStringView text) { return roundToInteger(strictDouble(text)); }

qint32 roundToLong(double value) { return rounded<qint32>(value); }
qint16 roundToInteger(double value) { return rounded<qint16>(value); }

QString fixedOneDecimal(double value) { return region().toString(roundedToTenth(value), 'f', 1); }

QString patternOneDecimal(double value) {
    QLocale ungrouped = region();
    ungrouped.setNumberOptions(QLocale::OmitGroupSeparator);
    return ungrouped.toString(roundedToTenth(value), 'f', 1);
}

QString signedText(double wholeNumber) {
    const QString text = plainText(wholeNumber);
    return text.startsWith(u'-') ? text : u' ' + text;
}

QString plainText(double value) { return QLocale::c().toString(value, 'g', 15); }

}  // namespace tarnwick::runtime
