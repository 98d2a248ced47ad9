#include <zrbasic/platform/appkit/text_attachment.h>

#include "../foundation/checks.h"

#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::raisedName;

TEST(TextAttachmentCell, isAsLargeAsItsImage) {
    const Ref<NSImage> image = make<NSImage>(&NSImage::initWithSize, NSMakeSize(16, 12));
    const Ref<NSTextAttachmentCell> cell = make<NSTextAttachmentCell>(&NSTextAttachmentCell::initImageCell, image);
    EXPECT_EQ(cell->image().get(), image.get());
    EXPECT_EQ(cell->cellSize(), NSMakeSize(16, 12));
    EXPECT_EQ(cell->cellBaselineOffset(), NSZeroPoint);
    image->setSize(NSMakeSize(20, 20));
    EXPECT_EQ(cell->cellSize(), NSMakeSize(20, 20)) << "the image is kept, not copied";
    cell->setImage(nullptr);
    EXPECT_FALSE(cell->image());
    EXPECT_EQ(cell->cellSize(), NSZeroSize);
    EXPECT_EQ(make<NSTextAttachmentCell>(&NSTextAttachmentCell::initImageCell, nullptr)->cellSize(), NSZeroSize);
}

TEST(TextAttachment, holdsContentsTypeAndCell) {
    const Ref<NSTextAttachment> empty =
        make<NSTextAttachment>(&NSTextAttachment::initWithData_ofType, nullptr, nullptr);
    EXPECT_FALSE(empty->contents());
    EXPECT_FALSE(empty->fileType());
    EXPECT_FALSE(empty->attachmentCell());
    const Ref<NSData> data = make<NSData>();
    const Ref<NSMutableString> type = NSMutableString::stringWithString("png"_ns);
    const Ref<NSTextAttachment> attachment = make<NSTextAttachment>(&NSTextAttachment::initWithData_ofType, data, type);
    type->appendString("x"_ns);
    EXPECT_EQ(attachment->contents().get(), data.get());
    EXPECT_EQ(attachment->fileType()->view(), u"png") << "copied";
    const Ref<NSTextAttachmentCell> cell = make<NSTextAttachmentCell>();
    attachment->setAttachmentCell(cell);
    EXPECT_EQ(attachment->attachmentCell().get(), cell.get());
    attachment->setAttachmentCell(nullptr);
    EXPECT_FALSE(attachment->attachmentCell());
    EXPECT_FALSE(attachment->isEqual(make<NSTextAttachment>()));
}

TEST(AttachmentText, isOneCharacterWithTheAttachment) {
    const Ref<NSTextAttachment> attachment = make<NSTextAttachment>();
    const Ref<NSAttributedString> text = attributedStringWithAttachment(attachment);
    EXPECT_EQ(text->string()->view(), u"\uFFFC");
    EXPECT_EQ(text->attribute_atIndex_effectiveRange(NSAttachmentAttributeName(), 0, nullptr).get(), attachment.get());
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(0, nullptr)->count(), 1U);
    const Ref<NSMutableAttributedString> joined =
        make<NSMutableAttributedString>(&NSAttributedString::initWithString, "a"_ns);
    joined->appendAttributedString(text);
    EXPECT_EQ(joined->string()->view(), u"a\uFFFC");
    EXPECT_EQ(joined->attribute_atIndex_effectiveRange(NSAttachmentAttributeName(), 1, nullptr).get(),
              attachment.get());
    EXPECT_EQ(raisedName([] { (void)attributedStringWithAttachment(nullptr); }), NSInvalidArgumentException);
}

TEST(AttachmentText, twoAttachmentsAreTwoRuns) {
    const Ref<NSMutableAttributedString> text = make<NSMutableAttributedString>();
    text->appendAttributedString(attributedStringWithAttachment(make<NSTextAttachment>()));
    text->appendAttributedString(attributedStringWithAttachment(make<NSTextAttachment>()));
    NSRange run;
    (void)text->attributesAtIndex_effectiveRange(1, &run);
    EXPECT_EQ(run, (NSRange{1, 1}));
}

TEST(AttachmentText, answersByName) {
    const Ref<NSTextAttachment> attachment = make<NSTextAttachment>();
    const id image = make<NSImage>();
    const id cell = send<id>(class_createInstance(NSTextAttachmentCell::classObject()), "initImageCell:"_sel, image);
    EXPECT_EQ(send<id>(cell, "image"_sel).get(), image.get());
    send<void>(attachment, "setAttachmentCell:"_sel, cell);
    EXPECT_EQ(send<id>(attachment, "attachmentCell"_sel).get(), cell.get());
    send<void>(attachment, "setAttachmentCell:"_sel, NSNull::null());
    EXPECT_FALSE(attachment->attachmentCell()) << "of another kind: read as null";
    send<void>(attachment, "setContents:"_sel, make<NSData>());
    EXPECT_TRUE(send<id>(attachment, "contents"_sel));
    EXPECT_EQ(send<Ref<NSAttributedString>>(NSAttributedString::classObject(), "attributedStringWithAttachment:"_sel,
                                            attachment)
                  ->length(),
              1U);
    EXPECT_EQ(raisedName([] {
                  send<id>(NSAttributedString::classObject(), "attributedStringWithAttachment:"_sel, "text"_ns);
              }),
              NSInvalidArgumentException);
}

} // namespace
} // namespace zr
