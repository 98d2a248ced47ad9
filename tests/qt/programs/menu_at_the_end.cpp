#include "expecting.h"

#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/session.h>

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace zr;
using expecting::allGood;
using expecting::expect;

namespace {

/// Ends the session while the menu is open.
void endDuringMenu(NSView* view, std::unique_ptr<qt::Session>& session) {
    const Ref<NSMenu> menu = make<NSMenu>();
    menu->addItemWithTitle_action_keyEquivalent("Flatten"_ns, {}, nullptr);
    QTimer timer;
    bool wasOpen = false;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (QApplication::activePopupWidget()) {
            timer.stop();
            wasOpen = true;
            session.reset();
        }
    });
    timer.start(5);
    expect(!menu->popUpMenuPositioningItem_atLocation_inView(nullptr, {100, 100}, view), "nothing was chosen");
    expect(wasOpen, "the menu was open");
    expect(!QApplication::activePopupWidget(), "the menu is gone with the session");
    expect(!menu->popUpMenuPositioningItem_atLocation_inView(nullptr, {100, 100}, view),
           "without a session there is none");
}

} // namespace

// A menu that is open goes with the session, whether it belongs to a window or not.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QTimer::singleShot(20'000, [] {
        std::fputs("a menu did not close\n", stderr);
        std::_Exit(2);
    });
    auto session = std::make_unique<qt::Session>();
    endDuringMenu(nullptr, session);
    session = std::make_unique<qt::Session>();
    const Ref<NSWindow> window = make<NSWindow>();
    window->setFrame_display({{10, 10}, {200, 200}}, true);
    window->makeKeyAndOrderFront(nullptr);
    endDuringMenu(window->contentView(), session);
    return allGood ? 0 : 1;
}
