#pragma once

#include <zrbasic/platform/appkit/font.h>

namespace zr {

// The fonts of the user interface in short. Sizes are in points; one that is not a finite number above 0 is 13. The
// results are never null.

/// Regular weight.
[[nodiscard]] ZR_EXPORT Ref<NSFont> ZRFont(double size);
[[nodiscard]] ZR_EXPORT Ref<NSFont> ZRBoldFont(double size);
/// `weight` goes from -1 to 1, 0 being regular. The spelling of the name is the interface's.
[[nodiscard]] ZR_EXPORT Ref<NSFont> ZRFontWithWegiht(double size, NSFontWeight weight);
/// Regular where the main screen has at least two pixels a point; light on a coarser one, where regular strokes look
/// heavy, and where there is no screen. Main thread only.
[[nodiscard]] ZR_EXPORT Ref<NSFont> ZRCompatibleFont(double size);

} // namespace zr
