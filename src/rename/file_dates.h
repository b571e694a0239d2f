#pragma once

#include <QDateTime>
#include <QString>

namespace tarnwick::platform {
class FileSystem;
}

namespace tarnwick::rename {

// File dates in wall-clock time, as text and shifted by hours. A text and its date convert into
// each other, to the second.

// The wall-clock time `hours` later, where every day has 24 hours even if the clocks change. To the
// nearest second. Faults with "Overflow" or, outside the years 100 to 9999, with "Invalid procedure
// call or argument".
QDateTime shifted(const QDateTime& wallClock, double hours);

QString textOfDate(const QDateTime& wallClock);

// Sets the file's date of last modification and leaves its other dates alone. False if there is no
// such file, the text is not a date, or the date cannot be set. If the wall clock shows a time
// twice, the first is used; a time that it skips is moved forward by the length of the gap.
// `error`: gets an errno value that says why, or 0.
bool SetFileDateTime(platform::FileSystem& files, const QString& path, const QString& date,
                     int* error = nullptr);

}  // namespace tarnwick::rename
