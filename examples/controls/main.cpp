#include "gallery.h"

#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/qt/session.h>

#include <QApplication>
#include <QPixmap>
#include <QWidget>

#include <cstring>
#include <iostream>

namespace {

int usage() {
    std::cerr << "usage: controls [--dark] [--screenshot FILE]\n";
    return 2;
}

/// The window's content as it stands on the screen, or would.
bool writePicture(zr::NSWindow* window, const char* file) {
    QApplication::processEvents();
    return zr::qt::widget(window)->grab().save(QString::fromLocal8Bit(file));
}

} // namespace

// Shows every control in every state, in the dark appearance with --dark; with --screenshot it writes a picture of that
// and ends.
int main(int argc, char** argv) {
    const char* file = nullptr;
    bool isDark = false;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--dark") == 0 && !isDark) {
            isDark = true;
        } else if (std::strcmp(argv[i], "--screenshot") == 0 && i + 1 < argc && !file) {
            file = argv[++i];
        } else {
            return usage();
        }
    }
    if (file) {
        // The picture holds still.
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    zr::qt::Session session;
    if (file) {
        QApplication::setCursorFlashTime(0);
    }
    if (isDark) {
        using namespace zr;
        NSApplication::sharedApplication()->setAppearance(NSAppearance::appearanceNamed(NSAppearanceNameDarkAqua()));
    }
    controls::Gallery gallery;
    gallery.show();
    if (!file) {
        return session.run();
    }
    if (!writePicture(gallery.window(), file)) {
        std::cerr << "controls: cannot write " << file << '\n';
        return 1;
    }
    return 0;
}
