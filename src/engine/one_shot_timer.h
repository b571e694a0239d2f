#pragma once

#include <QTimer>
#include <functional>

#include "runtime/events.h"

namespace tarnwick::engine {

// The hand-off from an engine event to the next step. An event's handler only arms the timer;
// 100 ms later the timer disables itself and runs its continuation, outside the event. Arming it
// again before it fires merges with the first. UI thread.
class OneShotTimer {
  public:
    // `timer` is the form's own, at rest; it outlives this object.
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
    // Forgets an arming: what was to follow belongs to a sound that is gone.
    void disarm() { timer_.stop(); }
    bool armed() const { return timer_.isActive(); }

  private:
    QTimer& timer_;
    QMetaObject::Connection connection_;
};

}  // namespace tarnwick::engine
