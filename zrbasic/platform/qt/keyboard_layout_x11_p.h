#pragma once

#include <string>
#include <vector>

struct _XDisplay;

/// The keyboard layouts of an X server. Apart from everything else, as Xlib's macros do not go with Qt's names.
namespace zr::qt::x11 {

/// What Xlib calls a display.
using Connection = _XDisplay*;

/// Those that the keyboard was set up with, four at most, such as "de", or "us(dvorak)" for a variant; none when the
/// server does not say.
[[nodiscard]] std::vector<std::string> keyboardLayouts(Connection server);
/// An index into them; -1 when the server does not say.
[[nodiscard]] int currentKeyboardLayout(Connection server);
/// The layout from now on, for all programs.
void lockKeyboardLayout(Connection server, unsigned index);

} // namespace zr::qt::x11
