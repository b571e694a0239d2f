#pragma once

#include <QString>

namespace tarnwick::project {

// Prefix, running number and suffix: the names of prompts if the script gives none.
struct NamingScheme {
    QString prefix;
    qint32 vlFileNumber = 0;     // number of the first name
    qint16 viFileIncrement = 0;  // step between two names
    QString suffix;

    // The name at `position`, counted from 0; the number has no padding. A product or a sum beyond
    // 32 bits faults with "Overflow".
    QString nameAt(qint32 position) const;

    // The same for the preview, which uses 16-bit numbers: a step times position beyond 16 bits
    // faults with "Overflow".
    QString previewAt(qint16 position) const;

  private:
    QString tooLarge() const;  // the detail of an overflow
    QString nameAfter(qint32 steps) const;
};

// The scheme in the texts of the four boxes. Numbers are read leniently and rounded, and fault with
// "Overflow" beyond 32 bits (start) and 16 bits (increment).
NamingScheme readScheme(const QString& prefix, const QString& start, const QString& increment,
                        const QString& suffix);

}  // namespace tarnwick::project
