#include <zrbasic/collections/html_links.h>

#include "../foundation/checks.h"
#include "../foundation/run_listing.h"

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/url.h>

#include <gtest/gtest.h>

#include <chrono>

namespace zr {
namespace {

using test::raised;
using test::raisedName;
using test::runListing;

NSDictionary* const noAttributes = nullptr;

Ref<NSDictionary> one(const char* name, int value) {
    return dictionary({{NSString::fromUtf8(name), box(value)}});
}

id attribute(NSAttributedString* text, NSString* name, NSUInteger place) {
    return text->attribute_atIndex_effectiveRange(name, place, nullptr);
}

/// The target of the link at a place; "none" without one.
std::string target(NSAttributedString* text, NSUInteger place) {
    const id link = attribute(text, NSLinkAttributeName(), place);
    const auto* const url = cast<NSURL>(link);
    return url ? url->absoluteString()->utf8() : "none";
}

TEST(HTMLLinks, areBlueAndLeadToTheirTarget) {
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString("see <A HREF='u'>here</A> now"_ns);
    EXPECT_EQ(text->string()->view(), u"see here now");
    NSRange run;
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(4, &run)->count(), 2U);
    EXPECT_EQ(run, (NSRange{4, 4}));
    EXPECT_EQ(target(text, 4), "u");
    EXPECT_TRUE(attribute(text, NSForegroundColorAttributeName(), 4)->isEqual(NSColor::blueColor()));
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(0, &run)->count(), 0U);
    EXPECT_EQ(run, (NSRange{0, 4}));
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(8, nullptr)->count(), 0U);
}

TEST(HTMLLinks, leaveTheTextBetweenThemAlone) {
    const Ref<NSMutableAttributedString> text =
        replaceHTMLLinksFromString("<a href=\"http://h/1\">one</a> & <b>two</b> <a href='http://h/3'>three</a>!"_ns);
    EXPECT_EQ(text->string()->view(), u"one & <b>two</b> three!");
    EXPECT_EQ(target(text, 0), "http://h/1");
    EXPECT_EQ(target(text, 4), "none");
    EXPECT_EQ(target(text, 17), "http://h/3");
    EXPECT_EQ(target(text, 22), "none");
}

TEST(HTMLLinks, areLeftAsTheyStandInAnyOtherForm) {
    const std::u16string_view rows[] = {
        u"<a href='u'>over\ntwo lines</a>",
        u"<a href=u>no quotes</a>",
        u"<a class='c' href='u'>t</a>",
        u"<ahref='u'>t</a>",
        u"<a href='u' >t</a>",
        u"<a href='u'>no end",
        u"<a href = 'u'>t</a>",
        u"<b href='u'>another tag</b>",
        u"&lt;a href='u'&gt;t&lt;/a&gt;",
        u"",
        u"<a\u200Bhref='u'>t</a>",
    };
    for (const std::u16string_view row : rows) {
        const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString(NSString::fromUtf16(row));
        EXPECT_EQ(text->string()->view(), row);
        EXPECT_EQ(runListing(text), row.empty() ? "" : text->string()->utf8() + "{}");
    }
}

TEST(HTMLLinks, swallowFurtherAttributesIntoTheTarget) {
    std::string hrefs;
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
        "<a href=\"x\" target=\"y\">t</a>"_ns, nullptr, [&](NSString* href) {
            hrefs += href->utf8();
            return one("L", 1);
        });
    EXPECT_EQ(hrefs, "x\" target=\"y");
    EXPECT_EQ(runListing(text), "t{L=1}");
}

TEST(HTMLLinks, carryTheBuildersAttributesAndNoOthers) {
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
        "a<a href='u'>b</a>c"_ns, one("Base", 1), [](NSString*) { return one("L", 2); });
    EXPECT_EQ(runListing(text), "a{Base=1}b{L=2}c{Base=1}");
    EXPECT_EQ(runListing(replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
                  "a<a href='u'>b</a>c"_ns, one("Base", 1), [](NSString*) { return Ref<NSDictionary>(); })),
              "a{Base=1}b{}c{Base=1}")
        << "a builder that gives nothing leaves the link text without attributes";
    EXPECT_EQ(runListing(replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
                  "a<a href='u'>b</a>c"_ns, NSDictionary::dictionary(), [](NSString*) { return one("L", 2); })),
              "a{}b{L=2}c{}");
    EXPECT_EQ(runListing(replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
                  "<a href='u'></a>"_ns, one("Base", 1), [](NSString*) { return one("L", 2); })),
              "");
}

TEST(HTMLLinks, defaultStylingDropsTheBaseAttributesToo) {
    const Ref<NSMutableAttributedString> text =
        replaceHTMLLinksFromString_attributes_linkAttributeBuilder("a<a href='u'>b</a>"_ns, one("Base", 1), nullptr);
    EXPECT_TRUE(attribute(text, "Base"_ns, 0));
    EXPECT_FALSE(attribute(text, "Base"_ns, 1));
    EXPECT_EQ(target(text, 1), "u");
}

