#pragma once

#include <QString>
#include <vector>

#include "documents/digit_pattern.h"

namespace tarnwick::documents {

// How a workbook shows what a cell holds, taken from the cell's format code. Dates and times are
// written with the code's own pattern, and so are numbers where it says something of them: a
// percentage, leading zeros ("0007"), text around them ("Take 7"). Every other number is shown as
// it is, to 15 digits and with a decimal point: a format that only rounds it or groups its digits
// says nothing of what is meant.
class NumberFormat {
  public:
    NumberFormat() = default;
    explicit NumberFormat(const QString& code);

    // One of the codes that a workbook names by number alone.
    static NumberFormat builtIn(int number);

    // `from1904`: whether the workbook counts its days from 1904 instead of 1900.
    QString format(double value, bool from1904) const;
    // A text, with what the code puts around texts.
    QString format(const QString& text) const;

  private:
    enum Kind { kNumber, kTruth, kDate };
    struct Token {
        QChar letter;  // 'y', 'm', 'n' (minute), 'd', 'h', 's', '.' (parts of a second),
                       // 'a' (half of the day), 'e' (elapsed), '\0' for text
        int count = 0;
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
