#include <zrbasic/ui/image_attachment.h>

#include <zrbasic/collections/text_attachment_cell.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_GROUP(NSImage, ZRXHelper) {
    is.method<&textAttachment>("textAttachment");
    is.method<&textAttachmentWithOffsetCreator>("textAttachmentWithOffsetCreator:");
    is.method<&attributeString>("attributeString");
    is.method<&attributeStringWithOffsetCreator>("attributeStringWithOffsetCreator:");
}

Ref<NSTextAttachment> textAttachment(NSImage* self) {
    return textAttachmentWithOffsetCreator(self, nullptr);
}

Ref<NSTextAttachment> textAttachmentWithOffsetCreator(NSImage* self, ZRXOffsetCreator offset) {
    if (!self) {
        return nullptr;
    }
    const Ref<NSTextAttachment> attachment =
        make<NSTextAttachment>(&NSTextAttachment::initWithData_ofType, nullptr, nullptr);
    attachment->setAttachmentCell(
        make<ZRTextAttachmentCell>(&ZRTextAttachmentCell::initImageCell_offset, self, offset ? offset() : NSZeroPoint));
    return attachment;
}

Ref<NSAttributedString> attributeString(NSImage* self) {
    return attributeStringWithOffsetCreator(self, nullptr);
}

Ref<NSAttributedString> attributeStringWithOffsetCreator(NSImage* self, ZRXOffsetCreator offset) {
    return self ? attributedStringWithAttachment(textAttachmentWithOffsetCreator(self, offset)) : nullptr;
}

} // namespace zr
