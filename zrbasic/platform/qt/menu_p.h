#pragma once

#include <zrbasic/platform/appkit/menu.h>

namespace zr::qt {

/// Shows the menu as it is now, at that place (see `Toolkit::popUpMenu`), until the user has chosen from it or has
/// dismissed it, and then performs what was chosen, if that is still there. Whether anything was.
///
/// It closes, with nothing chosen, when the view or its window goes away, and when the application or the session ends.
/// What an event raises meanwhile closes it and passes through.
bool runMenu(NSMenu& menu, NSMenuItem* item, NSPoint location, NSView* view);
/// Takes all of them off the screen, as a session does at its end.
void closeMenus();

} // namespace zr::qt
