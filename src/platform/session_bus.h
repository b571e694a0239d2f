#pragma once

#include <QObject>
#include <memory>

namespace tarnwick::platform {

// The session's message bus, and whether it answers. A bus that accepts a connection and never
// answers would block every client forever, including Qt's menu bar. The handshake therefore runs
// on a thread of its own, which is abandoned if no answer comes. UI thread; may be created before
// the application object.
class SessionBus : public QObject {
    Q_OBJECT

  public:
    static constexpr int kPatienceMs = 100;

    // Starts the handshake with the bus at `address` and waits up to kPatienceMs for an answer.
    explicit SessionBus(const QString& address = usualAddress());
    ~SessionBus() override;

    const QString& address() const { return address_; }
    bool answers() const;
    int patienceLeftMs() const { return patienceLeftMs_; }  // at least 1

    // If the bus is still silent, hides it from Qt and from the programs that this one starts. Call
    // it before anything else looks for the bus.
    void hideWhileSilent() const;

    // The address of the desktop's session bus; empty if there is none. Unlike the bus library's
    // own search, this never starts a bus.
    static QString usualAddress();

  Q_SIGNALS:
    // A bus that was silent at first has now answered.
    void answered();

  private:
    struct Greeting;  // shared with the thread

    QString address_;
    int patienceLeftMs_ = kPatienceMs;
    std::shared_ptr<Greeting> greeting_;
};

}  // namespace tarnwick::platform
