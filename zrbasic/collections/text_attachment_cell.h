#pragma once

#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/text_attachment.h>

namespace zr {

/// An image on the text line that the caller has moved up, down or aside. Used on one thread at a time.
class ZR_EXPORT ZRTextAttachmentCell : public NSTextAttachmentCell {
    ZR_OBJECT(ZRTextAttachmentCell, NSTextAttachmentCell)

  public:
    ZRTextAttachmentCell();
    ~ZRTextAttachmentCell() override;

    /// Keeps the image, which may be null, with an offset of zero.
    id initImageCell(NSImage* image) override;
    id initImageCell_offset(NSImage* image, NSPoint offset);
    ZR_METHOD(initImageCell_offset, "initImageCell:offset:")

    /// How far right and up from the baseline the image stands, in points; zero at first, and kept exactly as set.
    ZR_PROPERTY(NSPoint, offset, setOffset)

    /// The offset: this is what a text view asks for.
    [[nodiscard]] NSPoint cellBaselineOffset() const override;
};

} // namespace zr
