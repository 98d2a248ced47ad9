#include <zrbasic/core/color.h>

#include <zrbasic/platform/foundation/random.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/runtime/value.h>

#include <algorithm>
#include <string_view>

namespace zr {

namespace {

constexpr std::size_t fewestDigits = 6;
constexpr std::size_t mostDigits = 8;
constexpr std::uint32_t withoutAlpha = 0xFFFFFF;

constexpr bool isHexDigit(char16_t unit) {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

/// The digits at the beginning of `text`, of which at most eight are asked for.
std::u16string_view leadingDigits(std::u16string_view text) {
    const auto candidates = text.substr(0, mostDigits);
    const auto end = std::find_if_not(candidates.begin(), candidates.end(), isHexDigit);
    return candidates.substr(0, static_cast<std::size_t>(end - candidates.begin()));
}

std::uint32_t numberOf(std::u16string_view digits) {
    std::uint32_t number = 0;
    for (const char16_t digit : digits) {
        const std::uint32_t value = digit <= u'9' ? digit - u'0' : (digit | 0x20) - u'a' + 10;
        number = number << 4 | value;
    }
    return number;
}

/// Whether a colour's digits may begin at `position`: a search for the pattern
/// `((?<=0[xX])[0-9a-fA-F]{6,8})|((?<=#)[0-9a-fA-F]{6,8})|(^[0-9a-fA-F]{6,8})` stops at the same places.
bool mayBeginAt(std::u16string_view text, std::size_t position) {
    if (position == 0 || text[position - 1] == u'#') {
        return true;
    }
    return position >= 2 && text[position - 2] == u'0' && (text[position - 1] | 0x20) == u'x';
}

std::u16string_view colorDigits(std::u16string_view text) {
    for (std::size_t position = 0; position + fewestDigits <= text.size(); ++position) {
        if (mayBeginAt(text, position)) {
            const std::u16string_view digits = leadingDigits(text.substr(position));
            if (digits.size() >= fewestDigits) {
                return digits;
            }
        }
    }
    return {};
}

/// Cut off towards zero; what no integer can hold becomes the nearest one, and 0 for what is not a number.
std::int64_t truncated(double number) {
    return Value(number).to<std::int64_t>();
}

} // namespace

ZR_GROUP(NSColor, ZRXHelper) {
    is.classMethod<&detail::randomColor>("random");
    is.classMethod<&detail::colorWithHex>("colorWithHex:");
    is.classMethod<&detail::colorWithHexAndAlpha>("colorWithHex:alpha:");
    is.classMethod<&detail::colorWithHexString>("colorWithHexString:");
    is.method<&hexStringValue>("hexStringValue");
}

ZR_GROUP(NSString, NSColor) {
    is.method<&colorStringWithOutAlpha>("colorStringWithOutAlpha");
    is.method<&colorAlpha>("colorAlpha");
    is.method<&colorStringAppendAlpha>("colorStringAppendAlpha:");
}

Ref<NSColor> ZRRGBA(double red, double green, double blue, double alpha) {
    return NSColor::colorWithRed_green_blue_alpha(red / 255.0, green / 255.0, blue / 255.0, alpha);
}

Ref<NSColor> ZRRGB(double red, double green, double blue) {
    return ZRRGBA(red, green, blue, 1.0);
}

Ref<NSColor> ZRHexColor(std::uint32_t hex) {
    return detail::colorWithHex(hex);
}

namespace detail {

Ref<NSColor> randomColor() {
    const std::uint32_t red = arc4random_uniform(256);
    const std::uint32_t green = arc4random_uniform(256);
    const std::uint32_t blue = arc4random_uniform(256);
    return ZRRGB(red, green, blue);
}

Ref<NSColor> colorWithHex(std::uint32_t hex) {
    const double alpha = hex > withoutAlpha ? (hex >> 24) / 255.0 : 1.0;
    return ZRRGBA(hex >> 16 & 0xFF, hex >> 8 & 0xFF, hex & 0xFF, alpha);
}

Ref<NSColor> colorWithHexAndAlpha(std::uint32_t hex, double alpha) {
    const Ref<NSColor> color = colorWithHex(hex);
    return alpha == 1.0 ? color : color->colorWithAlphaComponent(alpha);
}

Ref<NSColor> colorWithHexString(NSString* string) {
    if (!string) {
        return nullptr;
    }
    const std::u16string_view digits = colorDigits(string->view());
    if (digits.empty()) {
        return nullptr;
    }
    const std::uint32_t number = numberOf(digits);
    if (digits.size() == fewestDigits) {
        return colorWithHex(number);
    }
    return colorWithHexAndAlpha(number & withoutAlpha, (number >> 24) / 255.0);
}

} // namespace detail

Ref<NSString> hexStringValue(NSColor* self) {
    if (!self) {
        return nullptr;
    }
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;
    self->getRed_green_blue_alpha(&red, &green, &blue, &alpha);
    const Ref<NSString> color = NSString::stringWithFormat("%02lx%02lx%02lx"_ns, truncated(red * 255.0),
                                                           truncated(green * 255.0), truncated(blue * 255.0));
    if (alpha == 1.0) {
        return NSString::stringWithFormat("0x%@"_ns, color);
    }
    return NSString::stringWithFormat("0x%02lx%@"_ns, truncated(alpha * 255.0), color);
}

Ref<NSString> colorStringWithOutAlpha(NSString* self) {
    constexpr std::size_t shortest = 7;
    if (!self || self->length() < shortest) {
        return Ref<NSString>(self);
    }
    const std::u16string_view text = self->view();
    const std::u16string_view color = text.substr(text.size() - fewestDigits);
    if (text.starts_with(u"0x")) {
        return NSString::fromUtf16(std::u16string(u"0x").append(color));
    }
    if (text.starts_with(u'#')) {
        return NSString::fromUtf16(std::u16string(u"#").append(color));
    }
    return Ref<NSString>(self);
}

double colorAlpha(NSString* self) {
    if (!self) {
        return 0;
    }
    std::u16string_view text = self->view();
    if (text.starts_with(u"0x")) {
        text.remove_prefix(2);
    } else if (text.starts_with(u'#')) {
        text.remove_prefix(1);
    }
    if (text.size() != mostDigits) {
        return 255;
    }
    // The number may stand behind blanks, as in every scan. Another "0x" before it needs no care: what is left of the
    // eight is then too short to reach the alpha, just as the lone zero is.
    const auto first = std::find_if_not(text.begin(), text.end(), detail::isWhitespaceOrNewline);
    text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
    return numberOf(leadingDigits(text)) >> 24;
}

Ref<NSString> colorStringAppendAlpha(NSString* self, double percent) {
    if (!self || self->length() < fewestDigits) {
        return Ref<NSString>(self);
    }
    const std::u16string_view text = self->view();
    const bool hasAlpha =
        (text.starts_with(u"0x") && text.size() == 10) || (text.starts_with(u'#') && text.size() == 9);
    if (hasAlpha) {
        return Ref<NSString>(self);
    }
    const Ref<NSString> alpha = NSString::stringWithFormat("%02lx"_ns, truncated(percent * 255.0 / 100.0));
    std::u16string result(text);
    result.insert(text.size() - fewestDigits, alpha->view());
    return NSString::fromUtf16(std::move(result));
}

} // namespace zr
