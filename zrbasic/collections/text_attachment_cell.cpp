#include <zrbasic/collections/text_attachment_cell.h>

namespace zr {

ZRTextAttachmentCell::ZRTextAttachmentCell() = default;
ZRTextAttachmentCell::~ZRTextAttachmentCell() = default;

id ZRTextAttachmentCell::initImageCell(NSImage* image) {
    return initImageCell_offset(image, NSZeroPoint);
}

id ZRTextAttachmentCell::initImageCell_offset(NSImage* image, NSPoint offset) {
    const id self = NSTextAttachmentCell::initImageCell(image);
    setOffset(offset);
    return self;
}

NSPoint ZRTextAttachmentCell::cellBaselineOffset() const {
    return offset();
}

} // namespace zr
