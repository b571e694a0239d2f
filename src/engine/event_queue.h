#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <mutex>

namespace tarnwick::engine {

// Carries events from any thread to the UI thread, where the event loop delivers them one by one in
// the order of posting. Each belongs to a generation, the lifetime of one sound; events of an
// earlier generation are dropped. A delivery may post events, start a generation, run its own event
// loop (which then delivers the rest) or destroy the queue.
class EventQueue : public QObject {
  public:
    using Delivery = std::function<void()>;

    // A generation that never ends.
    static constexpr quint64 kAnyGeneration = 0;

    quint64 generation() const { return generation_; }  // UI thread
    void startGeneration() { ++generation_; }           // UI thread

    void post(quint64 generation, Delivery delivery);                         // any thread
    void post(Delivery delivery) { post(generation_, std::move(delivery)); }  // UI thread

  protected:
    void customEvent(QEvent* wake) override;

  private:
    struct Event {
        quint64 generation;
        Delivery deliver;
    };

    void wake();  // call with mutex_ held

    std::mutex mutex_;
    std::deque<Event> events_;
    bool wakePosted_ = false;
    quint64 generation_ = 1;  // UI thread
};

}  // namespace tarnwick::engine
