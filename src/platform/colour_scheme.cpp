#include "platform/colour_scheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include "platform/session_bus.h"

namespace tarnwick::platform {

namespace {

constexpr uint kPrefersDark = 1;

const QString& connectionName() {
    static const QString name = u"tarnwick-colour-scheme"_qs;
    return name;
}

const QString& group() {
    static const QString name = u"org.freedesktop.appearance"_qs;
    return name;
}

const QString& key() {
    static const QString name = u"color-scheme"_qs;
    return name;
}

QDBusMessage question() {
    // Version 2 of the portal has a newer call, but this one exists in both versions.
    QDBusMessage read = QDBusMessage::createMethodCall(
        u"org.freedesktop.portal.Desktop"_qs, u"/org/freedesktop/portal/desktop"_qs,
        u"org.freedesktop.portal.Settings"_qs, u"Read"_qs);
    read << group() << key();
    return read;
}

}  // namespace

ColourScheme::ColourScheme(const SessionBus& bus) {
    if (bus.answers())
        ask(bus.address(), bus.patienceLeftMs());
    else
        connect(&bus, &SessionBus::answered, this, [this, &bus] { ask(bus.address(), 0); });
}

void ColourScheme::ask(const QString& address, int patienceMs) {
    QDBusConnection bus = QDBusConnection::connectToBus(address, connectionName());
    if (!bus.isConnected()) return;
    bus.connect(QString(), u"/org/freedesktop/portal/desktop"_qs,
                u"org.freedesktop.portal.Settings"_qs, u"SettingChanged"_qs, {group(), key()},
                QString(), this, SLOT(settingChanged(QDBusMessage)));
    if (patienceMs > 0) {
        const QDBusMessage answer = bus.call(question(), QDBus::Block, patienceMs);
        if (answer.type() == QDBusMessage::ReplyMessage) take(answer.arguments().value(0));
        if (answer.errorName() != u"org.freedesktop.DBus.Error.NoReply"_qs) return;
    }
    // The portal may just be starting: take its answer when it comes.
    auto* later = new QDBusPendingCallWatcher(bus.asyncCall(question()), this);
    connect(later, &QDBusPendingCallWatcher::finished, this, &ColourScheme::lateAnswer);
}

ColourScheme::~ColourScheme() { QDBusConnection::disconnectFromBus(connectionName()); }

void ColourScheme::settingChanged(const QDBusMessage& message) {
    take(message.arguments().value(2));
}

void ColourScheme::lateAnswer(QDBusPendingCallWatcher* call) {
    const QDBusMessage answer = QDBusPendingReply<>(*call).reply();
    call->deleteLater();
    if (answer.type() == QDBusMessage::ReplyMessage) take(answer.arguments().value(0));
}

// The portal wraps the number in one or two variants.
void ColourScheme::take(const QVariant& value) {
    QVariant bare = value;
    while (bare.canConvert<QDBusVariant>())
        bare = bare.value<QDBusVariant>().variant();
    const bool dark = bare.toUInt() == kPrefersDark;
    if (std::exchange(dark_, dark) != dark) Q_EMIT changed();
}

}  // namespace tarnwick::platform
