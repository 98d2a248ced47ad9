#include <zrbasic/ui/image_attachment.h>

#include "../foundation/checks.h"

#include <zrbasic/collections/text_attachment_cell.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <functional>

namespace zr {
namespace {

using test::raisedName;

Ref<NSImage> image() {
    return make<NSImage>(&NSImage::initWithSize, NSMakeSize(16, 12));
}

Ref<ZRTextAttachmentCell> cellOf(NSTextAttachment* attachment) {
    return cast<ZRTextAttachmentCell>(attachment->attachmentCell());
}

TEST(ImageAttachment, carriesTheImageInACellThatMoves) {
    const Ref<NSImage> shown = image();
    const Ref<NSTextAttachment> attachment = textAttachment(shown);
    EXPECT_FALSE(attachment->contents());
    EXPECT_FALSE(attachment->fileType());
    const Ref<ZRTextAttachmentCell> cell = cellOf(attachment);
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->image().get(), shown.get());
    EXPECT_EQ(cell->offset(), NSZeroPoint);
    EXPECT_NE(textAttachment(shown).get(), attachment.get()) << "a new one every time";
}

TEST(ImageAttachment, asksForTheOffsetOnceAndAtOnce) {
    int calls = 0;
    const auto offset = [&calls] {
        ++calls;
        return NSMakePoint(1, -2);
    };
    const Ref<NSTextAttachment> attachment = textAttachmentWithOffsetCreator(image(), offset);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(cellOf(attachment)->cellBaselineOffset(), NSMakePoint(1, -2));
    EXPECT_EQ(cellOf(attachment)->cellBaselineOffset(), NSMakePoint(1, -2));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(cellOf(textAttachmentWithOffsetCreator(image(), nullptr))->offset(), NSZeroPoint);
    EXPECT_EQ(cellOf(textAttachmentWithOffsetCreator(image(), std::function<NSPoint()>()))->offset(), NSZeroPoint);
}

TEST(ImageAttachment, becomesATextOfOneCharacter) {
    const Ref<NSAttributedString> text = attributeStringWithOffsetCreator(image(), [] { return NSMakePoint(3, 4); });
    EXPECT_EQ(text->string()->view(), u"\uFFFC");
    const id value = text->attribute_atIndex_effectiveRange(NSAttachmentAttributeName(), 0, nullptr);
    ASSERT_TRUE(cast<NSTextAttachment>(value));
    EXPECT_EQ(cellOf(cast<NSTextAttachment>(value))->offset(), NSMakePoint(3, 4));
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(0, nullptr)->count(), 1U);
    EXPECT_EQ(attributeString(image())->length(), 1U);
}

TEST(ImageAttachment, ofANullImageIsNullAndAsksNothing) {
    int calls = 0;
    const auto offset = [&calls] {
        ++calls;
        return NSZeroPoint;
    };
    EXPECT_FALSE(textAttachment(nullptr));
    EXPECT_FALSE(textAttachmentWithOffsetCreator(nullptr, offset));
    EXPECT_FALSE(attributeString(nullptr));
    EXPECT_FALSE(attributeStringWithOffsetCreator(nullptr, offset));
    EXPECT_EQ(calls, 0);
}

TEST(ImageAttachment, letsTheCallbacksExceptionPass) {
    EXPECT_EQ(raisedName([] {
                  (void)textAttachmentWithOffsetCreator(
                      image(), []() -> NSPoint { NSException::raise(NSGenericException, "no offset today"); });
              }),
              NSGenericException);
}

TEST(ImageAttachment, answersByName) {
    const id shown = image();
    EXPECT_TRUE(send<Ref<NSTextAttachment>>(shown, "textAttachment"_sel));
    EXPECT_EQ(send<Ref<NSAttributedString>>(shown, "attributeString"_sel)->length(), 1U);
    const auto offset = [] { return NSMakePoint(5, 6); };
    const Ref<NSTextAttachment> attachment =
        send<Ref<NSTextAttachment>>(shown, "textAttachmentWithOffsetCreator:"_sel, ZRXOffsetCreator(offset));
    EXPECT_EQ(cellOf(attachment)->offset(), NSMakePoint(5, 6));
    EXPECT_EQ(
        send<Ref<NSAttributedString>>(shown, "attributeStringWithOffsetCreator:"_sel, ZRXOffsetCreator())->length(),
        1U);
}

} // namespace
} // namespace zr
