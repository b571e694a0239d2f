#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSemaphore>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <thread>

#include "platform/colour_scheme.h"
#include "platform/desktop_notifications.h"
#include "platform/session_bus.h"
#include "support/few_threads.h"
#include "support/wait_until.h"

using namespace tarnwick;
using namespace tarnwick::platform;

namespace {

constexpr char kAddress[] = "DBUS_SESSION_BUS_ADDRESS";

// Listens under a socket's name, hears one caller out, says `word` when it may, and hangs up.
class Listener {
  public:
    Listener(const QByteArray& name, QByteArray word) : line_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        sockaddr_un place{};
        place.sun_family = AF_UNIX;
        std::memcpy(place.sun_path, name.data(), name.size());
        const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + name.size());
        EXPECT_EQ(::bind(line_, reinterpret_cast<sockaddr*>(&place), length), 0);
        EXPECT_EQ(::listen(line_, 1), 0);
        thread_ = std::thread([this, word] {
            const int caller = ::accept(line_, nullptr, nullptr);
            char bytes[256];
            heard_ = QByteArray(bytes, ::recv(caller, bytes, sizeof bytes, 0));
            maySpeak_.acquire();
            if (!word.isEmpty()) ::send(caller, word.data(), word.size(), MSG_NOSIGNAL);
            ::close(caller);
        });
    }
    ~Listener() {
        if (thread_.joinable()) thread_.join();
        ::close(line_);
    }
    void speak() { maySpeak_.release(); }
    QByteArray heard() {
        thread_.join();
        return heard_;
    }

  private:
    int line_;
    QByteArray heard_;
    QSemaphore maySpeak_;
    std::thread thread_;
};

struct SessionBusTest : ::testing::Test {
    void SetUp() override { qputenv(kAddress, "as it was"); }
    void TearDown() override { qputenv(kAddress, before); }

    const QByteArray before = qgetenv(kAddress);
    QTemporaryDir folder;
    const QByteArray path = folder.filePath(u"a bus"_qs).toUtf8();
    const QString address = u"unix:path="_qs + QString::fromUtf8(path.toPercentEncoding("/"));
};

TEST_F(SessionBusTest, IsGreetedAsEveryClientDoes) {
    const QByteArray abstract = "tarnwick-test-" + QByteArray::number(::getpid());
    const std::pair<QString, QByteArray> buses[] = {
        {address, path},
        {u"unix:guid=1,path="_qs + address.mid(10) + u";unix:path=/nowhere"_qs, path},
        {address + u";unix:path=/nowhere"_qs, path},
        {u"unix:abstract="_qs + QString::fromUtf8(abstract), '\0' + abstract}};
    for (const auto& [told, name] : buses) {
        Listener listener(name, "OK");
        listener.speak();
        const SessionBus bus(told);
        EXPECT_TRUE(test::waitUntil([&] { return bus.answers(); }, 5000)) << told.toStdString();
        bus.hideWhileSilent();
        EXPECT_EQ(listener.heard(), QByteArray("\0AUTH EXTERNAL ", 15) +
                                        QByteArray::number(::getuid()).toHex() + "\r\n");
        ::unlink(path.data());
    }
    EXPECT_EQ(qgetenv(kAddress), "as it was");
}

TEST_F(SessionBusTest, OneThatCannotBeGreetedIsTakenAtItsWordAndNoneIsNone) {
    for (const QString& told : {u"tcp:host=localhost"_qs, u"unix:tmpdir=/tmp"_qs, QString()}) {
        const SessionBus bus(told);
        EXPECT_EQ(bus.answers(), !told.isEmpty());
        bus.hideWhileSilent();
    }
    EXPECT_EQ(qgetenv(kAddress), "as it was");
    for (const QString& none : {u"/nowhere/bus"_qs, u"/"_qs + QString(200, u'a')})
        EXPECT_FALSE(SessionBus(u"unix:path="_qs + none).answers());
}

TEST_F(SessionBusTest, OneThatIsSilentIsHiddenAndMayAnswerLater) {
    for (const QByteArray word : {"OK", ""}) {
        Listener late(path, word);
        const SessionBus bus(address);
        int told = 0;
        QObject::connect(&bus, &SessionBus::answered, [&] { ++told; });
        EXPECT_FALSE(bus.answers());
        EXPECT_EQ(bus.patienceLeftMs(), 1);
        bus.hideWhileSilent();
        EXPECT_EQ(qgetenv(kAddress), "disabled:");
        late.speak();
        late.heard();
        const bool answers = !word.isEmpty();
        EXPECT_EQ(test::waitUntil([&] { return told > 0; }, answers ? 5000 : 50), answers);
        EXPECT_EQ(bus.answers(), answers);
        ::unlink(path.data());
    }
}

