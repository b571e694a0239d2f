#include <gtest/gtest.h>

#include <QCoreApplication>

// A test program with an event loop and no windows.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
