#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <mutex>

namespace tarnwick::engine {

// Carries events from any thread to the UI thread, where the event loop delivers them one after
// the other in the order of posting. Each belongs to a generation, the life of one sound: what was
// posted for an earlier one is dropped. A delivery may post, start a generation, run an event loop
// of its own (the rest is then delivered from there) or destroy the queue.
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

    void wake();  // mutex_ is held

    std::mutex mutex_;
    std::deque<Event> events_;
    bool wakePosted_ = false;
    quint64 generation_ = 1;  // UI thread
};

}  // namespace tarnwick::engine
