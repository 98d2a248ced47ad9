#pragma once

#include <zrbasic/platform/foundation/string.h>

/// How high a text stands when it is wrapped to a width, to size a label before there is one.
namespace zr {

class NSFont;

// NSString(ZRXHelper)

/// The height that the receiver takes in `font` when laid out `width` wide and as high as it likes, with `lineSpacing`
/// between its lines. All are in points.
///
/// Of the width, 5 points at either end stay free, as in a text view. A null font leaves the choice to the toolkit, and
/// widths and spacings go to it as they are. The current toolkit measures, on the main thread only: without one the
/// height is 0, and so it is for a null receiver.
[[nodiscard]] ZR_EXPORT double calculateHeightWithAbsoluteWidth_font_lineSpacing(NSString* self, double width,
                                                                                 NSFont* font, double lineSpacing);

/// The same with 5 points between the lines.
[[nodiscard]] ZR_EXPORT double calculateHeightWithAbsoluteWidth_font(NSString* self, double width, NSFont* font);

} // namespace zr
