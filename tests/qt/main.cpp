#include "session_testing.h"

#include <QApplication>

#include <gtest/gtest.h>

std::unique_ptr<zr::qt::Session>& zr::qt::sessionOfTests() {
    static std::unique_ptr<Session> session;
    return session;
}

// The tests of the toolkit: one application for all of them, without a screen unless the caller asks for one, and with
// a pinned font, so that pictures come out the same everywhere.
int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("FONTCONFIG_FILE", ZR_TEST_FONTS_FILE);
    QApplication application(argc, argv);
    // Nothing blinks in a picture.
    QApplication::setCursorFlashTime(0);
    QApplication::setQuitOnLastWindowClosed(false);
    zr::qt::sessionOfTests() = std::make_unique<zr::qt::Session>();
    // Behind the session, as some tests take their names from what it shows.
    testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    zr::qt::sessionOfTests().reset();
    return result;
}
