#pragma once

#include <zrbasic/platform/appkit/color_space.h>

#include <array>

namespace zr {

/// A colour with an opacity, as numbers in a colour space.
///
/// Components and alpha go from 0 to 1; alpha 1 is opaque. Where the colour space is extended (sRGB and the grey scale
/// that fits it), numbers beyond are kept; elsewhere they are clamped. A component that is not a number counts as 0.
///
/// A colour never changes and may be used from any thread. None of the operations gives null unless it says so. The
/// ones that read components raise `NSInvalidArgumentException` for a colour of another kind of space: black, white
/// and the greys have no red, green and blue. Convert first: `color->colorUsingColorSpace(space)`.
class ZR_EXPORT NSColor : public NSObject {
    ZR_DECLARE_CLASS(NSColor, NSObject)
  public:
    NSColor();
    ~NSColor() override;

    /// In sRGB; the second is another name of the first.
    [[nodiscard]] static Ref<NSColor> colorWithRed_green_blue_alpha(double red, double green, double blue,
                                                                    double alpha);
    [[nodiscard]] static Ref<NSColor> colorWithSRGBRed_green_blue_alpha(double red, double green, double blue,
                                                                        double alpha);
    /// In the generic RGB space.
    [[nodiscard]] static Ref<NSColor> colorWithCalibratedRed_green_blue_alpha(double red, double green, double blue,
                                                                              double alpha);
    [[nodiscard]] static Ref<NSColor> colorWithDeviceRed_green_blue_alpha(double red, double green, double blue,
                                                                          double alpha);
    /// In the grey scale that fits sRGB: 0 is black, 1 is white.
    [[nodiscard]] static Ref<NSColor> colorWithWhite_alpha(double white, double alpha);
    [[nodiscard]] static Ref<NSColor> colorWithDeviceCyan_magenta_yellow_black_alpha(double cyan, double magenta,
                                                                                     double yellow, double black,
                                                                                     double alpha);
    /// From `count` numbers, the components and then the alpha. Null unless there are exactly as many as the space
    /// needs, and for a null space or null numbers.
    [[nodiscard]] static Ref<NSColor> colorWithColorSpace_components_count(NSColorSpace* space,
                                                                           const double* components, NSInteger count);

    // The same object every time. From black to clear in grey, the others in sRGB.

    [[nodiscard]] static Ref<NSColor> blackColor();
    /// 1/3 white.
    [[nodiscard]] static Ref<NSColor> darkGrayColor();
    /// 2/3 white.
    [[nodiscard]] static Ref<NSColor> lightGrayColor();
    [[nodiscard]] static Ref<NSColor> whiteColor();
    /// 1/2 white.
    [[nodiscard]] static Ref<NSColor> grayColor();
    /// Black with alpha 0.
    [[nodiscard]] static Ref<NSColor> clearColor();
    [[nodiscard]] static Ref<NSColor> redColor();
    /// Full green, 0 1 0.
    [[nodiscard]] static Ref<NSColor> greenColor();
    [[nodiscard]] static Ref<NSColor> blueColor();
    [[nodiscard]] static Ref<NSColor> cyanColor();
    [[nodiscard]] static Ref<NSColor> yellowColor();
    [[nodiscard]] static Ref<NSColor> magentaColor();
    /// 1 0.5 0.
    [[nodiscard]] static Ref<NSColor> orangeColor();
    /// 0.5 0 0.5.
    [[nodiscard]] static Ref<NSColor> purpleColor();
    /// 0.6 0.4 0.2.
    [[nodiscard]] static Ref<NSColor> brownColor();

    // As the application's appearance wants them (see appearance.h), in sRGB: colours of the moment, to be asked for anew
    // when the appearance is another one. Main thread only.

    /// Of text, of text beside it that matters less, of what cannot be used, of what stands in for a missing text.
    [[nodiscard]] static Ref<NSColor> labelColor();
    [[nodiscard]] static Ref<NSColor> secondaryLabelColor();
    [[nodiscard]] static Ref<NSColor> disabledControlTextColor();
    [[nodiscard]] static Ref<NSColor> placeholderTextColor();
    [[nodiscard]] static Ref<NSColor> linkColor();
    /// Of lines between things, and around controls.
    [[nodiscard]] static Ref<NSColor> separatorColor();
    /// Behind controls in a window; behind what is read and edited; of a button's face.
    [[nodiscard]] static Ref<NSColor> windowBackgroundColor();
    [[nodiscard]] static Ref<NSColor> textBackgroundColor();
    [[nodiscard]] static Ref<NSColor> controlColor();
    /// Marks what is on, what is the default and what has the keyboard.
    [[nodiscard]] static Ref<NSColor> controlAccentColor();
    /// Behind what is selected, faint enough for coloured text on it.
    [[nodiscard]] static Ref<NSColor> selectedContentBackgroundColor();

    [[nodiscard]] Ref<NSColorSpace> colorSpace() const { return m_space; }
    /// How many numbers the colour is made of, alpha included: 2, 4 or 5.
    [[nodiscard]] NSInteger numberOfComponents() const;
    /// Writes that many numbers, alpha last; null does nothing.
    void getComponents(double* components) const;

    [[nodiscard]] double redComponent() const;
    [[nodiscard]] double greenComponent() const;
    [[nodiscard]] double blueComponent() const;
    /// What is not wanted may be null.
    void getRed_green_blue_alpha(double* red, double* green, double* blue, double* alpha) const;
    [[nodiscard]] double whiteComponent() const;
    void getWhite_alpha(double* white, double* alpha) const;
    [[nodiscard]] double cyanComponent() const;
    [[nodiscard]] double magentaComponent() const;
    [[nodiscard]] double yellowComponent() const;
    [[nodiscard]] double blackComponent() const;
    /// Never raises: every colour has one.
    [[nodiscard]] double alphaComponent() const;

    /// The same colour with another opacity; the receiver when it has that one already.
    [[nodiscard]] Ref<NSColor> colorWithAlphaComponent(double alpha) const;
    /// The colour in another space, the receiver when it is there already; null for a null space.
    ///
    /// A plain conversion of numbers, not of measured colours: spaces with the same components share their scale. A
    /// grey has its white as red, green and blue, or none of the inks and the rest to white as black; white is 0.2126
    /// red, 0.7152 green and 0.0722 blue; each ink takes away its own light and black takes away from all.
    [[nodiscard]] Ref<NSColor> colorUsingColorSpace(NSColorSpace* space) const;

    /// The space's name and the numbers: "sRGB 1 0 0 1".
    [[nodiscard]] Ref<NSString> description() const override;
    /// True for a colour of the same space and the same numbers, so white by grey is not white by red, green and blue.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// The colour itself.
    [[nodiscard]] id copy() const override;

  private:
    /// The components as far as the space has them, then the alpha, then zeros.
    using Numbers = std::array<double, 5>;

    static Ref<NSColor> made(NSColorSpace* space, const Numbers& numbers);
    /// The components, of which there are as many as the model says; raises when the colour has others.
    const Numbers& numbersOf(NSColorSpaceModel model, const char* operation) const;
    [[nodiscard]] Numbers converted(NSColorSpaceModel model) const;

    Ref<NSColorSpace> m_space = NSColorSpace::genericGamma22GrayColorSpace();
    Numbers m_numbers{};
};

} // namespace zr
