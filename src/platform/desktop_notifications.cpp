#include "platform/desktop_notifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

#include "platform/session_bus.h"

namespace tarnwick::platform {

namespace {

constexpr int kUsualTime = -1;  // the service decides how long it shows the sentence

const QString& connectionName() {
    static const QString name = u"tarnwick-notifications"_qs;
    return name;
}

QDBusMessage notification(const QString& sentence) {
    QDBusMessage notify = QDBusMessage::createMethodCall(
        u"org.freedesktop.Notifications"_qs, u"/org/freedesktop/Notifications"_qs,
        u"org.freedesktop.Notifications"_qs, u"Notify"_qs);
    // The service reads the body as markup, so special characters are escaped.
    notify << u"Tarnwick"_qs << 0U << u"tarnwick"_qs << u"Tarnwick"_qs << sentence.toHtmlEscaped()
           << QStringList() << QVariantMap() << kUsualTime;
    return notify;
}

}  // namespace

DesktopNotifications::~DesktopNotifications() {
    QDBusConnection::disconnectFromBus(connectionName());
}

void DesktopNotifications::show(const QString& sentence) {
    if (!bus_.answers()) return;
    QDBusConnection::connectToBus(bus_.address(), connectionName()).send(notification(sentence));
}

}  // namespace tarnwick::platform
