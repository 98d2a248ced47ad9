#include <zrbasic/platform/qt/screens_p.h>

#include <QGuiApplication>
#include <QScreen>

namespace zr::qt {
namespace {

/// Qt counts from the upper left corner of the primary screen.
NSRect turned(const QRect& rect, const QRect& primary) {
    return {{double(rect.x() - primary.x()), double(primary.y() + primary.height() - rect.y() - rect.height())},
            {double(rect.width()), double(rect.height())}};
}

} // namespace

std::vector<ScreenState> presentScreens() {
    std::vector<ScreenState> states;
    const QScreen* const primary = QGuiApplication::primaryScreen();
    if (!primary) {
        return states;
    }
    const auto add = [&](const QScreen& screen) {
        const QRect origin = primary->geometry();
        states.push_back(
            {turned(screen.geometry(), origin), turned(screen.availableGeometry(), origin), screen.devicePixelRatio()});
    };
    add(*primary);
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* const screen : screens) {
        if (screen != primary) {
            add(*screen);
        }
    }
    return states;
}

} // namespace zr::qt
