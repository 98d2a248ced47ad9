#pragma once

class QStyle;

namespace zr::qt {

/// Stands for every character of a text that nobody may read.
inline constexpr char16_t passwordCharacter = 0x2022;

/// The style of our line editors: the desktop's, but with our bullets, which show at once. One for all of them; it lives
/// as long as the application object.
[[nodiscard]] QStyle* editorStyle();

} // namespace zr::qt
