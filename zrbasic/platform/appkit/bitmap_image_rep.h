#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/types.h>

#include <cstdint>
#include <memory>
#include <span>

namespace zr {

class NSColor;

/// A picture as a grid of pixels: red, green, blue and alpha, a byte each, in this order, the colours multiplied by
/// the alpha. Rows follow each other from the top down without gaps, so the pixel at x, y begins at byte
/// 4 * (y * pixelsWide + x), y counted from the top.
///
/// A fresh bitmap is transparent. It must not be used from two threads at a time while one of them changes it.
class ZR_EXPORT NSBitmapImageRep : public NSObject {
    ZR_DECLARE_CLASS(NSBitmapImageRep, NSObject)
  public:
    /// One pixel, as stored.
    struct Pixel {
        std::uint8_t red = 0;
        std::uint8_t green = 0;
        std::uint8_t blue = 0;
        std::uint8_t alpha = 0;

        friend bool operator==(const Pixel&, const Pixel&) = default;
    };

    /// The longest side, in pixels, that a bitmap may have, and the most pixels: 1 GiB of memory.
    static constexpr NSInteger mostPixelsPerSide = 65535;
    static constexpr NSInteger mostPixels = NSInteger{1} << 28;

    NSBitmapImageRep();
    ~NSBitmapImageRep() override;

    /// A transparent bitmap whose size in points is its size in pixels. Null when a side is below 1 or the bitmap
    /// would be larger than the limits above.
    [[nodiscard]] static Ref<NSBitmapImageRep> bitmapWithPixelsWide_pixelsHigh(NSInteger wide, NSInteger high);

    /// Without pixels: what `init` leaves, and good for nothing. 0 in both directions.
    [[nodiscard]] NSInteger pixelsWide() const { return m_wide; }
    [[nodiscard]] NSInteger pixelsHigh() const { return m_high; }
    /// The extent in points that the pixels are spread over.
    [[nodiscard]] NSSize size() const { return m_size; }
    /// Changes no pixel; two pixels to a point make the bitmap one for a dense screen.
    void setSize(NSSize size) { m_size = size; }
    /// 4 times the pixels of a row.
    [[nodiscard]] NSInteger bytesPerRow() const { return m_wide * 4; }

    /// The bytes, top row first, for code that draws; borrowed until the bitmap goes.
    [[nodiscard]] std::span<std::uint8_t> bytes() { return {m_bytes.get(), byteCount()}; }
    [[nodiscard]] std::span<const std::uint8_t> bytes() const { return {m_bytes.get(), byteCount()}; }

    /// As stored, with the colours multiplied by the alpha; a transparent pixel outside of the bitmap.
    [[nodiscard]] Pixel pixelAtX_y(NSInteger x, NSInteger y) const;
    /// Stores the four bytes as they are; nothing outside of the bitmap.
    void setPixel_atX_y(Pixel pixel, NSInteger x, NSInteger y);

    /// The pixel as a colour in sRGB, in full strength whatever its alpha; null outside of the bitmap.
    [[nodiscard]] Ref<NSColor> colorAtX_y(NSInteger x, NSInteger y) const;
    /// Stores a colour of any space, each part rounded to the nearest byte. Null, and a place outside of the bitmap, do
    /// nothing.
    void setColor_atX_y(NSColor* color, NSInteger x, NSInteger y);

    /// Another bitmap of the same pixels.
    [[nodiscard]] id copy() const override;

  private:
    [[nodiscard]] std::size_t byteCount() const { return static_cast<std::size_t>(m_wide * m_high * 4); }
    [[nodiscard]] bool contains(NSInteger x, NSInteger y) const { return x >= 0 && y >= 0 && x < m_wide && y < m_high; }
    [[nodiscard]] std::uint8_t* at(NSInteger x, NSInteger y) const { return m_bytes.get() + (y * m_wide + x) * 4; }

    std::unique_ptr<std::uint8_t[]> m_bytes;
    NSInteger m_wide = 0;
    NSInteger m_high = 0;
    NSSize m_size;
};

} // namespace zr
