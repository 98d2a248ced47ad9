#pragma once

#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/types.h>

namespace zr {

class NSString;

/// What the components of a colour stand for.
enum NSColorSpaceModel : NSInteger {
    NSColorSpaceModelGray = 0,
    NSColorSpaceModelRGB = 1,
    NSColorSpaceModelCMYK = 2,
};

/// How the numbers of a colour are to be read: which components there are, and on what scale.
///
/// There is one object of each kind, made on first use; equality is identity. Colour spaces never change and may be
/// used from any thread.
class ZR_EXPORT NSColorSpace : public NSObject {
    ZR_DECLARE_CLASS(NSColorSpace, NSObject)
  public:
    NSColorSpace();
    ~NSColorSpace() override;

    /// Red, green and blue of the common standard; components may lie outside 0 to 1.
    [[nodiscard]] static Ref<NSColorSpace> sRGBColorSpace();
    [[nodiscard]] static Ref<NSColorSpace> genericRGBColorSpace();
    [[nodiscard]] static Ref<NSColorSpace> deviceRGBColorSpace();
    /// White, on a scale that fits sRGB; components may lie outside 0 to 1.
    [[nodiscard]] static Ref<NSColorSpace> genericGamma22GrayColorSpace();
    [[nodiscard]] static Ref<NSColorSpace> genericGrayColorSpace();
    [[nodiscard]] static Ref<NSColorSpace> deviceGrayColorSpace();
    [[nodiscard]] static Ref<NSColorSpace> genericCMYKColorSpace();
    [[nodiscard]] static Ref<NSColorSpace> deviceCMYKColorSpace();

    [[nodiscard]] NSColorSpaceModel colorSpaceModel() const { return m_model; }
    /// How many components a colour has besides its alpha: 1, 3 or 4.
    [[nodiscard]] NSInteger numberOfColorComponents() const;
    /// Whether components outside 0 to 1 are kept rather than clamped.
    [[nodiscard]] bool isExtended() const { return m_extended; }
    /// The name for people, in English.
    [[nodiscard]] Ref<NSString> localizedName() const;

    [[nodiscard]] Ref<NSString> description() const override;
    /// The space itself.
    [[nodiscard]] id copy() const override;

  private:
    enum class Range { Clamped, Extended };
    static NSColorSpace* made(NSColorSpaceModel model, Range range, const char* name);

    NSColorSpaceModel m_model = NSColorSpaceModelRGB;
    bool m_extended = false;
    const char* m_name = "";
};

} // namespace zr
