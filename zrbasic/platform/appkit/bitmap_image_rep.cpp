#include <zrbasic/platform/appkit/bitmap_image_rep.h>

#include <zrbasic/platform/appkit/color.h>

#include <algorithm>

namespace zr {

namespace {

std::uint8_t byteOf(double part) {
    return static_cast<std::uint8_t>(std::clamp(part, 0.0, 1.0) * 255 + 0.5);
}

} // namespace

ZR_DEFINE_CLASS(NSBitmapImageRep) {
    is.method<&NSBitmapImageRep::pixelsWide>("pixelsWide");
    is.method<&NSBitmapImageRep::pixelsHigh>("pixelsHigh");
    is.method<&NSBitmapImageRep::size>("size");
    is.method<&NSBitmapImageRep::setSize>("setSize:");
    is.method<&NSBitmapImageRep::bytesPerRow>("bytesPerRow");
    is.method<&NSBitmapImageRep::colorAtX_y>("colorAtX:y:");
    is.method<&NSBitmapImageRep::setColor_atX_y>("setColor:atX:y:");
}

NSBitmapImageRep::NSBitmapImageRep() = default;
NSBitmapImageRep::~NSBitmapImageRep() = default;

Ref<NSBitmapImageRep> NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(NSInteger wide, NSInteger high) {
    if (wide < 1 || high < 1 || wide > mostPixelsPerSide || high > mostPixelsPerSide || wide * high > mostPixels) {
        return nullptr;
    }
    Ref<NSBitmapImageRep> made = alloc<NSBitmapImageRep>();
    made->m_bytes = std::make_unique<std::uint8_t[]>(static_cast<std::size_t>(wide * high * 4));
    made->m_wide = wide;
    made->m_high = high;
    made->m_size = NSMakeSize(static_cast<double>(wide), static_cast<double>(high));
    return made;
}

NSBitmapImageRep::Pixel NSBitmapImageRep::pixelAtX_y(NSInteger x, NSInteger y) const {
    if (!contains(x, y)) {
        return {};
    }
    const std::uint8_t* const bytes = at(x, y);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

void NSBitmapImageRep::setPixel_atX_y(Pixel pixel, NSInteger x, NSInteger y) {
    if (contains(x, y)) {
        std::uint8_t* const bytes = at(x, y);
        bytes[0] = pixel.red;
        bytes[1] = pixel.green;
        bytes[2] = pixel.blue;
        bytes[3] = pixel.alpha;
    }
}

Ref<NSColor> NSBitmapImageRep::colorAtX_y(NSInteger x, NSInteger y) const {
    if (!contains(x, y)) {
        return nullptr;
    }
    const Pixel pixel = pixelAtX_y(x, y);
    if (pixel.alpha == 0) {
        return NSColor::colorWithRed_green_blue_alpha(0, 0, 0, 0);
    }
    // Bytes written by others may exceed their alpha; no colour is stronger than full.
    const auto part = [alpha = pixel.alpha](std::uint8_t byte) { return std::min(1.0, byte / double(alpha)); };
    return NSColor::colorWithRed_green_blue_alpha(part(pixel.red), part(pixel.green), part(pixel.blue),
                                                  pixel.alpha / 255.0);
}

void NSBitmapImageRep::setColor_atX_y(NSColor* color, NSInteger x, NSInteger y) {
    if (!color) {
        return;
    }
    const Ref<NSColor> plain = color->colorUsingColorSpace(NSColorSpace::sRGBColorSpace());
    const double alpha = std::clamp(plain->alphaComponent(), 0.0, 1.0);
    const auto part = [alpha](double component) { return byteOf(std::clamp(component, 0.0, 1.0) * alpha); };
    setPixel_atX_y(
        {part(plain->redComponent()), part(plain->greenComponent()), part(plain->blueComponent()), byteOf(alpha)}, x,
        y);
}

id NSBitmapImageRep::copy() const {
    const Ref<NSBitmapImageRep> made = alloc<NSBitmapImageRep>();
    if (m_bytes) {
        made->m_bytes = std::make_unique_for_overwrite<std::uint8_t[]>(byteCount());
        std::copy_n(m_bytes.get(), byteCount(), made->m_bytes.get());
    }
    made->m_wide = m_wide;
    made->m_high = m_high;
    made->m_size = m_size;
    return made;
}

} // namespace zr
