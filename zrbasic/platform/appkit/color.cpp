#include <zrbasic/platform/appkit/color.h>

#include <zrbasic/platform/foundation/string.h>

#include <algorithm>
#include <functional>

namespace zr {

ZR_DEFINE_CLASS(NSColor) {
    is.classMethod<&NSColor::colorWithRed_green_blue_alpha>("colorWithRed:green:blue:alpha:");
    is.classMethod<&NSColor::colorWithSRGBRed_green_blue_alpha>("colorWithSRGBRed:green:blue:alpha:");
    is.classMethod<&NSColor::colorWithCalibratedRed_green_blue_alpha>("colorWithCalibratedRed:green:blue:alpha:");
    is.classMethod<&NSColor::colorWithDeviceRed_green_blue_alpha>("colorWithDeviceRed:green:blue:alpha:");
    is.classMethod<&NSColor::colorWithWhite_alpha>("colorWithWhite:alpha:");
    is.classMethod<&NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha>(
        "colorWithDeviceCyan:magenta:yellow:black:alpha:");
    is.classMethod<&NSColor::blackColor>("blackColor");
    is.classMethod<&NSColor::darkGrayColor>("darkGrayColor");
    is.classMethod<&NSColor::lightGrayColor>("lightGrayColor");
    is.classMethod<&NSColor::whiteColor>("whiteColor");
    is.classMethod<&NSColor::grayColor>("grayColor");
    is.classMethod<&NSColor::clearColor>("clearColor");
    is.classMethod<&NSColor::redColor>("redColor");
    is.classMethod<&NSColor::greenColor>("greenColor");
    is.classMethod<&NSColor::blueColor>("blueColor");
    is.classMethod<&NSColor::cyanColor>("cyanColor");
    is.classMethod<&NSColor::yellowColor>("yellowColor");
    is.classMethod<&NSColor::magentaColor>("magentaColor");
    is.classMethod<&NSColor::orangeColor>("orangeColor");
    is.classMethod<&NSColor::purpleColor>("purpleColor");
    is.classMethod<&NSColor::brownColor>("brownColor");
    is.classMethod<&NSColor::labelColor>("labelColor");
    is.classMethod<&NSColor::secondaryLabelColor>("secondaryLabelColor");
    is.classMethod<&NSColor::disabledControlTextColor>("disabledControlTextColor");
    is.classMethod<&NSColor::placeholderTextColor>("placeholderTextColor");
    is.classMethod<&NSColor::linkColor>("linkColor");
    is.classMethod<&NSColor::separatorColor>("separatorColor");
    is.classMethod<&NSColor::windowBackgroundColor>("windowBackgroundColor");
    is.classMethod<&NSColor::textBackgroundColor>("textBackgroundColor");
    is.classMethod<&NSColor::controlColor>("controlColor");
    is.classMethod<&NSColor::controlAccentColor>("controlAccentColor");
    is.classMethod<&NSColor::selectedContentBackgroundColor>("selectedContentBackgroundColor");
    is.method<&NSColor::colorSpace>("colorSpace");
    is.method<&NSColor::numberOfComponents>("numberOfComponents");
    is.method<&NSColor::redComponent>("redComponent");
    is.method<&NSColor::greenComponent>("greenComponent");
    is.method<&NSColor::blueComponent>("blueComponent");
    is.method<&NSColor::whiteComponent>("whiteComponent");
    is.method<&NSColor::cyanComponent>("cyanComponent");
    is.method<&NSColor::magentaComponent>("magentaComponent");
    is.method<&NSColor::yellowComponent>("yellowComponent");
    is.method<&NSColor::blackComponent>("blackComponent");
    is.method<&NSColor::alphaComponent>("alphaComponent");
    is.method<&NSColor::colorWithAlphaComponent>("colorWithAlphaComponent:");
    is.method<&NSColor::colorUsingColorSpace>("colorUsingColorSpace:");
}

NSColor::NSColor() = default;
NSColor::~NSColor() = default;

Ref<NSColor> NSColor::made(NSColorSpace* space, const Numbers& numbers) {
    Ref<NSColor> color = alloc<NSColor>();
    color->m_space = Ref<NSColorSpace>(space);
    std::transform(numbers.begin(), numbers.end(), color->m_numbers.begin(), [space](double number) {
        if (number != number) {
            return 0.0;
        }
        return space->isExtended() ? number : std::clamp(number, 0.0, 1.0);
    });
    return color;
}

Ref<NSColor> NSColor::colorWithRed_green_blue_alpha(double red, double green, double blue, double alpha) {
    return made(NSColorSpace::sRGBColorSpace(), {red, green, blue, alpha});
}

Ref<NSColor> NSColor::colorWithSRGBRed_green_blue_alpha(double red, double green, double blue, double alpha) {
    return made(NSColorSpace::sRGBColorSpace(), {red, green, blue, alpha});
}

Ref<NSColor> NSColor::colorWithCalibratedRed_green_blue_alpha(double red, double green, double blue, double alpha) {
    return made(NSColorSpace::genericRGBColorSpace(), {red, green, blue, alpha});
}

Ref<NSColor> NSColor::colorWithDeviceRed_green_blue_alpha(double red, double green, double blue, double alpha) {
    return made(NSColorSpace::deviceRGBColorSpace(), {red, green, blue, alpha});
}

Ref<NSColor> NSColor::colorWithWhite_alpha(double white, double alpha) {
    return made(NSColorSpace::genericGamma22GrayColorSpace(), {white, alpha});
}

Ref<NSColor> NSColor::colorWithDeviceCyan_magenta_yellow_black_alpha(double cyan, double magenta, double yellow,
                                                                     double black, double alpha) {
    return made(NSColorSpace::deviceCMYKColorSpace(), {cyan, magenta, yellow, black, alpha});
}

Ref<NSColor> NSColor::colorWithColorSpace_components_count(NSColorSpace* space, const double* components,
                                                           NSInteger count) {
    if (!space || !components || count != space->numberOfColorComponents() + 1) {
        return nullptr;
    }
    Numbers numbers{};
    std::copy(components, components + count, numbers.begin());
    return made(space, numbers);
}

Ref<NSColor> NSColor::blackColor() {
    // Never let go, these ones, so that they outlive whatever static objects hold on to them.
    static auto* const color = new Ref<NSColor>(colorWithWhite_alpha(0, 1));
    return *color;
}

Ref<NSColor> NSColor::darkGrayColor() {
    static auto* const color = new Ref<NSColor>(colorWithWhite_alpha(1.0 / 3.0, 1));
    return *color;
}

Ref<NSColor> NSColor::lightGrayColor() {
    static auto* const color = new Ref<NSColor>(colorWithWhite_alpha(2.0 / 3.0, 1));
    return *color;
}

Ref<NSColor> NSColor::whiteColor() {
    static auto* const color = new Ref<NSColor>(colorWithWhite_alpha(1, 1));
    return *color;
}

Ref<NSColor> NSColor::grayColor() {
    static auto* const color = new Ref<NSColor>(colorWithWhite_alpha(0.5, 1));
    return *color;
}

Ref<NSColor> NSColor::clearColor() {
    static auto* const color = new Ref<NSColor>(colorWithWhite_alpha(0, 0));
    return *color;
}

Ref<NSColor> NSColor::redColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(1, 0, 0, 1));
    return *color;
}

