#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <cstdint>
#include <string>
#include <string_view>

/// How numbers are written and how text reads as a number, the same in every locale.
///
/// These are the rules behind the description of an `NSNumber`, the format "%f" and the conversions of an `NSString`;
/// use `decimalFromText` where every digit counts. All functions may be called from any thread, and only those that
/// return a string can throw (`std::bad_alloc`).
namespace zr {

/// The shortest text that reads back as `value`: "1.5", "100", "1e-05", "1e+16", "0.30000000000000004".
///
/// An exponent of at least two digits is used below 1e-4 and from 1e16 on. Also "nan", "inf", "-inf" and "-0"; a NaN
/// has no sign.
[[nodiscard]] ZR_EXPORT std::string textOfDouble(double value);
/// As for a double, with the digits that tell the float from its neighbours: 0.1f is "0.1".
[[nodiscard]] ZR_EXPORT std::string textOfFloat(float value);

/// Plain digits with six decimals, rounded from the exact value as by "%f": 1.23456789 is "1.234568".
///
/// Never an exponent, however large the value is. Also "nan", "inf", "-inf"; a NaN has no sign.
[[nodiscard]] ZR_EXPORT std::string textWithSixDecimals(double value);

/// The whole number at the start of `text`, clamped to the range; 0 when there is none.
///
/// Blanks and tabs (not line breaks), one sign and more blanks may come before the ASCII digits; what follows them is
/// ignored, so "1.5", "1e3" and "1,234" are all 1.
[[nodiscard]] ZR_EXPORT std::int64_t integerValueOfText(std::u16string_view text) noexcept;
/// As `integerValueOfText`, clamped to 32 bits.
[[nodiscard]] ZR_EXPORT std::int32_t intValueOfText(std::u16string_view text) noexcept;
/// The same as `integerValueOfText`.
[[nodiscard]] ZR_EXPORT std::int64_t longLongValueOfText(std::u16string_view text) noexcept;

/// The number at the start of `text`, with fraction and exponent; 0 when there is none.
///
/// The beginning is as for whole numbers. Too large a value is infinite, too small a one is zero, both with their
/// sign; "inf", "nan" and "0x10" are 0.
[[nodiscard]] ZR_EXPORT double doubleValueOfText(std::u16string_view text) noexcept;
/// As `doubleValueOfText`, with the nearest float.
[[nodiscard]] ZR_EXPORT float floatValueOfText(std::u16string_view text) noexcept;

/// True when, behind blanks, `text` begins with Y, y, T or t, or with a number whose first digit other than 0 comes
/// before anything but a sign and blanks: "yes", "true", "1", "-0012", but not "0.5", "no" or "+t".
[[nodiscard]] ZR_EXPORT bool boolValueOfText(std::u16string_view text) noexcept;

} // namespace zr
