#pragma once

#include <QString>

namespace tarnwick::project {

// Prefix, running number, suffix: how prompts are named where the script gives no names.
struct NamingScheme {
    QString prefix;
    qint32 vlFileNumber = 0;     // number of the first name
    qint16 viFileIncrement = 0;  // step between two names
    QString suffix;

    // The name at `position`, counted from 0; the number has no padding. A step or a sum beyond
    // 32 bits faults with "Overflow".
    QString nameAt(qint32 position) const;

    // The same for the preview, which works with shorter numbers: a step times position beyond 16
    // bits faults with "Overflow".
    QString previewAt(qint16 position) const;

  private:
    QString nameAfter(qint32 steps) const;
};

// The scheme as the four boxes spell it: numbers are lenient, rounded, and fault with "Overflow"
// beyond 32 bits (start) and 16 bits (increment).
NamingScheme readScheme(const QString& prefix, const QString& start, const QString& increment,
                        const QString& suffix);

}  // namespace tarnwick::project
