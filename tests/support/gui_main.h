#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QThread>
#include <functional>

namespace tarnwick::test {

// Runs the event loop until `condition` holds; false when it does not within `ms`.
inline bool waitUntil(const std::function<bool()>& condition, int ms = 30000) {
    const QDeadlineTimer deadline(ms);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::usleep(500);
    }
    return true;
}

}  // namespace tarnwick::test

// A test program with windows: off-screen, one application for all tests.
#define TARNWICK_GUI_TEST_MAIN                             \
    int main(int argc, char** argv) {                      \
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) \
            qputenv("QT_QPA_PLATFORM", "offscreen");       \
        ::testing::InitGoogleTest(&argc, argv);            \
        QApplication application(argc, argv);              \
        return RUN_ALL_TESTS();                            \
    }
