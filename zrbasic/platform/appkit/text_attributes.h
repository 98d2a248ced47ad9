#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>
#include <zrbasic/platform/runtime/types.h>

/// The names of the attributes that text views understand. Each is the same constant string every time.
namespace zr {

class NSString;

/// The font, an `NSFont`: "NSFont".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSFontAttributeName();
/// The text's colour, an `NSColor`: "NSColor".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSForegroundColorAttributeName();
/// Where a click leads, an `NSURL` or a string: "NSLink".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSLinkAttributeName();
/// What stands in place of the character U+FFFC, an `NSTextAttachment`: "NSAttachment".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSAttachmentAttributeName();
/// Alignment and spacing, an `NSParagraphStyle`: "NSParagraphStyle".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSParagraphStyleAttributeName();
/// A number, one of `NSUnderlineStyle`: "NSUnderline".
[[nodiscard]] ZR_EXPORT Ref<NSString> NSUnderlineStyleAttributeName();

/// How text is underlined.
enum NSUnderlineStyle : NSInteger {
    NSUnderlineStyleNone = 0,
    NSUnderlineStyleSingle = 1,
};

} // namespace zr
