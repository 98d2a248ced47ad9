#include <zrbasic/platform/qt/keyboard_layout_p.h>

#include <zrbasic/platform/qt/keyboard_layout_x11_p.h>

#include <QGuiApplication>

namespace zr::qt {
namespace {

#ifdef ZR_HAS_X11
/// The X server's connection; null on any other platform. Platforms without a screen have an X interface too, with
/// nothing behind it.
x11::Connection connection() {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        return nullptr;
    }
    const auto* const native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native ? native->display() : nullptr;
}
#endif

} // namespace

std::vector<std::string> presentKeyboardLayouts() {
#ifdef ZR_HAS_X11
    if (x11::Connection server = connection()) {
        return x11::keyboardLayouts(server);
    }
#endif
    return {};
}

NSInteger keyboardLayoutInUse() {
#ifdef ZR_HAS_X11
    if (x11::Connection server = connection()) {
        return x11::currentKeyboardLayout(server);
    }
#endif
    return -1;
}

void useKeyboardLayout([[maybe_unused]] NSInteger index) {
#ifdef ZR_HAS_X11
    x11::Connection server = connection();
    if (server && index >= 0 && index < static_cast<NSInteger>(x11::keyboardLayouts(server).size())) {
        x11::lockKeyboardLayout(server, static_cast<unsigned>(index));
    }
#endif
}

} // namespace zr::qt
