#pragma once

#include <QString>
#include <QStringView>

namespace tarnwick::settings {

// The statement that writes one row of Admin as a whole, column by column in ascending order:
//     UpdateStatement().number(u"12 ms").boolean(true).quoted(name).where(u" WHERE F1 = 19")
// gives "UPDATE Admin SET  F2 = 12, F3 = 1, F4 = 'name' WHERE F1 = 19". Values become part of the
// text; there are no parameters.
class UpdateStatement {
  public:
    explicit UpdateStatement(int firstColumn = 2) : column_(firstColumn) {}

    // The leading number of an entry, 0 if there is none. Faults with "Overflow" when no number
    // can hold it.
    UpdateStatement& number(QStringView entry);
    // An entry as it was typed. Only one that is a number as a whole, with a decimal point, gives a
    // statement; any other is the provider's syntax error or, with a comma or a comment in it,
    // could store something else, or in every row, and faults here. "Overflow" when no number can
    // hold it.
    UpdateStatement& asTyped(const QString& entry);
    UpdateStatement& integer(qint32 value);
    UpdateStatement& boolean(bool value);  // the provider's literals, 1 and 0
    // Between single quotes as it is. An apostrophe in it breaks the statement and faults; left to
    // the provider, some with several of them would be good statements that store something else.
    UpdateStatement& quoted(const QString& text);
    // Between single quotes, with its apostrophes doubled.
    UpdateStatement& quotedDoubled(const QString& text);

    // The complete statement. `tail` names the row and brings its own blanks.
    QString where(QStringView tail) const { return text_ + tail.toString(); }

  private:
    UpdateStatement& add(const QString& literal);

    QString text_ = QStringLiteral("UPDATE Admin SET ");
    int column_;
    bool first_ = true;
};

}  // namespace tarnwick::settings
