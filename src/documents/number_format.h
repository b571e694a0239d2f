#pragma once

#include <QString>
#include <vector>

#include "documents/digit_pattern.h"

namespace tarnwick::documents {

// Formats the value of a cell as the workbook shows it, using the cell's format code. Dates and
// times follow the code's pattern, and so do numbers if the code adds something to them: a
// percentage, leading zeros ("0007"), text around them ("Take 7"). Every other number is written
// unchanged, with up to 15 digits and a decimal point, because rounding and digit grouping do not
// change what it means.
class NumberFormat {
  public:
    NumberFormat() = default;
    explicit NumberFormat(const QString& code);

    // One of the predefined codes, which a workbook refers to only by number.
    static NumberFormat builtIn(int number);

    // `from1904`: whether the workbook counts its days from 1904 instead of 1900.
    QString format(double value, bool from1904) const;
    // A text with any text that the code adds around it.
    QString format(const QString& text) const;

  private:
    enum Kind { kNumber, kTruth, kDate };
    struct Token {
        QChar letter;  // 'y', 'm', 'n' (minute), 'd', 'h', 's', '.' (parts of a second),
                       // 'a' (AM/PM), 'e' (elapsed), '\0' for text
        int count = {};
        QString text;
    };

    void tokenize(const CodeSection& section);
    void tellMinutesFromMonths();
    QString date(double serial, bool from1904) const;
    QString plain(double value) const;

    Kind kind_ = kNumber;
    std::vector<DigitPattern> patterns_;  // for positive numbers, negative ones and 0, or fewer
    std::vector<Token> tokens_;           // of a date
    CodeSection textSection_;
};

}  // namespace tarnwick::documents
