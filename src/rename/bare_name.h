#pragma once

#include <QString>

namespace tarnwick::rename {

// Why a text cannot be the bare name of a file, in a few words about "it": it is empty, "." or
// "..", or contains a separator or a null character. Empty if it can.
QString whyNoBareName(const QString& name);

// Checks that a name stays in its folder. Faults with "Bad file name or number" and the reason if
// it does not.
void requireBareName(const QString& name);

}  // namespace tarnwick::rename
