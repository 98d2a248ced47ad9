#pragma once

#include <zrbasic/platform/appkit/color.h>

/// What controls have in common when they are drawn.
namespace zr::look {

/// Marks what is on, what is the default and what has the keyboard.
inline Ref<NSColor> accent() {
    static NSColor* const color = NSColor::colorWithRed_green_blue_alpha(0.1, 0.42, 0.86, 1).leak();
    return Ref<NSColor>(color);
}

/// The same while it is pressed.
inline Ref<NSColor> pressedAccent() {
    static NSColor* const color = NSColor::colorWithRed_green_blue_alpha(0.06, 0.31, 0.68, 1).leak();
    return Ref<NSColor>(color);
}

inline Ref<NSColor> border(bool isEnabled) {
    static NSColor* const enabled = NSColor::colorWithWhite_alpha(0.69, 1).leak();
    static NSColor* const disabled = NSColor::colorWithWhite_alpha(0.85, 1).leak();
    return Ref<NSColor>(isEnabled ? enabled : disabled);
}

inline Ref<NSColor> face(bool isEnabled, bool isPressed) {
    static NSColor* const disabled = NSColor::colorWithWhite_alpha(0.96, 1).leak();
    static NSColor* const pressed = NSColor::colorWithWhite_alpha(0.88, 1).leak();
    if (!isEnabled) {
        return Ref<NSColor>(disabled);
    }
    return isPressed ? Ref<NSColor>(pressed) : NSColor::whiteColor();
}

inline Ref<NSColor> text(bool isEnabled) {
    static NSColor* const enabled = NSColor::colorWithWhite_alpha(0.11, 1).leak();
    static NSColor* const disabled = NSColor::colorWithWhite_alpha(0.62, 1).leak();
    return Ref<NSColor>(isEnabled ? enabled : disabled);
}

inline constexpr double cornerRadius = 4;
inline constexpr double borderWidth = 1;
inline constexpr double focusRingWidth = 2;

} // namespace zr::look
