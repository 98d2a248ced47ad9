#include "look.h"

#include <zrbasic/core/color.h>
#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/ui/callback_target.h>

namespace desk {

using namespace zr;

namespace {

Ref<NSColor> suiting(std::uint32_t light, std::uint32_t dark) {
    return ZRHexColor(NSAppearance::currentDrawingAppearance()->isDark() ? dark : light);
}

} // namespace

Ref<NSString> highlightKey(Way way) {
    return way == Way::Up ? "highlightOfRises"_ns : "highlightOfFalls"_ns;
}

Ref<NSColor> highlight(Way way) {
    if (auto chosen = colorWithHexString(NSUserDefaults::standardUserDefaults()->stringForKey(highlightKey(way)))) {
        return chosen;
    }
    return way == Way::Up ? suiting(0x0D7F40, 0x59CC80) : suiting(0xCC2E29, 0xFF736B);
}

Ref<NSColor> noticeColor() {
    return suiting(0x9A5B00, 0xF0B04A);
}

Ref<NSTextField> label(NSString* text, NSRect frame, NSString* identifier) {
    Ref<NSTextField> made = NSTextField::labelWithString(text);
    made->setLineBreakMode(NSLineBreakByTruncatingTail);
    made->setFrame(frame);
    made->setIdentifier(identifier);
    return made;
}

Ref<NSButton> button(NSString* title, NSRect frame, NSString* identifier, std::function<void()> onClick) {
    Ref<NSButton> made = NSButton::buttonWithTitle_target_action(title, nullptr, {});
    setCallback(made, [onClick = std::move(onClick)](NSObject*) { onClick(); });
    made->setFrame(frame);
    made->setIdentifier(identifier);
    return made;
}

} // namespace desk
