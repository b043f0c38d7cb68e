// The tests run inside a QCoreApplication: the fake service, the sockets and the web reads
// are delivered by its event loop, which the waits of the client pump.
#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
