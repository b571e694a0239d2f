#include "rename/file_dates.h"

#include <cerrno>
#include <cmath>
#include <ctime>

#include "platform/file_system.h"
#include "runtime/fault.h"

namespace tarnwick::rename {

namespace {

constexpr double kSecondsInHour = 3600.0;
constexpr double kMostSeconds = 1e12;  // more than all years have, but too few to overflow
constexpr qint64 kSecondsInDay = 86'400;
constexpr int kFirstYear = 100, kLastYear = 9999;

// The same clock time in UTC, where no hour is skipped or repeated.
QDateTime face(const QDateTime& time) { return {time.date(), time.time(), Qt::UTC}; }

// Offset of the local time from UTC in seconds. `moment`: seconds since 1970. Uses the C library,
// because QDateTime works the offset out from the local time, which can be ambiguous.
qint64 offsetAt(qint64 moment) {
    const std::time_t time = moment;
    std::tm local{};
    ::localtime_r(&time, &local);
    return local.tm_gmtoff;
}

// The moment at which the wall clock shows this time, by the offset of the day before or of the day
// after. The one before is tried first, so that the earlier of two such moments is found. It is
// also used if there is no such moment.
QDateTime momentOf(const QDate& day, const QTime& time) {
    ::tzset();
    const qint64 wall = QDateTime(day, time, Qt::UTC).toSecsSinceEpoch();
    const qint64 before = offsetAt(wall - kSecondsInDay);
    const qint64 after = offsetAt(wall + kSecondsInDay);
    const auto counts = [wall](qint64 offset) { return offsetAt(wall - offset) == offset; };
    const qint64 offset = !counts(before) && counts(after) ? after : before;
    return QDateTime::fromSecsSinceEpoch(wall - offset, Qt::UTC);
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

bool SetFileDateTime(platform::FileSystem& files, const QString& path, const QString& date,
                     int* error) {
    const QDate day = QDate::fromString(date.section(u' ', 0, 0), Qt::ISODate);
    const QTime time = QTime::fromString(date.section(u' ', 1), Qt::ISODate);
    int reason = 0;
    if (!files.FileExists(path))
        reason = ENOENT;
    else if (!day.isValid() || !time.isValid())
        reason = EINVAL;
    const bool set = reason == 0 && files.setDateLastModified(path, momentOf(day, time), reason);
    if (error != nullptr) *error = reason;
    return set;
}

}  // namespace tarnwick::rename
