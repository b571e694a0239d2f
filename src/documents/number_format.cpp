#include "documents/number_format.h"

#include <QDate>
#include <QLocale>
#include <QTime>
#include <cmath>

namespace tarnwick::documents {

namespace {

constexpr qint64 kMillisecondsOfDay = 86'400'000;
constexpr double kDaysTo9999 = 2'958'466.0;  // the first day after the year 9999

// No office program writes a longer code, and the code's text is repeated in each cell.
constexpr qsizetype kLongestCode = 255;

// True for a code with one word for every number but 0 and another for 0: some writers use this
// for True and False.
bool tellsTruth(const std::vector<CodeSection>& sections) {
    if (sections.size() != 3 || sections[0] != sections[1] || sections[0] == sections[2])
        return false;
    return std::all_of(sections.begin(), sections.end(), [](const CodeSection& section) {
        return section.size() == 1 && section[0].kind == CodePiece::kText &&
               !section[0].text.isEmpty();
    });
}

bool hasSign(const CodeSection& section, QChar sign) {
    return std::any_of(section.begin(), section.end(),
                       [sign](const CodePiece& piece) { return piece.sign() == sign; });
}

bool isOneOf(QChar letter, QStringView letters) { return letters.indexOf(letter) >= 0; }

bool isDateLetter(QChar letter) { return isOneOf(letter, u"ymdhs"); }

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

// `halves`: 12-hour clock.
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

// An elapsed time in the unit [h], [m] or [s].
QString elapsed(const QString& unit, int width, qint64 milliseconds) {
    const qint64 length = unit == u"h" ? 3'600'000 : unit == u"m" ? 60'000 : 1000;
    return QStringLiteral("%1").arg(milliseconds / length, width, 10, QLatin1Char('0'));
}

}  // namespace

NumberFormat::NumberFormat(const QString& code) {
    if (code.size() > kLongestCode) return;
    std::vector<CodeSection> sections = sectionsOf(code);
    if (tellsTruth(sections)) {
        kind_ = kTruth;
        return;
    }
    if (sections.size() > 3 || hasSign(sections.back(), u'@')) {
        textSection_ = std::move(sections.back());
        sections.pop_back();
    }
    if (sections.empty()) return;
    tokenize(sections.front());
    for (const Token& token : tokens_)
        if (isDateLetter(token.letter) || token.letter == u'e') kind_ = kDate;
    if (kind_ == kDate) {
        tellMinutesFromMonths();
        return;
    }
    tokens_.clear();
    for (std::size_t i = 0; i < std::min<std::size_t>(sections.size(), 3); ++i)
        patterns_.emplace_back(sections[i],
                               i == 1 ? DigitPattern::kNegative : DigitPattern::kAnySign);
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
    // The dates of the East Asian editions. Each edition has its own pattern for them.
    if ((number >= 27 && number <= 36) || (number >= 50 && number <= 58))
        return NumberFormat(QStringLiteral("yyyy/mm/dd"));
    const auto code = codes.constFind(number);
    return code == codes.cend() ? NumberFormat() : NumberFormat(*code);
}

void NumberFormat::tokenize(const CodeSection& section) {
    QString signs;
    for (const CodePiece& piece : section)
        signs += piece.sign();
    const auto runFrom = [&](qsizetype begin) {
        qsizetype end = begin;
        while (end < signs.size() && signs[end] == signs[begin])
            ++end;
        return static_cast<int>(end - begin);
    };
    for (qsizetype at = 0; at < signs.size();) {
        const CodePiece& piece = section[static_cast<std::size_t>(at)];
        const QChar letter = signs[at];
        qsizetype length = 1;
        if (piece.kind == CodePiece::kBrackets) {  // [h] counts past a day; colours are ignored
            const QString inner = piece.text.toLower();
            if (!inner.isEmpty() && isOneOf(inner[0], u"hms") &&
                inner.count(inner[0]) == inner.size())
                tokens_.push_back({u'e', static_cast<int>(inner.size()), inner.left(1)});
        } else if (isDateLetter(letter)) {
            length = runFrom(at);
            tokens_.push_back({letter, static_cast<int>(length), {}});
        } else if (signs.mid(at, 5) == u"am/pm" || signs.mid(at, 3) == u"a/p") {
            const bool whole = signs.mid(at, 5) == u"am/pm";
            tokens_.push_back({u'a', whole ? 2 : 1, {}});
            length = whole ? 5 : 3;
        } else if (letter == u'.' && signs.mid(at + 1, 1) == u"0") {
            length = 1 + runFrom(at + 1);
            tokens_.push_back({u'.', static_cast<int>(length - 1), {}});
        } else {
            tokens_.push_back({QChar(), 0, piece.text});
        }
        at += length;
    }
}

// An m means minutes after an hour or before a second, and months elsewhere.
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
        case kDate:
            if (value < 0 || value >= kDaysTo9999) return plain(value);
            return date(value, from1904);
        case kTruth:
            return value != 0.0 ? QStringLiteral("True") : QStringLiteral("False");
        case kNumber:
            break;
    }
    if (patterns_.empty()) return plain(value);
    const std::size_t section = value < 0.0 ? 1 : value > 0.0 ? 0 : 2;
    const DigitPattern& pattern = patterns_[section < patterns_.size() ? section : 0];
    return pattern.format(value, plain(std::fabs(value))).value_or(plain(value));
}

QString NumberFormat::format(const QString& text) const {
    if (text.isEmpty() || !hasSign(textSection_, u'@')) return text;
    QString shown;
    for (const CodePiece& piece : textSection_) {
        if (piece.sign() == u'@')
            shown += text;
        else if (piece.kind == CodePiece::kText || piece.kind == CodePiece::kSign)
            shown += piece.text;
    }
    return shown;
}

QString NumberFormat::date(double serial, bool from1904) const {
    // The time is rounded to the smallest unit that the pattern shows.
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
    // Workbooks treat 1900 as a leap year: day 60 is 29 February 1900, which did not exist.
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
