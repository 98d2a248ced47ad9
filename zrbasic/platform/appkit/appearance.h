#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

/// Light: dark text on white.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSAppearanceNameAqua();
/// Dark: light text on near black.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSAppearanceNameDarkAqua();

/// How an application looks, light or dark (see `NSApplication::setAppearance`). Never changes; any thread.
class ZR_EXPORT NSAppearance : public NSObject {
    ZR_DECLARE_CLASS(NSAppearance, NSObject)
  public:
    NSAppearance();
    ~NSAppearance() override;

    /// The same object every time; null for any other name and for null.
    [[nodiscard]] static Ref<NSAppearance> appearanceNamed(NSString* name);
    /// That of the application (see `NSApplication::effectiveAppearance`); never null. Main thread only.
    [[nodiscard]] static Ref<NSAppearance> currentDrawingAppearance();

    /// Never null: of an appearance that was made in any other way, the light one's.
    [[nodiscard]] Ref<NSString> name() const;
    /// Whether it is the dark one.
    [[nodiscard]] bool isDark() const { return m_isDark; }

  private:
    bool m_isDark = false;
};

} // namespace zr
