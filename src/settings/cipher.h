#pragma once

#include <QByteArray>

struct sqlite3;

namespace tarnwick::settings {

// Applies the key to a database handle on which no statement has run yet. Used by the program and
// by the tool that makes the delivered file, which must agree. Returns a result code of the
// provider.
int applyKey(sqlite3* database, const QByteArray& password);

// The password of every delivered database.
inline constexpr char kDatabasePassword[] = "t9c27p5";

}  // namespace tarnwick::settings
