#pragma once

#include <QString>
#include <vector>

namespace tarnwick::documents {

// How a workbook shows the numbers of a cell, taken from the cell's format code. Dates and times
// are written with the code's own pattern, percentages as such, codes with leading zeros ("0007")
// with theirs. Every other number is shown as it is, to 15 digits and with a decimal point: a
// format that only rounds it or groups its digits says nothing of what is meant.
class NumberFormat {
  public:
    NumberFormat() = default;
    explicit NumberFormat(const QString& code);

    // One of the codes that a workbook names by number alone.
    static NumberFormat builtIn(int number);

    // `from1904`: whether the workbook counts its days from 1904 instead of 1900.
    QString format(double value, bool from1904) const;

  private:
    enum Kind { kPlain, kPercent, kZeros, kTruth, kDate };
    struct Token {
        QChar letter;  // 'y', 'm', 'n' (minute), 'd', 'h', 's', '.' (parts of a second),
                       // 'a' (half of the day), 'e' (elapsed), '\0' for text
        int count = 0;
        QString text;
    };

    void tokenize(const QString& section);
    void tellMinutesFromMonths();
    QString date(double serial, bool from1904) const;
    QString plain(double value) const;

    Kind kind_ = kPlain;
    int digits_ = 0;  // places behind the point of a percentage, width of a code with zeros
    std::vector<Token> tokens_;
};

}  // namespace tarnwick::documents
