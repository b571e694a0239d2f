#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>
#include <functional>

namespace tarnwick::test {

// Runs the event loop until `condition` holds; false if it does not within `ms`.
inline bool waitUntil(const std::function<bool()>& condition, int ms = 30000) {
    const QDeadlineTimer deadline(ms);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::usleep(500);
    }
    return true;
}

inline void pass(int ms) {
    waitUntil([] { return false; }, ms);
}

}  // namespace tarnwick::test
