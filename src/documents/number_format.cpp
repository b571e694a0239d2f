#include "documents/number_format.h"

#include <QDate>
#include <QLocale>
#include <QTime>
#include <cmath>

namespace tarnwick::documents {

namespace {

constexpr qint64 kMillisecondsOfDay = 86'400'000;
constexpr double kDaysTo9999 = 2'958'466.0;  // first day that has no date any more

// The parts of a code: for positive numbers, negative ones, 0 and texts.
QStringList sectionsOf(const QString& code) {
    QStringList sections;
    bool quoted = false;
    qsizetype begin = 0;
    for (qsizetype at = 0; at < code.size(); ++at) {
        if (code[at] == u'"') quoted = !quoted;
        if (quoted) continue;
        if (code[at] == u'\\')
            ++at;
        else if (code[at] == u';') {
            sections << code.mid(begin, at - begin);
            begin = at + 1;
        }
    }
    return sections << code.mid(begin);
}

// A word for every number but 0, another for 0: how some writers keep the result of a condition.
bool tellsTruth(const QStringList& sections) {
    if (sections.size() != 3 || sections[0] != sections[1] || sections[0] == sections[2])
        return false;
    return std::all_of(sections.begin(), sections.end(), [](const QString& section) {
        return section.size() > 2 && section.startsWith(u'"') && section.endsWith(u'"');
    });
}

bool isOneOf(QChar letter, QStringView letters) { return letters.indexOf(letter) >= 0; }

bool isDateLetter(QChar letter) { return isOneOf(letter, u"ymdhs"); }

int placesBehindPoint(const QString& section) {
    const qsizetype point = section.indexOf(u'.');
    if (point < 0) return 0;
    int places = 0;
    for (qsizetype at = point + 1; at < section.size() && section[at] == u'0'; ++at)
        ++places;
    return places;
}

QString padded(int value, int width) {
    return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0'));
}

QString dayField(QChar letter, int count, QDate day) {
    const QLocale english = QLocale::c();
    if (letter == u'y') return count > 2 ? padded(day.year(), 4) : padded(day.year() % 100, 2);
    if (letter == u'd') {
        if (count < 3) return padded(day.day(), count);
        return english.dayName(day.dayOfWeek(),
                               count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
    }
    if (count < 3) return padded(day.month(), count);
    const QString name =
        english.monthName(day.month(), count == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
    return count == 5 ? name.left(1) : name;
}

// `halves`: the hours are counted twice to twelve.
QString timeField(QChar letter, int count, QTime time, bool halves) {
    const int width = std::min(count, 2);
    switch (letter.unicode()) {
        case u'h':
            return padded(halves ? (time.hour() + 11) % 12 + 1 : time.hour(), width);
        case u'n':
            return padded(time.minute(), width);
        case u's':
            return padded(time.second(), width);
        case u'.':
            return u'.' + padded(time.msec(), 3).left(count);
        default:
            return QString::fromLatin1(time.hour() < 12 ? "AM" : "PM").left(count);
    }
}

// A whole stretch of time in the unit [h], [m] or [s].
QString elapsed(const QString& unit, int width, qint64 milliseconds) {
    const qint64 length = unit == u"h" ? 3'600'000 : unit == u"m" ? 60'000 : 1000;
    return QStringLiteral("%1").arg(milliseconds / length, width, 10, QLatin1Char('0'));
}

// A text that stands in double quotes, brackets or behind a backslash; advances past it.
QString literalAt(const QString& section, qsizetype& at) {
    const QChar first = section[at++];
    if (first == u'\\') return at < section.size() ? QString(section[at++]) : QString();
    if (first == u'_' || first == u'*') {  // the width of a sign, a sign that fills the cell
        ++at;
        return {};
    }
    if (first != u'"') return first;
    const qsizetype end = section.indexOf(u'"', at);
    const QString text = section.mid(at, end < 0 ? -1 : end - at);
    at = end < 0 ? section.size() : end + 1;
    return text;
}

}  // namespace

NumberFormat::NumberFormat(const QString& code) {
    const QStringList sections = sectionsOf(code);
    if (tellsTruth(sections)) {
        kind_ = kTruth;
        return;
    }
    const QString& section = sections.front();
    if (section.compare(QStringLiteral("General"), Qt::CaseInsensitive) == 0) return;
    tokenize(section);
    for (const Token& token : tokens_)
        if (isDateLetter(token.letter) || token.letter == u'e') kind_ = kDate;
    if (kind_ == kDate) {
        tellMinutesFromMonths();
        return;
    }
    tokens_.clear();
    if (section.endsWith(u'%')) {
        kind_ = kPercent;
        digits_ = placesBehindPoint(section);
    } else if (section.size() > 1 && section.count(u'0') == section.size()) {
        kind_ = kZeros;
        digits_ = static_cast<int>(section.size());
    }
}

NumberFormat NumberFormat::builtIn(int number) {
    static const QHash<int, QString> codes{{9, QStringLiteral("0%")},
                                           {10, QStringLiteral("0.00%")},
                                           {14, QStringLiteral("dd/mm/yyyy")},
                                           {15, QStringLiteral("d-mmm-yy")},
                                           {16, QStringLiteral("d-mmm")},
                                           {17, QStringLiteral("mmm-yy")},
                                           {18, QStringLiteral("h:mm AM/PM")},
                                           {19, QStringLiteral("h:mm:ss AM/PM")},
                                           {20, QStringLiteral("h:mm")},
                                           {21, QStringLiteral("h:mm:ss")},
                                           {22, QStringLiteral("dd/mm/yyyy h:mm")},
                                           {45, QStringLiteral("mm:ss")},
                                           {46, QStringLiteral("[h]:mm:ss")},
                                           {47, QStringLiteral("mm:ss.0")}};
    // The dates of the East Asian editions; their own patterns differ from one to the next.
    if ((number >= 27 && number <= 36) || (number >= 50 && number <= 58))
        return NumberFormat(QStringLiteral("yyyy/mm/dd"));
    const auto code = codes.constFind(number);
    return code == codes.cend() ? NumberFormat() : NumberFormat(*code);
}

void NumberFormat::tokenize(const QString& section) {
    const QString lower = section.toLower();
    for (qsizetype at = 0; at < section.size();) {
        const QChar letter = lower[at];
        qsizetype end = at;
        while (end < lower.size() && lower[end] == letter)
            ++end;
        if (isDateLetter(letter)) {
            tokens_.push_back({letter, static_cast<int>(end - at), {}});
            at = end;
        } else if (letter == u'[') {  // [h] counts on past a day; colours, languages say nothing
            const qsizetype close = lower.indexOf(u']', at);
            const QString inner = lower.mid(at + 1, close < 0 ? -1 : close - at - 1);
            if (!inner.isEmpty() && isOneOf(inner[0], u"hms") &&
                inner.count(inner[0]) == inner.size())
                tokens_.push_back({u'e', static_cast<int>(inner.size()), inner.left(1)});
            at = close < 0 ? section.size() : close + 1;
        } else if (lower.mid(at, 5) == u"am/pm" || lower.mid(at, 3) == u"a/p") {
            const bool whole = lower.mid(at, 5) == u"am/pm";
            tokens_.push_back({u'a', whole ? 2 : 1, {}});
            at += whole ? 5 : 3;
        } else if (letter == u'.' && at + 1 < lower.size() && lower[at + 1] == u'0') {
            end = at + 1;
            while (end < lower.size() && lower[end] == u'0')
                ++end;
            tokens_.push_back({u'.', static_cast<int>(end - at - 1), {}});
            at = end;
        } else {
            tokens_.push_back({QChar(), 0, literalAt(section, at)});
        }
    }
}

// An m is a minute behind an hour and before a second, a month elsewhere.
void NumberFormat::tellMinutesFromMonths() {
    QChar before;
    for (Token& token : tokens_) {
        if (token.letter.isNull()) continue;
        const bool hour = before == u'h';
        before = token.letter == u'e' ? token.text[0] : token.letter;
        if (token.letter == u'm' && hour && token.count <= 2) token.letter = u'n';
    }
    QChar after;
    for (auto token = tokens_.rbegin(); token != tokens_.rend(); ++token) {
        if (token->letter.isNull()) continue;
        if (token->letter == u'm' && after == u's' && token->count <= 2) token->letter = u'n';
        after = token->letter == u'e' ? token->text[0] : token->letter;
    }
}

QString NumberFormat::plain(double value) const {
    if (std::fabs(value) < 1e15 && value == std::floor(value))
        return QString::number(static_cast<qint64>(value));
    return QLocale::c().toString(value, 'g', 15).toUpper();
}

QString NumberFormat::format(double value, bool from1904) const {
    switch (kind_) {
        case kPercent:
            return QLocale::c().toString(value * 100.0, 'f', digits_) + u'%';
        case kZeros:
            if (value < 0 || value >= 1e15) return plain(value);
            return QStringLiteral("%1").arg(std::llround(value), digits_, 10, QLatin1Char('0'));
        case kDate:
            if (value < 0 || value >= kDaysTo9999) return plain(value);
            return date(value, from1904);
        case kTruth:
            return value != 0.0 ? QStringLiteral("True") : QStringLiteral("False");
        case kPlain:
            break;
    }
    return plain(value);
}

QString NumberFormat::date(double serial, bool from1904) const {
    // The time is rounded to what the pattern shows at the finest.
    double unit = 60'000.0;
    bool halves = false;
    for (const Token& token : tokens_) {
        if (token.letter == u's' || (token.letter == u'e' && token.text == u"s"))
            unit = std::min(unit, 1000.0);
        if (token.letter == u'.') unit = std::pow(10.0, 3 - std::min(token.count, 3));
        halves = halves || token.letter == u'a';
    }
    const auto milliseconds =
        static_cast<qint64>(std::round(serial * kMillisecondsOfDay / unit) * unit);
    const qint64 days = milliseconds / kMillisecondsOfDay;
    // 1900 counts as a leap year there: day 60 is a 29 February that never was.
    const QDate first = from1904    ? QDate(1904, 1, 1)
                        : days < 60 ? QDate(1899, 12, 31)
                                    : QDate(1899, 12, 30);
    const QDate day = first.addDays(days);
    const QTime time =
        QTime::fromMSecsSinceStartOfDay(static_cast<int>(milliseconds % kMillisecondsOfDay));
    QString text;
    for (const Token& token : tokens_) {
        if (token.letter.isNull())
            text += token.text;
        else if (token.letter == u'e')
            text += elapsed(token.text, token.count, milliseconds);
        else if (isOneOf(token.letter, u"ymd"))
            text += dayField(token.letter, token.count, day);
        else
            text += timeField(token.letter, token.count, time, halves);
    }
    return text;
}

}  // namespace tarnwick::documents
