#pragma once

#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/color.h>

namespace zr {

[[nodiscard]] inline bool isAppearanceDark() {
    return NSAppearance::currentDrawingAppearance()->isDark();
}

/// What is drawn in one colour in the light appearance and in another one in the dark.
class RoleColor {
  public:
    struct Rgb {
        double red;
        double green;
        double blue;
        double alpha = 1;
    };

    RoleColor(Rgb light, Rgb dark) : m_light(made(light)), m_dark(made(dark)) {}

    [[nodiscard]] Ref<NSColor> now() const { return Ref<NSColor>(isAppearanceDark() ? m_dark : m_light); }

  private:
    // For the life of the program, as what stands in static storage must not outlive the classes.
    static NSColor* made(Rgb rgb) {
        return NSColor::colorWithRed_green_blue_alpha(rgb.red, rgb.green, rgb.blue, rgb.alpha).leak();
    }

    NSColor* m_light;
    NSColor* m_dark;
};

constexpr RoleColor::Rgb grayRole(double white, double alpha = 1) {
    return {white, white, white, alpha};
}

} // namespace zr
