#include "platform/desktop_opener.h"

#include <QDesktopServices>
#include <QUrl>

namespace tarnwick::platform {

void DesktopOpener::open(const QString& target) {
    const QUrl url(target);
    const bool isPage = url.scheme().startsWith(u"http"_qs);
    QDesktopServices::openUrl(isPage ? url : QUrl::fromLocalFile(target));
}

}  // namespace tarnwick::platform
