#pragma once

#include <QDateTime>
#include <QString>

namespace tarnwick::platform {
class FileSystem;
}

namespace tarnwick::rename {

// Dates of files in wall-clock time, as texts and shifted by hours. A text and its date lead back
// to one another, to the second.

// The date that the wall clock shows `hours` later: a day has 24 of them, also where the clocks
// change. To the nearest second; "Overflow" or, outside the years 100 to 9999, "Invalid procedure
// call or argument".
QDateTime shifted(const QDateTime& wallClock, double hours);

QString textOfDate(const QDateTime& wallClock);

// Gives the file another date of last modification and leaves its other dates alone. False where no
// file answers to the path, the text is no date, or the date cannot be set. Of a time that the wall
// clock shows twice the first is meant; of one that it leaves out, the one as much after the gap.
bool SetFileDateTime(platform::FileSystem& files, const QString& path, const QString& date);

}  // namespace tarnwick::rename