// A settings portal on a private bus. It answers on the thread that asks, so every answer is late.
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

// A private bus for the test.
class PrivateBus {
  public:
    PrivateBus() {
        // Not with QProcess: after its fork the thread sanitizer sees no lock of this thread any
        // more.
        FILE* start = ::popen("dbus-daemon --session --fork --print-address=1 --print-pid=1", "r");
        char place[256] = "";
        if (std::fscanf(start, "%255s %d", place, &daemon) == 2)
            address = QString::fromLatin1(place);
        ::pclose(start);
    }
    ~PrivateBus() {
        if (daemon > 0) ::kill(daemon, SIGKILL);
    }

    QString address;  // empty if there is no such program
    pid_t daemon = 0;
};

TEST(ColourScheme, FollowsThePortal) {
    const PrivateBus own;
    if (own.address.isEmpty()) GTEST_SKIP() << "no bus";
    const auto& [address, daemon] = own;
    QDBusConnection bus = QDBusConnection::connectToBus(address, u"portal"_qs);
    Portal portal;
    bus.registerService(u"org.freedesktop.portal.Desktop"_qs);
    bus.registerVirtualObject(u"/org/freedesktop/portal/desktop"_qs, &portal);

    // A stopped daemon accepts connections but does not answer.
    ::kill(daemon, SIGSTOP);
    EXPECT_FALSE(SessionBus(address).answers());
    const SessionBus session(address);
    {
        const ColourScheme scheme(session);
        EXPECT_FALSE(session.answers() || scheme.dark());
        ::kill(daemon, SIGCONT);
        EXPECT_TRUE(test::waitUntil([&] { return scheme.dark(); }, 5000));
        EXPECT_TRUE(portal.asked);
        EXPECT_TRUE(test::waitUntil([&] { return scheme.children().isEmpty(); }, 5000));
    }
    // On this thread the portal answers only after the time-out; on its own thread it answers at
    // once.
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
}

// Records what a notification service is asked.
class NotificationService : public QDBusVirtualObject {
  public:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        asked << message.interface() + u'.' + message.member() + u'|' +
                     message.arguments().value(3).toString() + u'|' +
                     message.arguments().value(4).toString();
        signature = message.signature();
        return true;
    }
    QStringList asked;
    QString signature;
};

TEST(DesktopNotifications, AskTheServiceAndDoNotWaitForIt) {
    const PrivateBus own;
    if (own.address.isEmpty()) GTEST_SKIP() << "no bus";
    QDBusConnection bus = QDBusConnection::connectToBus(own.address, u"service"_qs);
    NotificationService service;
    const SessionBus session(own.address);
    DesktopNotifications notifications(session);
    notifications.show(u"nobody listens"_qs);
    bus.registerVirtualObject(u"/org/freedesktop/Notifications"_qs, &service);
    bus.registerService(u"org.freedesktop.Notifications"_qs);
    // The service runs on this thread and answers only after both calls have returned.
    notifications.show(u"2 files: <b> & \"c\"."_qs);
    notifications.show(u"again"_qs);
    EXPECT_TRUE(test::waitUntil([&] { return service.asked.size() == 2; }, 5000));
    const QString call = u"org.freedesktop.Notifications.Notify|Tarnwick|"_qs;
    EXPECT_EQ(service.asked, QStringList({call + u"2 files: &lt;b&gt; &amp; &quot;c&quot;."_qs,
                                          call + u"again"_qs}));
    EXPECT_EQ(service.signature, u"susssasa{sv}i");
    QDBusConnection::disconnectFromBus(u"service"_qs);
    const SessionBus none(u"unix:path=/nowhere/bus"_qs);
    DesktopNotifications(none).show(u"no bus"_qs);
}

TEST(ColourScheme, IsLightAtOnceWithoutABus) {
    for (const char* address : {"", "unix:path=/nowhere/bus"})
        EXPECT_FALSE(ColourScheme(SessionBus(QLatin1String(address))).dark()) << address;
}

}  // namespace
