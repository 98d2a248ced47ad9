#pragma once

#include <zrbasic/platform/foundation/geometry.h>

namespace zr::detail {

/// Which part of the screen a view is captured from, counted from the upper left corner of the first screen, which is
/// `screenHeight` high, with y downwards. `inWindow` are the view's bounds in its window's coordinates.
///
/// The border makes the rectangle higher and does not move it, so that all of the growth lies below the view.
[[nodiscard]] constexpr NSRect captureRect(NSRect inWindow, NSPoint windowOrigin, double screenHeight,
                                           double borderWidth) {
    return {
        {inWindow.origin.x + windowOrigin.x, screenHeight - windowOrigin.y - inWindow.origin.y - inWindow.size.height},
        {inWindow.size.width, inWindow.size.height + 2 * borderWidth}};
}

} // namespace zr::detail
