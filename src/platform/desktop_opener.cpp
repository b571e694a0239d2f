#include "platform/desktop_opener.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace tarnwick::platform {

namespace {

bool canBeOpened(const QString& target) {
    const QString scheme = QUrl(target).scheme();
    if (scheme == u"http" || scheme == u"https") return true;
    const QFileInfo file(target);
    return file.isAbsolute() && file.exists();
}

}  // namespace

void DesktopOpener::open(const QString& target) {
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_qs);
    if (opener.isEmpty() || !canBeOpened(target)) return;
    QProcess process;
    process.setProgram(opener);
    process.setArguments({target});
    process.setWorkingDirectory(QDir::rootPath());  // keeps no folder busy that may be moved
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

}  // namespace tarnwick::platform
