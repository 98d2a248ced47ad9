#pragma once

#ifdef ZR_HAS_X11

#include <QRect>

#include <vector>

struct _XDisplay;

namespace zr::qt::x11 {

/// Where that window, with what the window manager has put around it, and all windows in front of it lie on the screen,
/// in the server's pixels. Empty for a window that is not there.
[[nodiscard]] std::vector<QRect> placesFromWindowUp(_XDisplay* server, unsigned long window);

} // namespace zr::qt::x11

#endif