Ref<NSColor> NSColor::greenColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(0, 1, 0, 1));
    return *color;
}

Ref<NSColor> NSColor::blueColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(0, 0, 1, 1));
    return *color;
}

Ref<NSColor> NSColor::cyanColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(0, 1, 1, 1));
    return *color;
}

Ref<NSColor> NSColor::yellowColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(1, 1, 0, 1));
    return *color;
}

Ref<NSColor> NSColor::magentaColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(1, 0, 1, 1));
    return *color;
}

Ref<NSColor> NSColor::orangeColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(1, 0.5, 0, 1));
    return *color;
}

Ref<NSColor> NSColor::purpleColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(0.5, 0, 0.5, 1));
    return *color;
}

Ref<NSColor> NSColor::brownColor() {
    static auto* const color = new Ref<NSColor>(colorWithRed_green_blue_alpha(0.6, 0.4, 0.2, 1));
    return *color;
}

const NSColor::Numbers& NSColor::numbersOf(NSColorSpaceModel model, const char* operation) const {
    if (m_space->colorSpaceModel() != model) {
        NSException::raise(NSInvalidArgumentException, std::string("*** -[NSColor ") + operation + "]: the color " +
                                                           description()->utf8() +
                                                           " has no such components, convert it first");
    }
    return m_numbers;
}

NSInteger NSColor::numberOfComponents() const {
    return m_space->numberOfColorComponents() + 1;
}

void NSColor::getComponents(double* components) const {
    if (components) {
        std::copy_n(m_numbers.begin(), numberOfComponents(), components);
    }
}

double NSColor::redComponent() const {
    return numbersOf(NSColorSpaceModelRGB, "redComponent")[0];
}

double NSColor::greenComponent() const {
    return numbersOf(NSColorSpaceModelRGB, "greenComponent")[1];
}

double NSColor::blueComponent() const {
    return numbersOf(NSColorSpaceModelRGB, "blueComponent")[2];
}

