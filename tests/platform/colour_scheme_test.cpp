#include "platform/colour_scheme.h"

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <csignal>
#include <cstdio>

#include "platform/session_bus.h"
#include "support/few_threads.h"
#include "support/wait_until.h"

namespace tarnwick::platform {
namespace {

// A settings portal on a bus of the test's own. It answers from the same thread as the asking, so
// every answer comes late.
class Portal : public QDBusVirtualObject {
  public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        asked = message.arguments() ==
                QVariantList{u"org.freedesktop.appearance"_qs, u"color-scheme"_qs};
        const auto twice = QVariant::fromValue(QDBusVariant(QVariant(1U)));
        return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(twice))));
    }
    bool asked = false;
};

TEST(SessionBus, IsSilentWhereNoThreadCanGreetIt) {
    const auto greet = [] { return SessionBus(u"unix:path=/nowhere"_qs).answers() ? 1 : 0; };
    EXPECT_EQ(test::withFewThreads(0, greet), 0);
}

TEST(ColourScheme, FollowsThePortal) {
    // Not with QProcess: after its fork the thread sanitizer sees no lock of this thread any more.
    FILE* start = ::popen("dbus-daemon --session --fork --print-address=1 --print-pid=1", "r");
    char place[256] = "";
    pid_t daemon = 0;
    const int told = std::fscanf(start, "%255s %d", place, &daemon);
    ::pclose(start);
    if (told != 2) GTEST_SKIP() << "no bus";
    const QString address = QString::fromLatin1(place);
    QDBusConnection bus = QDBusConnection::connectToBus(address, u"portal"_qs);
    Portal portal;
    bus.registerService(u"org.freedesktop.portal.Desktop"_qs);
    bus.registerVirtualObject(u"/org/freedesktop/portal/desktop"_qs, &portal);

    // A daemon that stands still accepts and says nothing.
    ::kill(daemon, SIGSTOP);
    EXPECT_FALSE(SessionBus(address).answers());
    const SessionBus session(address);
    {
        const ColourScheme scheme(session);
        EXPECT_FALSE(session.answers() || scheme.dark());
        ::kill(daemon, SIGCONT);
        EXPECT_TRUE(test::waitUntil([&] { return scheme.dark(); }, 5000));
        EXPECT_TRUE(portal.asked);
    }
    // The portal runs on this thread and so answers when the patience is over; from a thread of its
    // own it answers at once.
    ColourScheme scheme(session);
    EXPECT_FALSE(scheme.dark());
    EXPECT_TRUE(test::waitUntil([&] { return scheme.dark(); }, 5000));

    const auto tell = [&bus](const QString& group, const QString& key, uint value) {
        QDBusMessage told =
            QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_qs,
                                       u"org.freedesktop.portal.Settings"_qs, u"SettingChanged"_qs);
        told << group << key << QVariant::fromValue(QDBusVariant(value));
        bus.send(told);
    };
    int changes = 0;
    QObject::connect(&scheme, &ColourScheme::changed, [&] { ++changes; });
    tell(u"org.freedesktop.appearance"_qs, u"accent-color"_qs, 0);
    tell(u"org.freedesktop.appearance"_qs, u"color-scheme"_qs, 2);
    tell(u"org.freedesktop.appearance"_qs, u"color-scheme"_qs, 0);
    EXPECT_TRUE(test::waitUntil([&] { return !scheme.dark(); }, 5000));
    tell(u"org.freedesktop.appearance"_qs, u"color-scheme"_qs, 1);
    EXPECT_TRUE(test::waitUntil([&] { return scheme.dark(); }, 5000));
    EXPECT_EQ(changes, 2);
    QThread thread;
    portal.moveToThread(&thread);
    thread.start();
    bool atOnce = false;
    for (int tried = 0; tried < 20 && !atOnce; ++tried)
        atOnce = ColourScheme(SessionBus(address)).dark();
    EXPECT_TRUE(atOnce);
    thread.quit();
    thread.wait();
    QDBusConnection::disconnectFromBus(u"portal"_qs);
    ::kill(daemon, SIGKILL);
}

TEST(ColourScheme, IsLightAtOnceWithoutABus) {
    for (const char* address : {"", "unix:path=/nowhere/bus"})
        EXPECT_FALSE(ColourScheme(SessionBus(QLatin1String(address))).dark()) << address;
}

}  // namespace
}  // namespace tarnwick::platform
