#pragma once

#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/text_field.h>

#include <functional>

/// Colours, and small parts of a screen in the desk's own style.
namespace desk {

/// Which way a price has gone.
enum class Way { Up, Down };

/// The user's own colour or, where none was chosen, one that suits the appearance. Never null.
[[nodiscard]] zr::Ref<zr::NSColor> highlight(Way way);
/// The key of the user defaults under which the user's own is kept, as hexadecimal text.
[[nodiscard]] zr::Ref<zr::NSString> highlightKey(Way way);
/// Of what deserves a look.
[[nodiscard]] zr::Ref<zr::NSColor> noticeColor();

/// A line of text to be read.
[[nodiscard]] zr::Ref<zr::NSTextField> label(zr::NSString* text, zr::NSRect frame, zr::NSString* identifier = nullptr);
[[nodiscard]] zr::Ref<zr::NSButton> button(zr::NSString* title, zr::NSRect frame, zr::NSString* identifier,
                                           std::function<void()> onClick);

} // namespace desk