TEST(HTMLLinks, areHandedToTheBuilderFromTheLastToTheFirst) {
    std::string order;
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
        "<a href='1'>a</a> <a href='2'>b</a> <a href='3'>c</a>"_ns, nullptr, [&](NSString* href) {
            order += href->utf8();
            return one("L", static_cast<int>(order.size()));
        });
    EXPECT_EQ(order, "321");
    EXPECT_EQ(runListing(text), "a{L=3} {}b{L=2} {}c{L=1}");
}

TEST(HTMLLinks, copyTheBuildersDictionaryAtOnce) {
    const Ref<NSMutableDictionary> shared = NSMutableDictionary::dictionary();
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
        "<a href='1'>a</a><a href='2'>b</a>"_ns, nullptr, [&](NSString* href) {
            shared->setObject_forKey(href, "L"_ns);
            return shared;
        });
    shared->removeAllObjects();
    EXPECT_EQ(runListing(text), "a{L=1}b{L=2}");
}

TEST(HTMLLinks, takeTextAndBaseAsTheyWereAtTheBeginning) {
    const Ref<NSMutableString> source = NSMutableString::stringWithString("a<a href='u'>b</a>c"_ns);
    const Ref<NSMutableDictionary> base = NSMutableDictionary::fromEntries({{"Base"_ns, box(1)}});
    const Ref<NSMutableAttributedString> text =
        replaceHTMLLinksFromString_attributes_linkAttributeBuilder(source, base, [&](NSString*) {
            source->setString(""_ns);
            base->removeAllObjects();
            return one("L", 2);
        });
    EXPECT_EQ(runListing(text), "a{Base=1}b{L=2}c{Base=1}");
}

TEST(HTMLLinks, letTheBuildersExceptionPass) {
    EXPECT_EQ(raised([] {
                  (void)replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
                      "<a href='u'>b</a>"_ns, nullptr,
                      [](NSString*) -> Ref<NSDictionary> { NSException::raise(NSGenericException, "not this one"); });
              }),
              "NSGenericException: not this one");
}

TEST(HTMLLinks, resultIsANewTextThatCanBeChanged) {
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString("plain"_ns);
    text->append(u"!", nullptr);
    EXPECT_EQ(runListing(text), "plain!{}");
    EXPECT_EQ(replaceHTMLLinksFromString(""_ns)->length(), 0U) << "an empty text, not null";
}

TEST(HTMLLinks, ofANullTextRaise) {
    EXPECT_EQ(raisedName([] { (void)replaceHTMLLinksFromString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { (void)replaceHTMLLinksFromString_withTextColor(nullptr, NSColor::redColor()); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] {
                  (void)replaceHTMLLinksFromString_withTextColor_linkColor_font(nullptr, nullptr, NSColor::redColor(),
                                                                                nullptr);
              }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] {
                  (void)replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
                      nullptr, nullptr, [](NSString*) { return one("L", 1); });
              }),
              NSInvalidArgumentException);
}

