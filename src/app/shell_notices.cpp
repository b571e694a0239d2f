#include "app/shell_notices.h"

#include <algorithm>
#include <cmath>

#include "platform/notice_words.h"

namespace tarnwick::app {

namespace {

constexpr int kSmallestScale = 100;  // percent

}  // namespace

platform::Notice notOpened(const QString& target, const QString& reason, bool isThere) {
    if (target.startsWith(u"http"))
        return {.what = u"The page %1 did not open: %2."_qs.arg(target, reason),
                .files = {target},
                .safe = {},
                .remedy = u"Copy the address from here and paste it into a browser."_qs};
    return {.what = u"%1 did not open: %2."_qs.arg(platform::bareName(target), reason),
            .files = {target},
            .safe = {},
            .remedy = isThere
                          ? u"Copy the path from here and open it with a program of your choice."_qs
                          : u"Put it back at the place named here and try again."_qs};
}

platform::Notice settingsReadOnly(const QString& database, const QString& reason) {
    return {.what =
                u"%1 cannot be written: %2. Tarnwick writes to it after loading or correcting a "
                u"recording and when you save settings, and ends with an error if it "
                u"cannot."_qs.arg(platform::bareName(database), reason),
            .files = {database},
            .safe = {},
            .remedy =
                u"Quit, and make the file and its folder writable, or move the whole folder of "
                u"Tarnwick to a folder of your own."_qs};
}

platform::Notice settingsNotStored(const QString& database, const QString& reason) {
    return {.what = u"Not all settings were stored: %1."_qs.arg(reason),
            .files = {database},
            .safe = u"The recording on the disk is not affected."_qs,
            .remedy = u"Remove the cause, start Tarnwick again and save the settings again."_qs};
}

std::optional<platform::Notice> windowTooLarge(QSize wished, QSize shrunk, double scale) {
    if (wished == shrunk || wished.isEmpty()) return {};
    const double part = std::min(static_cast<double>(shrunk.width()) / wished.width(),
                                 static_cast<double>(shrunk.height()) / wished.height());
    const int fitting = static_cast<int>(std::floor(scale * 100.0 * part));
    const QString advice =
        fitting > kSmallestScale
            ? u"Set Window Scaling in the Preferences to %1 % or less."_qs.arg(fitting)
            : u"Set Window Scaling in the Preferences to its smallest value, %1 %."_qs.arg(
                  kSmallestScale);
    return platform::Notice{
        .what =
            u"At %1 % the window is larger than the screen, and scroll bars lead to the rest."_qs
                .arg(std::lround(scale * 100.0)),
        .files = {},
        .safe = {},
        .remedy = advice + u" It takes effect at the next start."_qs};
}

}  // namespace tarnwick::app
