#pragma once

#include <QObject>
#include <memory>

namespace tarnwick::platform {

// The session's message bus, and whether it answers at all: one that accepts and then never says a
// word would keep whoever connects to it waiting for good, Qt with its menu bar as well. It is
// greeted on a thread of its own, which is left behind where no answer comes. UI thread; may be
// made before the application.
class SessionBus : public QObject {
    Q_OBJECT

  public:
    static constexpr int kPatienceMs = 100;

    // Greets the bus at `address`, and waits for its answer until the patience is over.
    explicit SessionBus(const QString& address = usualAddress());
    ~SessionBus() override;

    const QString& address() const { return address_; }
    bool answers() const;
    int patienceLeftMs() const { return patienceLeftMs_; }  // at least 1

    // To Qt, and to the programs that this one starts, there is no bus where this one is still
    // silent. Before anything else looks for it.
    void hideWhileSilent() const;

    // The address of the session's bus as the desktop has it; empty where there is none. Unlike the
    // bus library's own search, this never starts a bus.
    static QString usualAddress();

  Q_SIGNALS:
    // A bus that was silent at first answers now.
    void answered();

  private:
    struct Greeting;  // what the thread shares with this

    QString address_;
    int patienceLeftMs_ = kPatienceMs;
    std::shared_ptr<Greeting> greeting_;
};

}  // namespace tarnwick::platform
