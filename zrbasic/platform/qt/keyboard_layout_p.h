#pragma once

#include <zrbasic/platform/runtime/types.h>

#include <string>
#include <vector>

/// The user's keyboard layouts, as far as the desktop tells: on X11 alone.
namespace zr::qt {

/// Their names in the X server's spelling, "us" or "de"; none elsewhere.
[[nodiscard]] std::vector<std::string> presentKeyboardLayouts();
/// An index into them; -1 elsewhere.
[[nodiscard]] NSInteger keyboardLayoutInUse();
/// Does nothing elsewhere, and for an index that no layout has.
void useKeyboardLayout(NSInteger index);

} // namespace zr::qt
