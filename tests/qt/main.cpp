#include "session_testing.h"

#include <QApplication>
#include <QTemporaryDir>

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
    // The desktop that they are run on may enlarge and decorate what it shows.
    for (const char* const setting :
         {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_SCALE_FACTOR_ROUNDING_POLICY", "QT_ENABLE_HIGHDPI_SCALING",
          "QT_FONT_DPI", "QT_USE_PHYSICAL_DPI", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"}) {
        qunsetenv(setting);
    }
    // What is saved here is not the user's.
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
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
