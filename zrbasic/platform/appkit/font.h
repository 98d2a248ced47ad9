#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

/// How heavy the strokes of a font are: from -1, the lightest, over 0, the regular weight, to 1.
using NSFontWeight = double;

inline constexpr NSFontWeight NSFontWeightUltraLight = -0.8;
inline constexpr NSFontWeight NSFontWeightThin = -0.6;
inline constexpr NSFontWeight NSFontWeightLight = -0.4;
inline constexpr NSFontWeight NSFontWeightRegular = 0;
inline constexpr NSFontWeight NSFontWeightMedium = 0.23;
inline constexpr NSFontWeight NSFontWeightSemibold = 0.3;
inline constexpr NSFontWeight NSFontWeightBold = 0.4;
inline constexpr NSFontWeight NSFontWeightHeavy = 0.56;
inline constexpr NSFontWeight NSFontWeightBlack = 0.62;

/// A font as it is asked for: family, weight and size. Which letters that gives is the toolkit's to find out, so a
/// font of a name that the system does not have is a font all the same, drawn with a substitute.
///
/// Sizes are in points; one that is not a finite number above 0 stands for the default of 13 points. A weight beyond
/// -1 to 1 is clamped, one that is not a number is regular. A font never changes and may be used from any thread, but for
/// what it asks a toolkit.
class ZR_EXPORT NSFont : public NSObject {
    ZR_DECLARE_CLASS(NSFont, NSObject)
  public:
    NSFont();
    ~NSFont() override;

    /// The font of the user interface. Never null, these three.
    [[nodiscard]] static Ref<NSFont> systemFontOfSize(double size);
    [[nodiscard]] static Ref<NSFont> boldSystemFontOfSize(double size);
    [[nodiscard]] static Ref<NSFont> systemFontOfSize_weight(double size, NSFontWeight weight);
    /// A font by its name: a family, and behind a hyphen perhaps a weight, as in "Helvetica-Bold".
    ///
    /// A style that is not the name of a weight ("Helvetica-Oblique") belongs to the name alone and leaves the weight
    /// regular. Null for a null or empty name.
    [[nodiscard]] static Ref<NSFont> fontWithName_size(NSString* name, double size);

    /// 13 points.
    [[nodiscard]] static double systemFontSize();
    /// 11 points.
    [[nodiscard]] static double smallSystemFontSize();

    /// The full name; ".SystemFont" or ".SystemFont-Bold" for the font of the user interface. Never null.
    [[nodiscard]] Ref<NSString> fontName() const { return m_name; }
    /// The name without the style. Never null.
    [[nodiscard]] Ref<NSString> familyName() const;
    /// Whether this is the font of the user interface, in any weight.
    [[nodiscard]] bool isSystemFont() const;
    /// In points, above 0.
    [[nodiscard]] double pointSize() const { return m_size; }
    [[nodiscard]] NSFontWeight weight() const { return m_weight; }
    /// How far the letters reach above the line they stand on and, as a number of 0 or less, below it, and what lies
    /// free from one line to the next; in points, as the toolkit in use says. Main thread only, these three.
    [[nodiscard]] double ascender() const;
    [[nodiscard]] double descender() const;
    [[nodiscard]] double leading() const;

    /// The name and the size: "Helvetica-Bold 12 pt".
    [[nodiscard]] Ref<NSString> description() const override;
    /// True for a font of the same name, size and weight.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The font itself.
    [[nodiscard]] id copy() const override;

  private:
    static Ref<NSFont> made(NSString* name, double size, NSFontWeight weight);

    Ref<NSString> m_name = ".SystemFont"_ns;
    double m_size = 13;
    NSFontWeight m_weight = NSFontWeightRegular;
};

} // namespace zr
