#include "rename/file_dates.h"

#include <cmath>

#include "platform/file_system.h"
#include "runtime/fault.h"

namespace tarnwick::rename {

namespace {

constexpr double kSecondsInHour = 3600.0;
constexpr double kMostSeconds = 1e12;  // more than all years hold, less than overflows
constexpr int kFirstYear = 100, kLastYear = 9999;

// On the clock's face, where no hour is left out or comes twice.
QDateTime face(const QDateTime& time) { return {time.date(), time.time(), Qt::UTC}; }

// The moment at which the wall clock shows this. Where it does so twice, the clock goes back from
// the offset of the day before.
QDateTime momentOf(const QDate& day, const QTime& time) {
    const QDateTime found(day, time, Qt::LocalTime);
    const int offsetBefore = found.addDays(-1).offsetFromUtc();
    const QDateTime earlier = found.addSecs(found.offsetFromUtc() - offsetBefore);
    return earlier < found && face(earlier) == face(found) ? earlier : found;
}

}  // namespace

QDateTime shifted(const QDateTime& wallClock, double hours) {
    const double seconds = std::nearbyint(hours * kSecondsInHour);
    if (!(std::fabs(seconds) <= kMostSeconds)) runtime::overflow();
    const QDateTime later = face(wallClock).addSecs(static_cast<qint64>(seconds));
    if (later.date().year() < kFirstYear || later.date().year() > kLastYear) runtime::invalidCall();
    return later;
}

QString textOfDate(const QDateTime& wallClock) {
    return wallClock.toString(u"yyyy-MM-dd hh:mm:ss");
}

bool SetFileDateTime(platform::FileSystem& files, const QString& path, const QString& date) {
    const QDate day = QDate::fromString(date.section(u' ', 0, 0), Qt::ISODate);
    const QTime time = QTime::fromString(date.section(u' ', 1), Qt::ISODate);
    if (!files.FileExists(path) || !day.isValid() || !time.isValid()) return false;
    return files.setDateLastModified(path, momentOf(day, time));
}

}  // namespace tarnwick::rename
