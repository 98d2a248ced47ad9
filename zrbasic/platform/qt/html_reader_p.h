#pragma once

#include <zrbasic/platform/foundation/attributed_string.h>

namespace zr::qt {

/// Reads HTML as styled text: fonts, colours, underlines, links, and "\n" where a line or a paragraph ends.
///
/// What the HTML does not say is the system font of 13 points without a colour. A link's value is an `NSURL`, or the
/// address as a string where it cannot be one. Cells of tables stand on lines of their own; pictures are left out.
/// Neither files nor the network are ever touched. Never null; empty for null. Any text is safe to read: marks nested
/// beyond reason are ignored, what is between them is not.
[[nodiscard]] Ref<NSAttributedString> readHTML(NSString* html);

} // namespace zr::qt
