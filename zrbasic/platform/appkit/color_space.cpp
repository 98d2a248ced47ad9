#include <zrbasic/platform/appkit/color_space.h>

#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_DEFINE_CLASS(NSColorSpace) {
    is.classMethod<&NSColorSpace::sRGBColorSpace>("sRGBColorSpace");
    is.classMethod<&NSColorSpace::genericRGBColorSpace>("genericRGBColorSpace");
    is.classMethod<&NSColorSpace::deviceRGBColorSpace>("deviceRGBColorSpace");
    is.classMethod<&NSColorSpace::genericGamma22GrayColorSpace>("genericGamma22GrayColorSpace");
    is.classMethod<&NSColorSpace::genericGrayColorSpace>("genericGrayColorSpace");
    is.classMethod<&NSColorSpace::deviceGrayColorSpace>("deviceGrayColorSpace");
    is.classMethod<&NSColorSpace::genericCMYKColorSpace>("genericCMYKColorSpace");
    is.classMethod<&NSColorSpace::deviceCMYKColorSpace>("deviceCMYKColorSpace");
    is.method<&NSColorSpace::colorSpaceModel>("colorSpaceModel");
    is.method<&NSColorSpace::numberOfColorComponents>("numberOfColorComponents");
    is.method<&NSColorSpace::localizedName>("localizedName");
}

NSColorSpace::NSColorSpace() = default;
NSColorSpace::~NSColorSpace() = default;

NSColorSpace* NSColorSpace::made(NSColorSpaceModel model, Range range, const char* name) {
    Ref<NSColorSpace> space = alloc<NSColorSpace>();
    space->m_model = model;
    space->m_extended = range == Range::Extended;
    space->m_name = name;
    // Never let go, so that it outlives whatever static colours hold on to it.
    return space.leak();
}

Ref<NSColorSpace> NSColorSpace::sRGBColorSpace() {
    static NSColorSpace* const space = made(NSColorSpaceModelRGB, Range::Extended, "sRGB");
    return Ref<NSColorSpace>(space);
}

Ref<NSColorSpace> NSColorSpace::genericRGBColorSpace() {
    static NSColorSpace* const space = made(NSColorSpaceModelRGB, Range::Clamped, "Generic RGB");
    return Ref<NSColorSpace>(space);
}

Ref<NSColorSpace> NSColorSpace::deviceRGBColorSpace() {
    static NSColorSpace* const space = made(NSColorSpaceModelRGB, Range::Clamped, "Device RGB");
    return Ref<NSColorSpace>(space);
}

Ref<NSColorSpace> NSColorSpace::genericGamma22GrayColorSpace() {
    static NSColorSpace* const space = made(NSColorSpaceModelGray, Range::Extended, "Generic Gray Gamma 2.2");
    return Ref<NSColorSpace>(space);
}

Ref<NSColorSpace> NSColorSpace::genericGrayColorSpace() {
    static NSColorSpace* const space = made(NSColorSpaceModelGray, Range::Clamped, "Generic Gray");
    return Ref<NSColorSpace>(space);
}

Ref<NSColorSpace> NSColorSpace::deviceGrayColorSpace() {
    static NSColorSpace* const space = made(NSColorSpaceModelGray, Range::Clamped, "Device Gray");
    return Ref<NSColorSpace>(space);
}

Ref<NSColorSpace> NSColorSpace::genericCMYKColorSpace() {
    static NSColorSpace* const space = made(NSColorSpaceModelCMYK, Range::Clamped, "Generic CMYK");
    return Ref<NSColorSpace>(space);
}

Ref<NSColorSpace> NSColorSpace::deviceCMYKColorSpace() {
    static NSColorSpace* const space = made(NSColorSpaceModelCMYK, Range::Clamped, "Device CMYK");
    return Ref<NSColorSpace>(space);
}

NSInteger NSColorSpace::numberOfColorComponents() const {
    switch (m_model) {
        case NSColorSpaceModelGray:
            return 1;
        case NSColorSpaceModelRGB:
            return 3;
        case NSColorSpaceModelCMYK:
            break;
    }
    return 4;
}

Ref<NSString> NSColorSpace::localizedName() const {
    return NSString::fromUtf8(m_name);
}

Ref<NSString> NSColorSpace::description() const {
    return localizedName();
}

id NSColorSpace::copy() const {
    return id(const_cast<NSColorSpace*>(this));
}

} // namespace zr
