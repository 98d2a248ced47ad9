#pragma once

#include <zrbasic/platform/appkit/view.h>

namespace zr {

/// The view that the tab key, or shift and tab, leads to from `from`, null standing for none, in the tree of `root`:
/// the key view that was set and can take the keyboard, else the next one in the order in which people read: from the
/// top down, and from left to right. Null when there is none; `from` itself when it is the only one.
[[nodiscard]] Ref<NSView> nextKeyViewFrom(NSView* root, NSView* from, bool isForwards);

} // namespace zr
