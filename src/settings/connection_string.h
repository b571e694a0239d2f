#pragma once

#include <QString>

namespace tarnwick::settings {

// How a database is opened, as one text: parts "name=value" joined by semicolons. A value that
// holds a semicolon or a quotation mark stands in quotation marks, and those inside are doubled, so
// that any folder can be told.

// The database beside the executable. `appPath`: the folder of the executable, with or without a
// separator at its end.
QString connectionString(const QString& appPath);

// The value of one part. Faults with "Invalid connection string." where the text is none, or has no
// such part.
QString partOf(const QString& connectionString, const QString& name);

// The full path of the database.
QString databaseFile(const QString& connectionString);

}  // namespace tarnwick::settings
