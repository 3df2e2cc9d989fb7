// main() for the test programs that draw with Qt and show nothing: Qt's
// offscreen platform, so that no display is needed, and a QGuiApplication
// for fonts and the image plugins.
#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>

#include <cstdlib>

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
