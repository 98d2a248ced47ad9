#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/object.h>

/// Whether a text is what an account screen asks for. For a pattern of your own, use `isLegalObjectWithPattern`.
///
/// Always the whole receiver counts, blanks and line breaks at its ends included, and letter case matters. Word
/// characters are letters, marks, digits and connectors such as "_", of any script. Any length is judged in time that
/// grows with the length alone, whatever the text. False for null, the null object and anything but a string. May be
/// used from any thread; nothing throws but `std::bad_alloc`.
namespace zr {

// NSString(ZRXHelper)

/// An optional "http://" or "https://", then two or more labels with dots between them, then an optional path.
///
/// Labels are word characters and dashes. A path begins with "/" and goes on with word characters, "-", ".", "/", "?",
/// "%", "&", "=" and the no-break space U+00A0; an ordinary space is refused, and so is a port.
[[nodiscard]] ZR_EXPORT bool isLegalURLString(NSObject* self);

/// A mobile number: eleven ASCII digits, the first a 1.
[[nodiscard]] ZR_EXPORT bool isLegalPhoneNumber(NSObject* self);

/// An e-mail address: parts with dots between them, "@", and two or more labels with dots between them.
///
/// The parts are word characters and any of ``!#$%&'*+/=?^_`{|}~-`` in any order; a label is word characters, and
/// dashes inside.
[[nodiscard]] ZR_EXPORT bool isLegalEmailAddress(NSObject* self);

/// 8 to 24 printable ASCII characters, no space, of at least two of the three kinds digit, letter and symbol.
[[nodiscard]] ZR_EXPORT bool isLegalPassword(NSObject* self);

/// Nothing but printable ASCII characters without the space; true for the empty string.
[[nodiscard]] ZR_EXPORT bool isLegalCommonEnglishCharacters(NSObject* self);

/// An optional sign, ASCII digits, an optional "." or apostrophe with the digits of the fraction, an optional "%".
///
/// No digit is needed: the empty string is legal, and so is "+".
[[nodiscard]] ZR_EXPORT bool isLegalFuturesPrice(NSObject* self);

/// One or more decimal digits of any script.
[[nodiscard]] ZR_EXPORT bool isPureNumberString(NSObject* self);

/// 14 or 17 decimal digits of any script, and one more or "x" or "X". No checksum is computed.
[[nodiscard]] ZR_EXPORT bool isLegalIdCardNumber(NSObject* self);

} // namespace zr