TEST(HTMLLinks, whoseTargetIsNoURLRaiseInTheDefaultStyling) {
    EXPECT_EQ(raisedName([] { (void)replaceHTMLLinksFromString("<a href='no url'>t</a>"_ns); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { (void)replaceHTMLLinksFromString_withTextColor("<a href='\"'>t</a>"_ns, nullptr); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] {
                  (void)replaceHTMLLinksFromString_withTextColor(u"<a href='\u4F60'>t</a>"_ns, NSColor::redColor());
              }),
              NSInvalidArgumentException);
    EXPECT_EQ(target(replaceHTMLLinksFromString("<a href=''>t</a>"_ns), 0), "") << "the empty text is a URL";
    EXPECT_EQ(replaceHTMLLinksFromString("<a href='no url'>t"_ns)->length(), 18U) << "what is no anchor cannot fail";
}

TEST(ColoredHTMLLinks, putColorsAndFontWhereTheyBelong) {
    const Ref<NSFont> font = NSFont::systemFontOfSize(11);
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString_withTextColor_linkColor_font(
        "a<a href='u'>b</a>"_ns, NSColor::redColor(), NSColor::greenColor(), font);
    EXPECT_TRUE(text->attributesAtIndex_effectiveRange(0, nullptr)
                    ->isEqual(dictionary(
                        {{NSForegroundColorAttributeName(), NSColor::redColor()}, {NSFontAttributeName(), font}})));
    EXPECT_TRUE(text->attributesAtIndex_effectiveRange(1, nullptr)
                    ->isEqual(dictionary({{NSForegroundColorAttributeName(), NSColor::greenColor()},
                                          {NSFontAttributeName(), font},
                                          {NSLinkAttributeName(), NSURL::URLWithString("u"_ns)}})));
}

TEST(ColoredHTMLLinks, inAFontWithoutALinkColorHaveNoColor) {
    const Ref<NSFont> font = NSFont::boldSystemFontOfSize(11);
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString_withTextColor_linkColor_font(
        "a<a href='u'>b</a>"_ns, NSColor::redColor(), nullptr, font);
    EXPECT_TRUE(attribute(text, NSFontAttributeName(), 1)->isEqual(font));
    EXPECT_FALSE(attribute(text, NSForegroundColorAttributeName(), 1));
    EXPECT_EQ(target(text, 1), "u");
}

TEST(ColoredHTMLLinks, withoutFontAndLinkColorAreTheBlueOnes) {
    const Ref<NSMutableAttributedString> text =
        replaceHTMLLinksFromString_withTextColor("a<a href='u'>b</a>"_ns, NSColor::redColor());
    EXPECT_TRUE(attribute(text, NSForegroundColorAttributeName(), 0)->isEqual(NSColor::redColor()));
    EXPECT_TRUE(attribute(text, NSForegroundColorAttributeName(), 1)->isEqual(NSColor::blueColor()));
    EXPECT_TRUE(
        replaceHTMLLinksFromString_withTextColor_linkColor_font("a<a href='u'>b</a>"_ns, nullptr, nullptr, nullptr)
            ->isEqual(replaceHTMLLinksFromString("a<a href='u'>b</a>"_ns)));
}

TEST(ColoredHTMLLinks, whoseTargetIsNoURLCarryTheOneOfTheNextLink) {
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString_withTextColor_linkColor_font(
        "<a href='bad url'>a</a> <a href='{}'>b</a> <a href='good'>c</a> <a href='|'>d</a>"_ns, nullptr,
        NSColor::redColor(), nullptr);
    EXPECT_EQ(text->string()->view(), u"a b c d");
    EXPECT_EQ(target(text, 0), "good");
    EXPECT_EQ(target(text, 2), "good");
    EXPECT_EQ(target(text, 4), "good");
    EXPECT_EQ(target(text, 6), "none") << "no link behind it";
    EXPECT_TRUE(attribute(text, NSForegroundColorAttributeName(), 6)->isEqual(NSColor::redColor()));
}

TEST(HTMLLinks, answerByName) {
    Class* const receiver = NSAttributedString::classObject();
    const Ref<NSString> source = "a<a href='u'>b</a>"_ns;
    EXPECT_TRUE(
        send<id>(receiver, "replaceHTMLLinksFromString:"_sel, source)->isEqual(replaceHTMLLinksFromString(source)));
    EXPECT_TRUE(send<id>(NSMutableAttributedString::classObject(), "replaceHTMLLinksFromString:withTextColor:"_sel,
                         source, NSColor::redColor())
                    ->isEqual(replaceHTMLLinksFromString_withTextColor(source, NSColor::redColor())));
    EXPECT_TRUE(send<id>(receiver, "replaceHTMLLinksFromString:withTextColor:"_sel, source, NSNull::null())
                    ->isEqual(replaceHTMLLinksFromString(source)))
        << "of another kind: read as null";
    EXPECT_TRUE(send<id>(receiver, "replaceHTMLLinksFromString:withTextColor:linkColor:font:"_sel, source, nullptr,
                         NSColor::redColor(), nullptr)
                    ->isEqual(replaceHTMLLinksFromString_withTextColor_linkColor_font(source, nullptr,
                                                                                      NSColor::redColor(), nullptr)));
    const auto builder = [](NSString*) { return one("L", 1); };
    EXPECT_EQ(runListing(send<Ref<NSAttributedString>>(
                  receiver, "replaceHTMLLinksFromString:attributes:linkAttributeBuilder:"_sel, source, noAttributes,
                  ZRXLinkAttributeBuilder(builder))),
              "a{}b{L=1}");
    EXPECT_EQ(raisedName([&] { send<id>(receiver, "replaceHTMLLinksFromString:"_sel, box(1)); }),
              NSInvalidArgumentException);
}

TEST(HTMLLinks, inHugeAndHostileTextsTakeNoLong) {
    std::u16string heads;
    std::u16string anchors;
    for (int count = 0; count < 50'000; ++count) {
        heads += u"<a href=";
        anchors += u"<a href='u'>t</a> ";
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(replaceHTMLLinksFromString(NSString::fromUtf16(heads))->string()->view(), heads);
    const Ref<NSMutableAttributedString> text = replaceHTMLLinksFromString(NSString::fromUtf16(anchors));
    EXPECT_EQ(text->length(), 100'000U);
    EXPECT_EQ(text->runs().runs().size(), 100'000U);
    EXPECT_EQ(target(text, 99'998), "u");
    const std::u16string quotes = u"<a href=" + std::u16string(1'000'000, u'\'') + u">t</a>";
    EXPECT_EQ(replaceHTMLLinksFromString_withTextColor_linkColor_font(NSString::fromUtf16(quotes), nullptr,
                                                                      NSColor::redColor(), nullptr)
                  ->string()
                  ->view(),
              u"t");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

} // namespace
} // namespace zr
