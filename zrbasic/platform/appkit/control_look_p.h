#pragma once

#include <zrbasic/platform/appkit/role_color_p.h>

/// What controls have in common when they are drawn.
namespace zr::look {

/// Marks what is on, what is the default and what has the keyboard.
inline Ref<NSColor> accent() {
    return NSColor::controlAccentColor();
}

/// The same while it is pressed.
inline Ref<NSColor> pressedAccent() {
    static const RoleColor color({0.06, 0.31, 0.68}, {0.08, 0.33, 0.70});
    return color.now();
}

/// Letters and marks that lie on these two.
inline Ref<NSColor> onAccent() {
    return NSColor::whiteColor();
}

/// Marks a text that is on: lighter than the accent where that is hard to read.
inline Ref<NSColor> accentText() {
    static const RoleColor color({0.10, 0.42, 0.86}, {0.47, 0.70, 1.0});
    return color.now();
}

inline Ref<NSColor> border(bool isEnabled) {
    static const RoleColor enabled(grayRole(0.69), grayRole(0.40));
    static const RoleColor disabled(grayRole(0.85), grayRole(0.28));
    return (isEnabled ? enabled : disabled).now();
}

inline Ref<NSColor> face(bool isEnabled, bool isPressed) {
    static const RoleColor disabled(grayRole(0.96), grayRole(0.17));
    static const RoleColor pressed(grayRole(0.88), grayRole(0.34));
    if (!isEnabled) {
        return disabled.now();
    }
    return isPressed ? pressed.now() : NSColor::controlColor();
}

inline Ref<NSColor> text(bool isEnabled) {
    return isEnabled ? NSColor::labelColor() : NSColor::disabledControlTextColor();
}

// What nobody has given a colour. In the light appearance these are the plain colours that such things have had from
// the beginning, and answer when they are asked for them.

inline Ref<NSColor> plainText() {
    return isAppearanceDark() ? NSColor::labelColor() : NSColor::blackColor();
}

inline Ref<NSColor> paper() {
    return isAppearanceDark() ? NSColor::textBackgroundColor() : NSColor::whiteColor();
}

inline Ref<NSColor> placeholder() {
    return isAppearanceDark() ? NSColor::placeholderTextColor() : NSColor::grayColor();
}

inline Ref<NSColor> bezel() {
    return isAppearanceDark() ? border(true) : NSColor::lightGrayColor();
}

inline constexpr double cornerRadius = 4;
inline constexpr double borderWidth = 1;
inline constexpr double focusRingWidth = 2;

} // namespace zr::look
