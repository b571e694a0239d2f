#pragma once

#include <QTimer>
#include <functional>

#include "runtime/events.h"

namespace tarnwick::engine {

// Hands off from an engine event to the next step. The event's handler only arms the timer; 100 ms
// later the timer stops itself and runs its continuation, outside the event. Arming it again before
// it fires has no effect. UI thread.
class OneShotTimer {
  public:
    // `timer` belongs to the form and must outlive this object.
    OneShotTimer(const runtime::FailurePath& failure, QTimer& timer,
                 std::function<void()> continuation)
        : timer_(timer) {
        timer_.stop();
        timer_.setInterval(100);
        connection_ = runtime::onEvent(failure, &timer_, &QTimer::timeout, &timer_,
                                       [this, continuation = std::move(continuation)] {
                                           timer_.stop();
                                           continuation();
                                       });
    }
    ~OneShotTimer() { QObject::disconnect(connection_); }

    OneShotTimer(const OneShotTimer&) = delete;
    OneShotTimer& operator=(const OneShotTimer&) = delete;

    void arm() {
        if (!timer_.isActive()) timer_.start();
    }
    // Cancels the continuation, for use when the sound it belongs to is gone.
    void disarm() { timer_.stop(); }
    bool armed() const { return timer_.isActive(); }

  private:
    QTimer& timer_;
    QMetaObject::Connection connection_;
};

}  // namespace tarnwick::engine
