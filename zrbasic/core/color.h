#pragma once

#include <zrbasic/platform/appkit/color.h>

#include <concepts>
#include <cstdint>

/// Colours as an application writes them down: as components of 0 to 255, as a number 0xAARRGGBB, and as text, "#" or
/// "0x" and six digits RRGGBB or eight AARRGGBB, alpha first.
///
/// A number up to 0xFFFFFF is opaque, so no number stands for a fully transparent colour; text can. All colours made
/// here are sRGB, which keeps components beyond 0 to 1. A null receiver gives the zero result. Everything here may be
/// used from any thread; nothing throws but where noted, and `std::bad_alloc`.
namespace zr {

/// Red, green and blue from 0 to 255, alpha from 0 to 1.
[[nodiscard]] ZR_EXPORT Ref<NSColor> ZRRGBA(double red, double green, double blue, double alpha);
/// The same, opaque.
[[nodiscard]] ZR_EXPORT Ref<NSColor> ZRRGB(double red, double green, double blue);
/// See `colorWithHex`.
[[nodiscard]] ZR_EXPORT Ref<NSColor> ZRHexColor(std::uint32_t hex);

// NSColor(ZRXHelper)

namespace detail {

[[nodiscard]] ZR_EXPORT Ref<NSColor> randomColor();
[[nodiscard]] ZR_EXPORT Ref<NSColor> colorWithHex(std::uint32_t hex);
[[nodiscard]] ZR_EXPORT Ref<NSColor> colorWithHexAndAlpha(std::uint32_t hex, double alpha);
[[nodiscard]] ZR_EXPORT Ref<NSColor> colorWithHexString(NSString* string);

} // namespace detail

/// An opaque colour, each of the 256 steps of each component as likely as the others: `random<NSColor>()`.
template <std::derived_from<NSColor> Receiver>
[[nodiscard]] Ref<NSColor> random() {
    return detail::randomColor();
}

/// The colour 0xRRGGBB or, when the number is above 0xFFFFFF, 0xAARRGGBB.
template <std::derived_from<NSColor> Receiver = NSColor>
[[nodiscard]] Ref<NSColor> colorWithHex(std::uint32_t hex) {
    return detail::colorWithHex(hex);
}

/// The colour of the number with `alpha`, from 0 to 1, in place of its own. An alpha of exactly 1 leaves the number's
/// own alpha in force: 0x80FF0000 with 1 is half transparent.
template <std::derived_from<NSColor> Receiver = NSColor>
[[nodiscard]] Ref<NSColor> colorWithHex_alpha(std::uint32_t hex, double alpha) {
    return detail::colorWithHexAndAlpha(hex, alpha);
}

/// The colour of the first six to eight hexadecimal digits in `string` that stand behind "0x", "0X" or "#", or at the
/// very beginning. Null when there are none, and for null.
///
/// Takes as many digits as it can, up to eight, and ignores what follows. Beyond six they are alpha and colour; of
/// seven the first alone is the alpha, so "#1234567" has the alpha 1/255 and the colour 0x234567.
template <std::derived_from<NSColor> Receiver = NSColor>
[[nodiscard]] Ref<NSColor> colorWithHexString(NSString* string) {
    return detail::colorWithHexString(string);
}

/// "0xrrggbb" or, unless the alpha is exactly 1, "0xaarrggbb", in lower case.
///
/// Each part times 255 is cut off, not rounded: alpha 0.5 is "7f". A part beyond 0 to 1 takes as many digits as its
/// number needs, 16 for a negative one, so that the text reads as no colour or another one. Raises
/// `NSInvalidArgumentException` for a colour whose space has no red, green and blue; black and white are such.
[[nodiscard]] ZR_EXPORT Ref<NSString> hexStringValue(NSColor* self);

// NSString(NSColor)

/// A colour text without its alpha: "#80FF0000" gives "#FF0000".
///
/// Of a text that begins with "#" or "0x", in this spelling, what stands between that and the last six code units is
/// taken out, whatever it is. Any other text, and one of fewer than seven code units, comes back itself.
[[nodiscard]] ZR_EXPORT Ref<NSString> colorStringWithOutAlpha(NSString* self);

/// The alpha of a colour text, from 0 to 255: 128 for "#80FF0000". 255 unless exactly eight code units follow "#",
/// "0x" or neither; 0 when these are no digits.
[[nodiscard]] ZR_EXPORT double colorAlpha(NSString* self);

/// A colour text with an alpha of `percent`, from 0 to 100: "#FF0000" with 50 gives "#7fFF0000".
///
/// The alpha, times 255 and cut off, goes in before the last six code units, whatever the text is. Comes back itself: a
/// text of nine code units that begins with "#", one of ten that begins with "0x", as they have an alpha, and one of
/// fewer than six. A percentage beyond 0 to 100 takes as many digits as it needs; one that is not a number is 0.
[[nodiscard]] ZR_EXPORT Ref<NSString> colorStringAppendAlpha(NSString* self, double percent);

} // namespace zr
