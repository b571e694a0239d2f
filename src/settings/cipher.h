#pragma once

#include <QByteArray>

struct sqlite3;

namespace tarnwick::settings {

// Gives the key to a database handle on which nothing has run yet: for the program that opens the
// delivered file and for the tool that makes it, which must agree on it. Returns a provider's code.
int applyKey(sqlite3* database, const QByteArray& password);

// The password of every delivered database.
inline constexpr char kDatabasePassword[] = "t9c27p5";

}  // namespace tarnwick::settings
