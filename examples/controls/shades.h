#pragma once

#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/color.h>

/// The gallery's own colours. What controls are not told they choose by themselves; what they are told must suit the
/// appearance that the gallery is made in.
namespace controls {

[[nodiscard]] inline zr::Ref<zr::NSColor> shade(const zr::Ref<zr::NSColor>& light, const zr::Ref<zr::NSColor>& dark) {
    return zr::NSAppearance::currentDrawingAppearance()->isDark() ? dark : light;
}

[[nodiscard]] inline zr::Ref<zr::NSColor> rgb(double red, double green, double blue) {
    return zr::NSColor::colorWithRed_green_blue_alpha(red, green, blue, 1);
}

/// Of texts.
[[nodiscard]] inline zr::Ref<zr::NSColor> ink() {
    return shade(zr::NSColor::blackColor(), zr::NSColor::labelColor());
}

/// Behind what has a ground of its own.
[[nodiscard]] inline zr::Ref<zr::NSColor> paper() {
    return shade(zr::NSColor::whiteColor(), zr::NSColor::textBackgroundColor());
}

[[nodiscard]] inline zr::Ref<zr::NSColor> accent() {
    return shade(rgb(0.13, 0.45, 0.85), rgb(0.36, 0.63, 1));
}

[[nodiscard]] inline zr::Ref<zr::NSColor> pale() {
    return shade(rgb(0.92, 0.95, 0.99), rgb(0.16, 0.21, 0.29));
}

/// What is wrong, or falls.
[[nodiscard]] inline zr::Ref<zr::NSColor> alarm() {
    return shade(rgb(0.80, 0.18, 0.16), rgb(1, 0.45, 0.42));
}

/// What rises.
[[nodiscard]] inline zr::Ref<zr::NSColor> rise() {
    return shade(rgb(0.05, 0.50, 0.25), rgb(0.30, 0.78, 0.47));
}

} // namespace controls
