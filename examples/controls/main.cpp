#include "gallery.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/qt/session.h>

#include <QApplication>
#include <QPixmap>
#include <QWidget>

#include <cstring>
#include <iostream>

namespace {

int usage() {
    std::cerr << "usage: controls [--screenshot FILE]\n";
    return 2;
}

/// The window's content as it stands on the screen, or would.
bool writePicture(zr::NSWindow* window, const char* file) {
    QApplication::processEvents();
    return zr::qt::widget(window)->grab().save(QString::fromLocal8Bit(file));
}

} // namespace

// Shows every control in every state; with --screenshot it writes a picture of that and ends.
int main(int argc, char** argv) {
    const char* file = nullptr;
    if (argc == 3 && std::strcmp(argv[1], "--screenshot") == 0) {
        file = argv[2];
    } else if (argc != 1) {
        return usage();
    }
    if (file) {
        // The picture holds still.
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    zr::qt::Session session;
    if (file) {
        QApplication::setCursorFlashTime(0);
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
