#include "platform/session_bus.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <system_error>
#include <thread>

namespace tarnwick::platform {

namespace {

constexpr char kAddress[] = "DBUS_SESSION_BUS_ADDRESS";

// The socket name in a bus address, in the kernel's form: an abstract one begins with a null.
// Empty for a bus that does not use a Unix socket.
QByteArray socketName(const QString& address) {
    const QString first = address.section(u';', 0, 0);
    if (!first.startsWith(u"unix:")) return {};
    for (const QString& part : first.mid(5).split(u',')) {
        const QByteArray value = QByteArray::fromPercentEncoding(part.section(u'=', 1).toUtf8());
        if (part.startsWith(u"path=")) return value;
        if (part.startsWith(u"abstract=")) return '\0' + value;
    }
    return {};
}

// Sends the opening line of the D-Bus handshake and waits for the first byte of the answer. False
// if nobody listens.
bool greet(const QByteArray& name) {
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    if (name.size() >= qsizetype(sizeof place.sun_path)) return false;
    std::memcpy(place.sun_path, name.data(), name.size());
    const auto length = socklen_t(offsetof(sockaddr_un, sun_path) + name.size());
    const int line = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);  // without it nobody answers
    QByteArray hello("\0AUTH EXTERNAL ", 15);
    hello += QByteArray::number(::getuid()).toHex() + "\r\n";
    char word = 0;
    const bool answered = ::connect(line, reinterpret_cast<sockaddr*>(&place), length) == 0 &&
                          ::send(line, hello.data(), hello.size(), MSG_NOSIGNAL) > 0 &&
                          ::recv(line, &word, 1, 0) == 1;
    ::close(line);
    return answered;
}

}  // namespace

struct SessionBus::Greeting {
    std::mutex mutex;
    std::condition_variable changed;
    bool over = false;
    bool answered = false;
    SessionBus* waiting = nullptr;  // receives a late answer

    void end(bool result) {
        const std::lock_guard lock(mutex);
        over = true;
        answered = result;
        changed.notify_all();
        if (answered && waiting != nullptr)
            QMetaObject::invokeMethod(waiting, &SessionBus::answered, Qt::QueuedConnection);
    }
};

QString SessionBus::usualAddress() {
    const QString told = qEnvironmentVariable(kAddress);
    if (!told.isEmpty()) return told;
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_qs;
    return QFileInfo::exists(usual) ? u"unix:path="_qs + usual : QString();
}

SessionBus::SessionBus(const QString& address)
    : address_(address), greeting_(std::make_shared<Greeting>()) {
    const QByteArray name = socketName(address);
    if (name.isEmpty()) {
        greeting_->end(!address.isEmpty());
        return;
    }
    QElapsedTimer waited;
    waited.start();
    try {
        std::thread([name, greeting = greeting_] { greeting->end(greet(name)); }).detach();
    } catch (const std::system_error&) {
        return;  // without a thread Qt cannot talk to it either: to all it is silent
    }
    std::unique_lock lock(greeting_->mutex);
    greeting_->changed.wait_for(lock, std::chrono::milliseconds(kPatienceMs),
                                [this] { return greeting_->over; });
    patienceLeftMs_ = std::max(1, kPatienceMs - int(waited.elapsed()));
    if (!greeting_->over) greeting_->waiting = this;
}

SessionBus::~SessionBus() {
    const std::lock_guard lock(greeting_->mutex);
    greeting_->waiting = nullptr;
}

bool SessionBus::answers() const {
    const std::lock_guard lock(greeting_->mutex);
    return greeting_->answered;
}

void SessionBus::hideWhileSilent() const {
    const std::lock_guard lock(greeting_->mutex);
    if (!greeting_->over) qputenv(kAddress, "disabled:");
}

}  // namespace tarnwick::platform
