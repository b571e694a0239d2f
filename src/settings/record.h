#pragma once

#include <QString>
#include <QVariant>
#include <utility>
#include <vector>

namespace tarnwick::settings {

// One row of a table, its columns by name (without regard to case). A column is Null, a number or
// a text, depending on what was stored last. An unknown name faults in every function; a Null
// faults with "Invalid use of Null" in all but isNull, isTrue and textOr. If a
// value cannot be converted, the detail of the fault is the column and the value.
class Record {
  public:
    bool isNull(const QString& name) const;
    QString text(const QString& name) const;  // numbers in short form: 1500, -0.5
    QString textOr(const QString& name, const QString& onNull) const;
    qint32 number(const QString& name) const;  // rounded; "Overflow", "Type mismatch"
    double real(const QString& name) const;
    bool ticked(const QString& name) const;  // a number that rounds to 1; "Overflow" past 16 bits
    bool isTrue(const QString& name) const;  // a number other than 0 or the text True; not Null

    // `value`: invalid for Null, else qint64, double or QString.
    void add(const QString& name, const QVariant& value);

  private:
    const QVariant& column(const QString& name) const;
    const QVariant& filled(const QString& name) const;
    template <class Conversion>
    auto converted(const QString& name, Conversion conversion) const;

    std::vector<std::pair<QString, QVariant>> columns_;
};

}  // namespace tarnwick::settings
