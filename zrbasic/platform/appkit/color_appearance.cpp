#include <zrbasic/platform/appkit/color.h>

#include <zrbasic/platform/appkit/role_color_p.h>

namespace zr {

Ref<NSColor> NSColor::labelColor() {
    static const RoleColor color(grayRole(0.11), grayRole(0.90));
    return color.now();
}

Ref<NSColor> NSColor::secondaryLabelColor() {
    static const RoleColor color(grayRole(0.40), grayRole(0.66));
    return color.now();
}

Ref<NSColor> NSColor::disabledControlTextColor() {
    static const RoleColor color(grayRole(0.62), grayRole(0.45));
    return color.now();
}

Ref<NSColor> NSColor::placeholderTextColor() {
    static const RoleColor color(grayRole(0.50), grayRole(0.55));
    return color.now();
}

Ref<NSColor> NSColor::linkColor() {
    static const RoleColor color({0.04, 0.35, 0.77}, {0.42, 0.67, 1.0});
    return color.now();
}

Ref<NSColor> NSColor::separatorColor() {
    static const RoleColor color(grayRole(0.84), grayRole(0.27));
    return color.now();
}

Ref<NSColor> NSColor::windowBackgroundColor() {
    static const RoleColor color(grayRole(0.96), grayRole(0.13));
    return color.now();
}

Ref<NSColor> NSColor::textBackgroundColor() {
    static const RoleColor color(grayRole(1), grayRole(0.09));
    return color.now();
}

Ref<NSColor> NSColor::controlColor() {
    static const RoleColor color(grayRole(1), grayRole(0.23));
    return color.now();
}

// Dark enough in both for white on it.
Ref<NSColor> NSColor::controlAccentColor() {
    static const RoleColor color({0.10, 0.42, 0.86}, {0.13, 0.44, 0.87});
    return color.now();
}

Ref<NSColor> NSColor::selectedContentBackgroundColor() {
    static const RoleColor color({0.84, 0.91, 0.957}, {0.13, 0.21, 0.34});
    return color.now();
}

} // namespace zr
