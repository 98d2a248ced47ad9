#include <zrbasic/collections/rich_text.h>

#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/text_attachment.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

namespace {

Ref<NSAttributedString> attachedImage(NSImage* image, NSUInteger index, ZRXImageOffsetCreator imageOffset) {
    const auto offset = [&] { return imageOffset ? imageOffset(image, index) : NSZeroPoint; };
    // Images know how to become text, but that is the business of a folder above this one.
    return send<Ref<NSAttributedString>>(image, "attributeStringWithOffsetCreator:"_sel,
                                         FunctionRef<NSPoint()>(offset));
}

/// Null for a piece that is to be skipped.
Ref<NSAttributedString> joinable(NSObject* piece, NSUInteger index, ZRXImageOffsetCreator imageOffset) {
    if (auto* const image = cast<NSImage>(piece)) {
        return attachedImage(image, index, imageOffset);
    }
    if (auto* const styled = cast<NSAttributedString>(piece)) {
        return styled;
    }
    if (auto* const attachment = cast<NSTextAttachment>(piece)) {
        return attributedStringWithAttachment(attachment);
    }
    return nullptr;
}

} // namespace

ZR_GROUP(NSAttributedString, ZRXHelper) {
    is.classMethod<&attributedStringWithSource_imageOffsetCreator_attributes>(
        "attributedStringWithSource:imageOffsetCreator:attributes:");
    is.classMethod<&attributedStringWithSource>("attributedStringWithSource:");
    is.classMethod<&attributedStringWithSource_imageOffsetCreator>("attributedStringWithSource:imageOffsetCreator:");
    is.classMethod<&attributedStringWithSource_attributes>("attributedStringWithSource:attributes:");
    is.classMethod<&attributeStringWithSource_imageOffsetCreator_attributes>(
        "attributeStringWithSource:imageOffsetCreator:attributes:");
    is.classMethod<&attributeStringWithSource>("attributeStringWithSource:");
    is.classMethod<&attributeStringWithSource_imageOffsetCreator>("attributeStringWithSource:imageOffsetCreator:");
    is.classMethod<&attributeStringWithSource_attributes>("attributeStringWithSource:attributes:");
}

Ref<NSMutableAttributedString> attributedStringWithSource_imageOffsetCreator_attributes(
    NSObject* source, ZRXImageOffsetCreator imageOffset, NSDictionary* attributes) {
    const Ref<NSMutableAttributedString> result = make<NSMutableAttributedString>();
    // Kept, and counted anew each time, as callbacks may change the array or let go of it.
    const Ref<NSArray> pieces(cast<NSArray>(source));
    for (NSUInteger index = 0; pieces && index < pieces->count(); ++index) {
        const id piece = pieces->objectAtIndex(index);
        if (const auto* const plain = cast<NSString>(piece)) {
            result->append(plain->view(), nullptr);
        } else if (const Ref<NSAttributedString> styled = joinable(piece, index, imageOffset)) {
            result->appendAttributedString(styled);
        }
    }
    if (result->length() == 0) {
        return nullptr;
    }
    result->addAttributes_range(attributes, {0, result->length()});
    return result;
}

Ref<NSMutableAttributedString> attributedStringWithSource(NSObject* source) {
    return attributedStringWithSource_imageOffsetCreator_attributes(source, nullptr, nullptr);
}

Ref<NSMutableAttributedString> attributedStringWithSource_imageOffsetCreator(NSObject* source,
                                                                             ZRXImageOffsetCreator imageOffset) {
    return attributedStringWithSource_imageOffsetCreator_attributes(source, imageOffset, nullptr);
}

Ref<NSMutableAttributedString> attributedStringWithSource_attributes(NSObject* source, NSDictionary* attributes) {
    return attributedStringWithSource_imageOffsetCreator_attributes(source, nullptr, attributes);
}

Ref<NSMutableAttributedString> attributeStringWithSource_imageOffsetCreator_attributes(
    NSObject* source, ZRXImageOffsetCreator imageOffset, NSDictionary* attributes) {
    return attributedStringWithSource_imageOffsetCreator_attributes(source, imageOffset, attributes);
}

Ref<NSMutableAttributedString> attributeStringWithSource(NSObject* source) {
    return attributedStringWithSource_imageOffsetCreator_attributes(source, nullptr, nullptr);
}

Ref<NSMutableAttributedString> attributeStringWithSource_imageOffsetCreator(NSObject* source,
                                                                            ZRXImageOffsetCreator imageOffset) {
    return attributedStringWithSource_imageOffsetCreator_attributes(source, imageOffset, nullptr);
}

Ref<NSMutableAttributedString> attributeStringWithSource_attributes(NSObject* source, NSDictionary* attributes) {
    return attributedStringWithSource_imageOffsetCreator_attributes(source, nullptr, attributes);
}

} // namespace zr
