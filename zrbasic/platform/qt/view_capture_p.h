#pragma once

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/window.h>

/// Pictures of what is on the screen.
namespace zr::qt {

/// As captureOfWindow of the toolkit. Where the system has no picture of the screen to give, the windows are drawn anew,
/// those in front over those behind: without the desktop's title bars and what other programs have there.
[[nodiscard]] Ref<NSBitmapImageRep> captureOf(NSWindow& window, NSRect rect);

} // namespace zr::qt
