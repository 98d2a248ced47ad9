#pragma once

#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/color_space.h>

#include <algorithm>
#include <cmath>

namespace zr::test {

/// The application looks like that as long as this stands; null is light.
class InAppearance {
  public:
    explicit InAppearance(NSString* name) : m_before(NSApplication::sharedApplication()->appearance()) {
        NSApplication::sharedApplication()->setAppearance(NSAppearance::appearanceNamed(name));
    }
    ~InAppearance() { NSApplication::sharedApplication()->setAppearance(m_before); }
    InAppearance(const InAppearance&) = delete;
    InAppearance& operator=(const InAppearance&) = delete;

  private:
    Ref<NSAppearance> m_before;
};

/// How much light comes from a colour, by the formula of the Web's guidelines for accessibility.
inline double luminance(double red, double green, double blue) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
}

/// From 1, the same, to 21, black on white; of two luminances.
inline double contrast(double one, double other) {
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

inline double luminance(NSColor* color) {
    const Ref<NSColor> rgb = color->colorUsingColorSpace(NSColorSpace::sRGBColorSpace());
    return luminance(rgb->redComponent(), rgb->greenComponent(), rgb->blueComponent());
}

} // namespace zr::test
