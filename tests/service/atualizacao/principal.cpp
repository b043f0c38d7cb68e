// One QApplication for the update tests (the update window and the bar are widgets), on
// the offscreen platform unless the caller chose another.
#include <QApplication>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
