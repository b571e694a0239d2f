#include "documents/digit_pattern.h"

#include <algorithm>
#include <cmath>

namespace tarnwick::documents {

namespace {

constexpr double kTooManyDigits = 1e15;

bool isCondition(const QString& inner) {
    return !inner.isEmpty() && QStringView(u"<=>").contains(inner[0]);
}

// Scales the number as written with 15 digits, so that 0.145 is a half at two places.
double scaled(double magnitude, int places) {
    return QByteArray::number(magnitude * std::pow(10.0, places), 'g', 15).toDouble();
}

}  // namespace

DigitPattern::DigitPattern(const CodeSection& section, Sign sign) : showsSign_(sign == kAnySign) {
    for (const CodePiece& piece : section)
        add(piece);
    use_ = use(sign);
}

void DigitPattern::add(const CodePiece& piece) {
    switch (piece.kind) {
        case CodePiece::kSign:
            return addSign(piece);
        case CodePiece::kText:
            elements_.push_back({QChar(), piece.text});
            return;
        case CodePiece::kBrackets:  // colours are ignored
            unknown_ = unknown_ || isCondition(piece.text);
            return;
        case CodePiece::kGeneral:
            general_ = true;
            elements_.push_back({u'G', {}});
    }
}

void DigitPattern::addSign(const CodePiece& piece) {
    switch (piece.sign().unicode()) {
        case u'0':
            return addPlace(u'0');
        case u'#':
        case u'?':  // a blank in place of a zero, which only aligns columns
            return addPlace(u'#');
        case u',':
            groups_ = true;
            return;
        case u'/':
        case u'e':
        case u'@':
            unknown_ = true;
            return;
        case u'.':
            if (point_) break;
            if (wholePlaces_ == 0) addPlace(u'#');
            point_ = true;
            elements_.push_back({u'.', {}});
            return;
        case u'%':
            percent_ = true;
            break;
        default:
            break;
    }
    elements_.push_back({QChar(), piece.text});
}

void DigitPattern::addPlace(QChar place) {
    elements_.push_back({place, {}});
    if (point_) {
        ++fractionPlaces_;
        if (place == u'0') leastFraction_ = fractionPlaces_;
    } else {
        ++wholePlaces_;
        if (place == u'0' || leastWhole_ > 0) ++leastWhole_;
    }
}

DigitPattern::Use DigitPattern::use(Sign sign) const {
    const bool places = wholePlaces_ + fractionPlaces_ > 0;
    if (unknown_ || general_ == places) return kNothing;
    if (percent_) return places ? kPercent : kNothing;
    if (groups_) return kNothing;
    if (leastWhole_ > 1) return kZeros;
    return !point_ && hasTextAround(sign) ? kText : kNothing;
}

// In a section for negative numbers, a minus or brackets are just the sign. Text between the
// places only groups the digits.
bool DigitPattern::hasTextAround(Sign sign) const {
    const auto isPlace = [](const Element& element) { return !element.place.isNull(); };
    const auto says = [sign](const Element& element) {
        return std::any_of(element.text.begin(), element.text.end(), [sign](QChar letter) {
            return !letter.isSpace() &&
                   !(sign == kNegative && QStringView(u"-()").contains(letter));
        });
    };
    const auto first = std::find_if(elements_.begin(), elements_.end(), isPlace);
    const auto last = std::find_if(elements_.rbegin(), elements_.rend(), isPlace);
    return std::any_of(elements_.begin(), first, says) ||
           std::any_of(elements_.rbegin(), last, says);
}

std::optional<QString> DigitPattern::format(double value, const QString& plain) const {
    if (use_ == kNothing) return std::nullopt;
    const double number = scaled(std::fabs(value), fractionPlaces_ + (percent_ ? 2 : 0));
    if (!(number < kTooManyDigits)) return std::nullopt;
    if (use_ == kText && !general_ && number != std::floor(number)) return std::nullopt;
    const qint64 rounded = std::llround(number);
    const QString digits = QString::number(rounded).rightJustified(fractionPlaces_, u'0');
    QString whole = digits.chopped(fractionPlaces_);
    if (whole == u"0") whole.clear();
    QString fraction = digits.right(fractionPlaces_);
    while (fraction.size() > leastFraction_ && fraction.endsWith(u'0'))
        fraction.chop(1);
    const bool minus = showsSign_ && value < 0.0 && (general_ || rounded != 0);
    return (minus ? QStringLiteral("-") : QString()) +
           written(whole.rightJustified(leastWhole_, u'0'), fraction, plain);
}

// The first place takes all digits that have no place of their own.
QString DigitPattern::written(const QString& whole, const QString& fraction,
                              const QString& plain) const {
    QString text;
    qsizetype place = 0, behind = -1;
    for (const Element& element : elements_) {
        if (element.place.isNull()) {
            text += element.text;
        } else if (element.place == u'G') {
            text += plain;
        } else if (element.place == u'.') {
            behind = 0;
            if (!fraction.isEmpty()) text += u'.';
        } else if (behind >= 0) {
            text += fraction.mid(behind++, 1);
        } else {
            const qsizetype end = whole.size() - (wholePlaces_ - ++place);
            const qsizetype begin = place == 1 ? 0 : std::max<qsizetype>(end - 1, 0);
            if (end > begin) text += whole.mid(begin, end - begin);
        }
    }
    return text;
}

}  // namespace tarnwick::documents
