#pragma once

#include <zrbasic/platform/runtime/export.h>

/// Attributes over a whole text, or over the first place of a word in it.
///
/// A null receiver does nothing. As thread-bound as the receiver.
namespace zr {

class NSColor;
class NSDictionary;
class NSFont;
class NSMutableAttributedString;
class NSObject;
class NSString;

// NSMutableAttributedString(ZRXHelper)

/// Adds the attributes to every character, over older ones of the same names; null adds nothing.
ZR_EXPORT void addAttributes(NSMutableAttributedString* self, NSDictionary* attributes);
/// The same for one attribute. Raises `NSInvalidArgumentException` for a null name or value.
ZR_EXPORT void addAttribute_value(NSMutableAttributedString* self, NSString* name, NSObject* value);

/// Adds the attribute where `subString` stands for the first time, found as a person searches: without regard to case
/// and diacritical marks. Does nothing when it does not occur, is empty, or any argument is null; nothing raises.
ZR_EXPORT void addAttribute_value_ofSubString(NSMutableAttributedString* self, NSString* name, NSObject* value,
                                              NSString* subString);
/// The same for the text's colour.
ZR_EXPORT void addTextColor_ofSubString(NSMutableAttributedString* self, NSColor* color, NSString* subString);
/// The same for the font.
ZR_EXPORT void addTextFont_ofSubString(NSMutableAttributedString* self, NSFont* font, NSString* subString);

} // namespace zr
