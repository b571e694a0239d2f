#include "engine/event_queue.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

namespace tarnwick::engine {

void EventQueue::post(quint64 generation, Delivery delivery) {
    const std::lock_guard lock(mutex_);
    events_.push_back({generation, std::move(delivery)});
    wake();
}

void EventQueue::wake() {
    if (wakePosted_) return;
    wakePosted_ = true;
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void EventQueue::customEvent(QEvent*) {
    {
        const std::lock_guard lock(mutex_);
        wakePosted_ = false;
    }
    const QPointer<EventQueue> alive(this);
    while (alive) {
        Event event;
        {
            const std::lock_guard lock(mutex_);
            if (events_.empty()) return;
            event = std::move(events_.front());
            events_.pop_front();
            // A delivery that runs an event loop, like a message box, must not hold up the rest.
            if (!events_.empty()) wake();
        }
        if (event.generation == kAnyGeneration || event.generation == generation_) event.deliver();
    }
}

}  // namespace tarnwick::engine
