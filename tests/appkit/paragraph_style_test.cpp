#include <zrbasic/platform/appkit/paragraph_style.h>

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

Ref<NSMutableParagraphStyle> style(double spacing, NSTextAlignment alignment, NSLineBreakMode mode) {
    const Ref<NSMutableParagraphStyle> made = make<NSMutableParagraphStyle>();
    made->setLineSpacing(spacing);
    made->setAlignment(alignment);
    made->setLineBreakMode(mode);
    return made;
}

TEST(ParagraphStyle, isNaturalAtFirst) {
    const Ref<NSParagraphStyle> plain = NSParagraphStyle::defaultParagraphStyle();
    EXPECT_EQ(plain->lineSpacing(), 0);
    EXPECT_EQ(plain->alignment(), NSTextAlignmentNatural);
    EXPECT_EQ(plain->lineBreakMode(), NSLineBreakByWordWrapping);
    EXPECT_EQ(NSParagraphStyle::defaultParagraphStyle().get(), plain.get());
    EXPECT_TRUE(plain->isEqual(make<NSMutableParagraphStyle>()));
}

TEST(ParagraphStyle, keepsWhatIsSet) {
    const Ref<NSMutableParagraphStyle> made = style(4.5, NSTextAlignmentCenter, NSLineBreakByTruncatingTail);
    EXPECT_EQ(made->lineSpacing(), 4.5);
    EXPECT_EQ(made->alignment(), NSTextAlignmentCenter);
    EXPECT_EQ(made->lineBreakMode(), NSLineBreakByTruncatingTail);
    made->setLineSpacing(-1);
    EXPECT_EQ(made->lineSpacing(), -1);
    made->setParagraphStyle(NSParagraphStyle::defaultParagraphStyle());
    EXPECT_TRUE(made->isEqual(NSParagraphStyle::defaultParagraphStyle()));
    made->setAlignment(NSTextAlignmentRight);
    made->setParagraphStyle(nullptr);
    EXPECT_EQ(made->alignment(), NSTextAlignmentRight);
}

TEST(ParagraphStyle, isEqualBySettings) {
    const Ref<NSParagraphStyle> one = style(1, NSTextAlignmentLeft, NSLineBreakByClipping);
    EXPECT_TRUE(one->isEqual(style(1, NSTextAlignmentLeft, NSLineBreakByClipping)));
    EXPECT_EQ(one->hash(), style(1, NSTextAlignmentLeft, NSLineBreakByClipping)->hash());
    EXPECT_EQ(style(0.0, NSTextAlignmentLeft, NSLineBreakByClipping)->hash(),
              style(-0.0, NSTextAlignmentLeft, NSLineBreakByClipping)->hash());
    EXPECT_FALSE(one->isEqual(style(2, NSTextAlignmentLeft, NSLineBreakByClipping)));
    EXPECT_FALSE(one->isEqual(style(1, NSTextAlignmentRight, NSLineBreakByClipping)));
    EXPECT_FALSE(one->isEqual(style(1, NSTextAlignmentLeft, NSLineBreakByCharWrapping)));
    EXPECT_FALSE(one->isEqual(nullptr));
    EXPECT_FALSE(one->isEqual(NSNull::null()));
}

TEST(ParagraphStyle, copiesDoNotFollow) {
    const Ref<NSMutableParagraphStyle> made = style(1, NSTextAlignmentLeft, NSLineBreakByClipping);
    const id copy = made->copy();
    const id another = made->mutableCopy();
    made->setLineSpacing(9);
    EXPECT_EQ(cast<NSParagraphStyle>(copy)->lineSpacing(), 1);
    EXPECT_FALSE(cast<NSMutableParagraphStyle>(copy));
    EXPECT_EQ(copy->copy().get(), copy.get());
    ASSERT_TRUE(cast<NSMutableParagraphStyle>(another));
    EXPECT_TRUE(another->isEqual(copy));
}

TEST(ParagraphStyle, answersByName) {
    const id made = make<NSMutableParagraphStyle>();
    send<void>(made, "setLineSpacing:"_sel, 2.5);
    send<void>(made, "setAlignment:"_sel, NSTextAlignmentJustified);
    send<void>(made, "setLineBreakMode:"_sel, NSLineBreakByTruncatingHead);
    EXPECT_EQ(send<double>(made, "lineSpacing"_sel), 2.5);
    EXPECT_EQ(send<NSInteger>(made, "alignment"_sel), NSTextAlignmentJustified);
    EXPECT_EQ(send<NSUInteger>(made, "lineBreakMode"_sel), NSLineBreakByTruncatingHead);
    send<void>(made, "setParagraphStyle:"_sel, "text"_ns);
    EXPECT_EQ(send<double>(made, "lineSpacing"_sel), 2.5) << "of another kind: read as null";
}

} // namespace
} // namespace zr