void NSColor::getRed_green_blue_alpha(double* red, double* green, double* blue, double* alpha) const {
    const Numbers& numbers = numbersOf(NSColorSpaceModelRGB, "getRed:green:blue:alpha:");
    double* const targets[] = {red, green, blue, alpha};
    for (std::size_t i = 0; i < std::size(targets); ++i) {
        if (targets[i]) {
            *targets[i] = numbers[i];
        }
    }
}

double NSColor::whiteComponent() const {
    return numbersOf(NSColorSpaceModelGray, "whiteComponent")[0];
}

void NSColor::getWhite_alpha(double* white, double* alpha) const {
    const Numbers& numbers = numbersOf(NSColorSpaceModelGray, "getWhite:alpha:");
    if (white) {
        *white = numbers[0];
    }
    if (alpha) {
        *alpha = numbers[1];
    }
}

double NSColor::cyanComponent() const {
    return numbersOf(NSColorSpaceModelCMYK, "cyanComponent")[0];
}

double NSColor::magentaComponent() const {
    return numbersOf(NSColorSpaceModelCMYK, "magentaComponent")[1];
}

double NSColor::yellowComponent() const {
    return numbersOf(NSColorSpaceModelCMYK, "yellowComponent")[2];
}

double NSColor::blackComponent() const {
    return numbersOf(NSColorSpaceModelCMYK, "blackComponent")[3];
}

double NSColor::alphaComponent() const {
    return m_numbers[static_cast<std::size_t>(m_space->numberOfColorComponents())];
}

Ref<NSColor> NSColor::colorWithAlphaComponent(double alpha) const {
    if (alpha == alphaComponent()) {
        return Ref<NSColor>(const_cast<NSColor*>(this));
    }
    Numbers numbers = m_numbers;
    numbers[static_cast<std::size_t>(m_space->numberOfColorComponents())] = alpha;
    return made(m_space, numbers);
}

NSColor::Numbers NSColor::converted(NSColorSpaceModel model) const {
    const NSColorSpaceModel own = m_space->colorSpaceModel();
    if (own == model) {
        return m_numbers;
    }
    const double alpha = alphaComponent();
    if (own == NSColorSpaceModelGray && model == NSColorSpaceModelCMYK) {
        return {0, 0, 0, 1 - m_numbers[0], alpha};
    }
    // All other roads lead over red, green and blue.
    double red = m_numbers[0];
    double green = m_numbers[1];
    double blue = m_numbers[2];
    if (own == NSColorSpaceModelGray) {
        green = blue = red;
    } else if (own == NSColorSpaceModelCMYK) {
        const double light = 1 - m_numbers[3];
        red = (1 - red) * light;
        green = (1 - green) * light;
        blue = (1 - blue) * light;
    }
    if (model == NSColorSpaceModelRGB) {
        return {red, green, blue, alpha};
    }
    if (model == NSColorSpaceModelGray) {
        return {0.2126 * red + 0.7152 * green + 0.0722 * blue, alpha};
    }
    // Inks know nothing beyond black and white, and the share of an ink in black is anybody's guess: none.
    red = std::clamp(red, 0.0, 1.0);
    green = std::clamp(green, 0.0, 1.0);
    blue = std::clamp(blue, 0.0, 1.0);
    const double light = std::max({red, green, blue});
    if (light == 0) {
        return {0, 0, 0, 1, alpha};
    }
    return {1 - red / light, 1 - green / light, 1 - blue / light, 1 - light, alpha};
}

Ref<NSColor> NSColor::colorUsingColorSpace(NSColorSpace* space) const {
    if (!space) {
        return nullptr;
    }
    if (space == m_space.get()) {
        return Ref<NSColor>(const_cast<NSColor*>(this));
    }
    return made(space, converted(space->colorSpaceModel()));
}

Ref<NSString> NSColor::description() const {
    Ref<NSString> text = m_space->localizedName();
    for (NSInteger i = 0; i < numberOfComponents(); ++i) {
        text = text->stringByAppendingFormat(" %g"_ns, m_numbers[static_cast<std::size_t>(i)]);
    }
    return text;
}

bool NSColor::isEqual(NSObject* other) const {
    const auto* color = cast<NSColor>(other);
    return color != nullptr && m_space.get() == color->m_space.get() && m_numbers == color->m_numbers;
}

NSUInteger NSColor::hash() const {
    NSUInteger hash = m_space->hash();
    for (const double number : m_numbers) {
        // The two zeros are equal but differ in their bits.
        hash = hash * 31 + std::hash<double>()(number == 0 ? 0.0 : number);
    }
    return hash;
}

id NSColor::copy() const {
    return id(const_cast<NSColor*>(this));
}

} // namespace zr
