#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/ref.h>
#include <zrbasic/platform/runtime/types.h>

/// Strings, images and attributed strings joined into one text, for labels that mix them.
///
/// The source is an array; a string becomes text without attributes, an image (`NSImage`) or a text attachment one
/// character, and an attributed string comes in with its own attributes. Pieces of any other kind are skipped, and a
/// source that is no array counts as empty. When nothing was joined the result is null.
///
/// Nothing raises for a wrong source or piece; what a callback raises passes through. An image is asked for its
/// attachment by name, `attributeStringWithOffsetCreator:`, so that a class of images can answer in its own way. As
/// thread-bound as the images.
namespace zr {

class NSDictionary;
class NSImage;
class NSMutableAttributedString;
class NSObject;

/// Says how far right and up, in points, the image at that index of the source stands from the text's baseline.
using ZRXImageOffsetCreator = FunctionRef<NSPoint(NSImage* image, NSUInteger index)>;

// NSAttributedString(ZRXHelper)

/// Joins the source, then puts `attributes` over the whole, in place of the pieces' own ones of the same names.
///
/// The callback is called once an image, in order; without one no image is moved. Null attributes change nothing.
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> attributedStringWithSource_imageOffsetCreator_attributes(
    NSObject* source, ZRXImageOffsetCreator imageOffset, NSDictionary* attributes);
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> attributedStringWithSource(NSObject* source);
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> attributedStringWithSource_imageOffsetCreator(
    NSObject* source, ZRXImageOffsetCreator imageOffset);
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> attributedStringWithSource_attributes(NSObject* source,
                                                                                             NSDictionary* attributes);

// The same four without the d. Both spellings are part of the interface.

[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> attributeStringWithSource_imageOffsetCreator_attributes(
    NSObject* source, ZRXImageOffsetCreator imageOffset, NSDictionary* attributes);
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> attributeStringWithSource(NSObject* source);
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> attributeStringWithSource_imageOffsetCreator(
    NSObject* source, ZRXImageOffsetCreator imageOffset);
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> attributeStringWithSource_attributes(NSObject* source,
                                                                                            NSDictionary* attributes);

} // namespace zr
