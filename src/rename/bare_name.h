#pragma once

#include <QString>

namespace tarnwick::rename {

// Checks that a name stays in its folder. Faults with "Bad file name or number" if it is empty, "."
// or "..", or contains a separator or a null character.
void requireBareName(const QString& name);

}  // namespace tarnwick::rename
