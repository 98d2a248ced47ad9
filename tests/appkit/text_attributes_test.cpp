#include <zrbasic/platform/appkit/text_attributes.h>

#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

TEST(TextAttributeNames, areThePlatformsOwn) {
    EXPECT_EQ(NSFontAttributeName()->view(), u"NSFont");
    EXPECT_EQ(NSForegroundColorAttributeName()->view(), u"NSColor");
    EXPECT_EQ(NSLinkAttributeName()->view(), u"NSLink");
    EXPECT_EQ(NSAttachmentAttributeName()->view(), u"NSAttachment");
    EXPECT_EQ(NSParagraphStyleAttributeName()->view(), u"NSParagraphStyle");
    EXPECT_EQ(NSUnderlineStyleAttributeName()->view(), u"NSUnderline");
}

TEST(TextAttributeNames, areTheSameObjectEveryTime) {
    EXPECT_EQ(NSFontAttributeName().get(), NSFontAttributeName().get());
    EXPECT_EQ(NSLinkAttributeName().get(), NSLinkAttributeName().get());
}

} // namespace
} // namespace zr
