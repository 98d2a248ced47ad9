#include <zrbasic/collections/attribute_editing.h>

#include "../foundation/checks.h"
#include "../foundation/run_listing.h"

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::raisedName;
using test::runListing;

Ref<NSMutableAttributedString> changing(std::u16string_view text) {
    return make<NSMutableAttributedString>(&NSAttributedString::initWithString, NSString::fromUtf16(text));
}

TEST(AttributesOfTheWhole, areLaidOverWhatIsThere) {
    const Ref<NSMutableAttributedString> text = changing(u"abc");
    addAttribute_value(text, "A"_ns, box(1));
    EXPECT_EQ(runListing(text), "abc{A=1}");
    text->addAttribute_value_range("B"_ns, box(2), {1, 1});
    addAttributes(text, dictionary({{"A"_ns, box(3)}, {"C"_ns, NSNull::null()}}));
    EXPECT_EQ(runListing(text), "a{A=3 C=<null>}b{A=3 B=2 C=<null>}c{A=3 C=<null>}");
    addAttributes(text, nullptr);
    addAttributes(text, NSDictionary::dictionary());
    EXPECT_EQ(runListing(text), "a{A=3 C=<null>}b{A=3 B=2 C=<null>}c{A=3 C=<null>}");
}

TEST(AttributesOfTheWhole, ofAnEmptyTextAreNone) {
    const Ref<NSMutableAttributedString> text = make<NSMutableAttributedString>();
    addAttribute_value(text, "A"_ns, box(1));
    addAttributes(text, dictionary({{"A"_ns, box(1)}}));
    addAttribute_value_ofSubString(text, "A"_ns, box(1), "a"_ns);
    text->append(u"a", nullptr);
    EXPECT_EQ(runListing(text), "a{}");
}

TEST(AttributesOfTheWhole, raiseForANullNameOrValue) {
    const Ref<NSMutableAttributedString> text = changing(u"abc");
    EXPECT_EQ(raisedName([&] { addAttribute_value(text, nullptr, box(1)); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { addAttribute_value(text, "A"_ns, nullptr); }), NSInvalidArgumentException);
    addAttribute_value(nullptr, nullptr, nullptr);
    addAttributes(nullptr, nullptr);
    EXPECT_EQ(runListing(text), "abc{}");
}

TEST(AttributeOfASubString, goesToItsFirstPlaceAsAPersonSearches) {
    const struct {
        const char* what;
        std::u16string_view text;
        std::u16string_view sought;
        NSRange place;
    } rows[] = {
        {"another case", u"xABCx", u"abc", {1, 3}},
        {"the first of two", u"ab ab", u"ab", {0, 2}},
        {"without its accent", u"\u00E9a", u"E", {0, 1}},
        {"with an accent too many", u"e", u"\u00E9", {0, 1}},
        {"longer than sought", u"xa\u0301", u"a", {1, 2}},
        {"shorter than sought", u"stra\u00DFe", u"SS", {4, 1}},
        {"all", u"abc", u"ABC", {0, 3}},
        {"not there", u"abc", u"x", {0, 0}},
        {"empty", u"abc", u"", {0, 0}},
        {"longer than the text", u"abc", u"abcd", {0, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Ref<NSMutableAttributedString> text = changing(row.text);
        addAttribute_value_ofSubString(text, "A"_ns, box(1), NSString::fromUtf16(row.sought));
        const Ref<NSMutableAttributedString> expected = changing(row.text);
        expected->addAttribute_value_range("A"_ns, box(1), row.place);
        EXPECT_EQ(runListing(text), runListing(expected));
    }
}

TEST(AttributeOfASubString, doesNothingForNull) {
    const Ref<NSMutableAttributedString> text = changing(u"abc");
    addAttribute_value_ofSubString(text, nullptr, box(1), "a"_ns);
    addAttribute_value_ofSubString(text, "A"_ns, nullptr, "a"_ns);
    addAttribute_value_ofSubString(text, "A"_ns, box(1), nullptr);
    addAttribute_value_ofSubString(nullptr, "A"_ns, box(1), "a"_ns);
    addTextColor_ofSubString(text, nullptr, "a"_ns);
    addTextColor_ofSubString(text, NSColor::redColor(), nullptr);
    addTextFont_ofSubString(text, nullptr, "a"_ns);
    addTextFont_ofSubString(nullptr, NSFont::systemFontOfSize(11), "a"_ns);
    EXPECT_EQ(runListing(text), "abc{}");
}

TEST(AttributeOfASubString, mayBeColorOrFont) {
    const Ref<NSMutableAttributedString> text = changing(u"one two");
    const Ref<NSFont> font = NSFont::systemFontOfSize(11);
    addTextColor_ofSubString(text, NSColor::redColor(), "TWO"_ns);
    addTextFont_ofSubString(text, font, "one"_ns);
    EXPECT_TRUE(
        text->attributesAtIndex_effectiveRange(0, nullptr)->isEqual(dictionary({{NSFontAttributeName(), font}})));
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(3, nullptr)->count(), 0U);
    EXPECT_TRUE(text->attributesAtIndex_effectiveRange(4, nullptr)
                    ->isEqual(dictionary({{NSForegroundColorAttributeName(), NSColor::redColor()}})));
}

TEST(AttributeOfASubString, isFoundInAHugeText) {
    std::u16string units(1'000'000, u'x');
    units += u"needle";
    const Ref<NSMutableAttributedString> text = changing(units);
    addAttribute_value_ofSubString(text, "A"_ns, box(1), "NEEDLE"_ns);
    NSRange run;
    EXPECT_TRUE(text->attribute_atIndex_effectiveRange("A"_ns, 1'000'000, &run));
    EXPECT_EQ(run, (NSRange{1'000'000, 6}));
    addAttribute_value_ofSubString(text, "B"_ns, box(1), NSString::fromUtf16(std::u16string(500'000, u'x') + u'y'));
    EXPECT_EQ(text->runs().runs().size(), 2U);
}

TEST(AttributeEditing, answersByName) {
    const Ref<NSMutableAttributedString> text = changing(u"abc");
    send<void>(text, "addAttributes:"_sel, dictionary({{"A"_ns, box(1)}}));
    send<void>(text, "addAttribute:value:"_sel, "B"_ns, box(2));
    send<void>(text, "addAttribute:value:ofSubString:"_sel, "C"_ns, box(3), "B"_ns);
    EXPECT_EQ(runListing(text), "a{A=1 B=2}b{A=1 B=2 C=3}c{A=1 B=2}");
    send<void>(text, "addTextColor:ofSubString:"_sel, NSColor::redColor(), "a"_ns);
    send<void>(text, "addTextFont:ofSubString:"_sel, NSFont::systemFontOfSize(9), "a"_ns);
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(0, nullptr)->count(), 4U);
    send<void>(text, "addTextColor:ofSubString:"_sel, NSNull::null(), "c"_ns);
    send<void>(text, "addAttribute:value:ofSubString:"_sel, "C"_ns, box(3), NSNull::null());
    send<void>(text, "addAttributes:"_sel, "A"_ns);
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(2, nullptr)->count(), 2U) << "of another kind: read as null";
}

} // namespace
} // namespace zr
