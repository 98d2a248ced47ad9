#pragma once

#include <zrbasic/platform/appkit/screen.h>

namespace zr {

// NSScreen(ZRXHelper)
//
// The main screen in numbers; each is 0 where there is none. Main thread only.

/// In points, as is the next.
[[nodiscard]] ZR_EXPORT double mainScreenWidth();
[[nodiscard]] ZR_EXPORT double mainScreenHeight();
/// Pixels a point.
[[nodiscard]] ZR_EXPORT double zr_scale();

} // namespace zr
