#pragma once

#include <zrbasic/platform/appkit/peer.h>

#include <memory>

namespace zr {
class ColorPickerView;
class NSTableView;
class NSTextView;
class NSView;
class NSWindow;
} // namespace zr

/// Which peer goes with which object.
namespace zr::qt {

/// For a field editor: a line editor.
[[nodiscard]] std::unique_ptr<ViewPeer> makeLineEditorPeer(NSTextView& editor);
/// For any other text view: many lines of styled text, with links.
[[nodiscard]] std::unique_ptr<ViewPeer> makeTextViewPeer(NSTextView& view);
[[nodiscard]] std::unique_ptr<ViewPeer> makeTablePeer(NSTableView& table);
[[nodiscard]] std::unique_ptr<ViewPeer> makeColorPickerPeer(ColorPickerView& view);
[[nodiscard]] std::unique_ptr<WindowPeer> makePeer(NSWindow& window);

} // namespace zr::qt
