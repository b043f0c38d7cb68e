// The tests run inside a QCoreApplication: sockets, look-ups and web reads are delivered by
// its event loop, which the waits of the tests and of the layer pump.
#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
