#include <zrbasic/platform/appkit/view.h>

#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/menu.h>

namespace zr {

Ref<NSMenu> NSView::menu() const {
    return m_menu;
}

void NSView::setMenu(NSMenu* menu) {
    m_menu = Ref<NSMenu>(menu);
}

void NSView::rightMouseDown(NSEvent* event) {
    if (!m_menu || !event) {
        NSResponder::rightMouseDown(event);
        return;
    }
    const Ref<NSMenu> menu = m_menu;
    NSMenu::popUpContextMenu_withEvent_forView(menu, event, this);
}

} // namespace zr
