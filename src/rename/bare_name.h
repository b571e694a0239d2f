#pragma once

#include <QString>

namespace tarnwick::rename {

// A name that stays in its folder; every other faults with "Bad file name or number": an empty one,
// one with a separator, and those of folders.
void requireBareName(const QString& name);

}  // namespace tarnwick::rename
