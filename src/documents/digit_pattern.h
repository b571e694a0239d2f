#pragma once

#include <optional>

#include "documents/format_code.h"

namespace tarnwick::documents {

// A section of a number format code: places for digits, with text between and around them. It is
// used only if it adds something to the number: a percentage, leading zeros ("0007", "000-012") or
// text around it ("Take 7"). A section that only rounds the number or groups its digits is ignored,
// as is one with an exponent, a fraction or a condition.
class DigitPattern {
  public:
    enum Sign { kAnySign, kNegative };  // the numbers that the section is for

    DigitPattern(const CodeSection& section, Sign sign);

    // The number as an office program shows it: halves rounded up, and all digits shown even if
    // there are fewer places. nullopt if the pattern is ignored, if it would round a number to
    // which it only adds text, or past 15 digits. `plain`: the number without its sign, for
    // General.
    std::optional<QString> format(double value, const QString& plain) const;

  private:
    enum Use { kNothing, kText, kZeros, kPercent };
    struct Element {
        QChar place;  // '0', '#' or '.', 'G' for the number unchanged; '\0' for text
        QString text;
    };

    void add(const CodePiece& piece);
    void addSign(const CodePiece& piece);
    void addPlace(QChar place);
    Use use(Sign sign) const;
    bool hasTextAround(Sign sign) const;
    QString written(const QString& whole, const QString& fraction, const QString& plain) const;

    std::vector<Element> elements_;
    int wholePlaces_ = 0;
    int fractionPlaces_ = 0;
    int leastWhole_ = 0;     // digits before the point, including leading zeros
    int leastFraction_ = 0;  // digits after the point, including trailing zeros
    bool point_ = false;
    bool percent_ = false;
    bool groups_ = false;
    bool general_ = false;
    bool unknown_ = false;
    bool showsSign_;
    Use use_ = kNothing;
};

}  // namespace tarnwick::documents
