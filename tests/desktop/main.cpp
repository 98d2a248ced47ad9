#include <zrbasic/platform/qt/session.h>

#include <QApplication>

#include <gtest/gtest.h>

#include <cstdio>

// The tests of real windows on a real desktop, which the script beside this file provides.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) {
        return RUN_ALL_TESTS();
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        std::fputs("There is no screen: DISPLAY is not set. Run this program by tests/desktop/run.\n", stderr);
        return 1;
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("FONTCONFIG_FILE", ZR_TEST_FONTS_FILE);
    QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0);
    QApplication::setQuitOnLastWindowClosed(false);
    const zr::qt::Session session;
    return RUN_ALL_TESTS();
}
