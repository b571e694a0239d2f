#pragma once

#include <QString>
#include <QStringView>

namespace tarnwick::settings {

// Builds the statement that writes a whole row of Admin, column by column in ascending order:
//     UpdateStatement().number(u"12 ms").boolean(true).quoted(name).where(u" WHERE F1 = 19")
// gives "UPDATE Admin SET  F2 = 12, F3 = 1, F4 = 'name' WHERE F1 = 19". Values become part of the
// text; there are no parameters.
class UpdateStatement {
  public:
    explicit UpdateStatement(int firstColumn = 2) : column_(firstColumn) {}

    // The leading number of an entry, 0 if there is none. Faults with "Overflow" if it is too large
    // for a double, with the entry as the detail.
    UpdateStatement& number(QStringView entry);
    // An entry as typed, which must be a number as a whole, with a decimal point. Any other text
    // faults here: it would be a syntax error for the provider or, with a comma or a comment in it,
    // could store other values or write to every row. "Overflow" if it is too large for a double.
    UpdateStatement& asTyped(const QString& entry);
    UpdateStatement& integer(qint32 value);
    UpdateStatement& boolean(bool value);  // the provider's literals, 1 and 0
    // Between single quotes, unchanged. Faults on an apostrophe: it would break the statement, and
    // several could even make a valid statement that stores something else.
    UpdateStatement& quoted(const QString& text);
    // Between single quotes, with its apostrophes doubled.
    UpdateStatement& quotedDoubled(const QString& text);

    // The complete statement. `tail` is the WHERE clause with the blank in front of it.
    QString where(QStringView tail) const { return text_ + tail.toString(); }

  private:
    UpdateStatement& add(const QString& literal);

    QString text_ = QStringLiteral("UPDATE Admin SET ");
    int column_;
    bool first_ = true;
};

}  // namespace tarnwick::settings
