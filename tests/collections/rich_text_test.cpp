#include <zrbasic/collections/rich_text.h>

#include "../foundation/checks.h"
#include "../foundation/run_listing.h"

#include <zrbasic/collections/text_attachment_cell.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::raised;
using test::runListing;

Ref<NSImage> image() {
    return make<NSImage>(&NSImage::initWithSize, NSMakeSize(16, 12));
}

Ref<NSAttributedString> styled(NSString* text, const char* name, int value) {
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, text,
                                    dictionary({{NSString::fromUtf8(name), box(value)}}));
}

Ref<NSTextAttachment> attachmentAt(NSAttributedString* text, NSUInteger place) {
    const id value = text->attribute_atIndex_effectiveRange(NSAttachmentAttributeName(), place, nullptr);
    return cast<NSTextAttachment>(value);
}

Ref<ZRTextAttachmentCell> cellAt(NSAttributedString* text, NSUInteger place) {
    return cast<ZRTextAttachmentCell>(attachmentAt(text, place)->attachmentCell());
}

TEST(JoiningPieces, takesStringsImagesTextsAndAttachments) {
    const Ref<NSImage> shown = image();
    const Ref<NSTextAttachment> attachment = make<NSTextAttachment>();
    const Ref<NSMutableAttributedString> text =
        attributedStringWithSource(array({"one"_ns, shown, styled("two"_ns, "A", 1), attachment, box(5), NSNull::null(),
                                          NSMutableString::stringWithString("three"_ns)}));
    EXPECT_EQ(text->string()->view(), u"one\uFFFCtwo\uFFFCthree");
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(0, nullptr)->count(), 0U);
    EXPECT_EQ(cellAt(text, 3)->image().get(), shown.get());
    EXPECT_EQ(cellAt(text, 3)->offset(), NSZeroPoint);
    EXPECT_EQ(runListing(text->attributedSubstringFromRange({4, 3})), "two{A=1}");
    EXPECT_EQ(attachmentAt(text, 7).get(), attachment.get()) << "the attachment itself, with whatever cell it has";
    EXPECT_FALSE(attachment->attachmentCell());
}

TEST(JoiningPieces, ofAStringAndAnImageIsTheStringAndOneCharacter) {
    const Ref<NSMutableAttributedString> text = attributedStringWithSource(array({"a"_ns, image()}));
    EXPECT_EQ(text->string()->view(), u"a\uFFFC");
    EXPECT_TRUE(cellAt(text, 1));
}

TEST(JoiningPieces, givesNullWhenNothingWasJoined) {
    const id sources[] = {nullptr,
                          "text"_ns,
                          box(1),
                          NSNull::null(),
                          image(),
                          dictionary({{"a"_ns, "b"_ns}}),
                          styled("t"_ns, "A", 1),
                          NSArray::array(),
                          array({box(1)}),
                          array({NSNull::null(), array({"nested"_ns})}),
                          array({""_ns, make<NSAttributedString>()})};
    for (const id& source : sources) {
        SCOPED_TRACE(source ? source->description()->utf8() : "null");
        EXPECT_FALSE(attributedStringWithSource(source));
        EXPECT_FALSE(attributedStringWithSource_attributes(source, dictionary({{"A"_ns, box(1)}})));
    }
}

TEST(JoiningPieces, movesEachImageByWhatTheCallbackSays) {
    const Ref<NSImage> first = image();
    const Ref<NSImage> second = image();
    std::string log;
    const Ref<NSMutableAttributedString> text = attributedStringWithSource_imageOffsetCreator(
        array({"a"_ns, first, box(1), second}), [&](NSImage* shown, NSUInteger index) {
            log += std::to_string(index) + (shown == first ? "first " : shown == second ? "second " : "? ");
            return NSMakePoint(static_cast<double>(index), -2);
        });
    EXPECT_EQ(log, "1first 3second ") << "the index counts all pieces";
    EXPECT_EQ(cellAt(text, 1)->cellBaselineOffset(), NSMakePoint(1, -2));
    EXPECT_EQ(cellAt(text, 2)->cellBaselineOffset(), NSMakePoint(3, -2));
}

TEST(JoiningPieces, laysTheAttributesOverEverything) {
    const Ref<NSMutableAttributedString> text = attributedStringWithSource_attributes(
        array({"a"_ns, styled("b"_ns, "A", 1), styled("c"_ns, "B", 2), image()}), dictionary({{"A"_ns, box(9)}}));
    EXPECT_EQ(runListing(text->attributedSubstringFromRange({0, 3})), "ab{A=9}c{A=9 B=2}");
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(3, nullptr)->count(), 2U) << "the image keeps its attachment";
    EXPECT_EQ(runListing(attributedStringWithSource_attributes(array({styled("b"_ns, "A", 1)}), nullptr)), "b{A=1}");
    EXPECT_EQ(
        runListing(attributedStringWithSource_attributes(array({styled("b"_ns, "A", 1)}), NSDictionary::dictionary())),
        "b{A=1}");
}

TEST(JoiningPieces, countsTheArrayAnewEachTime) {
    const Ref<NSMutableArray> source = NSMutableArray::arrayWithArray(array({image(), "gone"_ns, "gone too"_ns}));
    const Ref<NSMutableAttributedString> shortened =
        attributedStringWithSource_imageOffsetCreator(source, [&](NSImage*, NSUInteger) {
            source->removeAllObjects();
            return NSZeroPoint;
        });
    EXPECT_EQ(shortened->length(), 1U);
    const Ref<NSMutableArray> growing = NSMutableArray::arrayWithArray(array({image()}));
    const Ref<NSMutableAttributedString> lengthened =
        attributedStringWithSource_imageOffsetCreator(growing, [&](NSImage*, NSUInteger index) {
            growing->addObject(index < 2 ? id(image()) : id("end"_ns));
            return NSZeroPoint;
        });
    EXPECT_EQ(lengthened->string()->view(), u"\uFFFC\uFFFC\uFFFCend");
}

TEST(JoiningPieces, doesNotFollowItsPieces) {
    const Ref<NSMutableString> plain = NSMutableString::stringWithString("a"_ns);
    const Ref<NSMutableAttributedString> piece =
        make<NSMutableAttributedString>(&NSAttributedString::initWithString, "b"_ns);
    const Ref<NSMutableAttributedString> text = attributedStringWithSource(array({plain, piece, piece}));
    plain->setString("-"_ns);
    piece->append(u"-", dictionary({{"A"_ns, box(1)}}));
    EXPECT_EQ(runListing(text), "abb{}");
    text->append(u"!", nullptr);
    EXPECT_EQ(piece->string()->view(), u"b-");
}

TEST(JoiningPieces, letsTheCallbacksExceptionPass) {
    EXPECT_EQ(raised([] {
                  (void)attributedStringWithSource_imageOffsetCreator(
                      array({image()}),
                      [](NSImage*, NSUInteger) -> NSPoint { NSException::raise(NSGenericException, "no"); });
              }),
              "NSGenericException: no");
}

// A picture that becomes text in a way of its own.
class Emblem : public NSImage {
    ZR_OBJECT(Emblem, NSImage)
  public:
    Ref<NSAttributedString> spelled(FunctionRef<NSPoint()> offset) {
        const double x = offset().x;
        return x < 0 ? nullptr : styled("emblem"_ns, "X", static_cast<int>(x));
    }
    ZR_METHOD(spelled, "attributeStringWithOffsetCreator:")
};

TEST(JoiningPieces, asksImagesByName) {
    const auto offset = [](NSImage*, NSUInteger index) { return NSMakePoint(index == 0 ? 7 : -1, 0); };
    EXPECT_EQ(runListing(attributedStringWithSource_imageOffsetCreator(array({make<Emblem>(), make<Emblem>(), "a"_ns}),
                                                                       offset)),
              "emblem{X=7}a{}")
        << "an image without an answer is skipped";
    EXPECT_EQ(runListing(attributedStringWithSource(array({make<Emblem>()}))), "emblem{X=0}");
}

TEST(JoiningPieces, hasTwoSpellings) {
    const Ref<NSArray> source = array({"a"_ns, make<Emblem>()});
    const Ref<NSDictionary> attributes = dictionary({{"A"_ns, box(1)}});
    const auto offset = [](NSImage*, NSUInteger) { return NSMakePoint(4, 0); };
    EXPECT_EQ(runListing(attributeStringWithSource(source)), "a{}emblem{X=0}");
    EXPECT_EQ(runListing(attributeStringWithSource_imageOffsetCreator(source, offset)), "a{}emblem{X=4}");
    EXPECT_EQ(runListing(attributeStringWithSource_attributes(source, attributes)), "a{A=1}emblem{A=1 X=0}");
    EXPECT_EQ(runListing(attributeStringWithSource_imageOffsetCreator_attributes(source, offset, attributes)),
              "a{A=1}emblem{A=1 X=4}");
    EXPECT_EQ(runListing(attributedStringWithSource_imageOffsetCreator_attributes(source, offset, attributes)),
              "a{A=1}emblem{A=1 X=4}");
    EXPECT_FALSE(attributeStringWithSource(nullptr));
}

TEST(JoiningPieces, answersByName) {
    Class* const receiver = NSAttributedString::classObject();
    const Ref<NSArray> source = array({"a"_ns, make<Emblem>()});
    const Ref<NSDictionary> attributes = dictionary({{"A"_ns, box(1)}});
    const auto offset = [](NSImage*, NSUInteger) { return NSMakePoint(4, 0); };
    const ZRXImageOffsetCreator creator(offset);
    for (const std::string name : {"attributedStringWithSource:", "attributeStringWithSource:"}) {
        SCOPED_TRACE(name);
        using Text = Ref<NSAttributedString>;
        EXPECT_EQ(runListing(send<Text>(receiver, sel_registerName(name), source)), "a{}emblem{X=0}");
        EXPECT_EQ(runListing(send<Text>(receiver, sel_registerName(name + "imageOffsetCreator:"), source, creator)),
                  "a{}emblem{X=4}");
        EXPECT_EQ(runListing(send<Text>(receiver, sel_registerName(name + "attributes:"), source, attributes)),
                  "a{A=1}emblem{A=1 X=0}");
        EXPECT_EQ(runListing(send<Text>(receiver, sel_registerName(name + "imageOffsetCreator:attributes:"), source,
                                        creator, attributes)),
                  "a{A=1}emblem{A=1 X=4}");
        EXPECT_FALSE(send<Text>(receiver, sel_registerName(name), NSNull::null()));
        EXPECT_EQ(runListing(send<Text>(receiver, sel_registerName(name + "attributes:"), source, NSNull::null())),
                  "a{}emblem{X=0}")
            << "attributes of another kind: read as null";
    }
}

TEST(JoiningPieces, copesWithThousandsOfThem) {
    const Ref<NSMutableArray> source = NSMutableArray::array();
    const Ref<NSString> kilobyte = NSString::fromUtf16(std::u16string(1000, u'x'));
    for (int count = 0; count < 1000; ++count) {
        source->addObject(kilobyte);
        source->addObject(styled("y"_ns, "A", count));
    }
    const Ref<NSMutableAttributedString> text = attributedStringWithSource(source);
    EXPECT_EQ(text->length(), 1'001'000U);
    EXPECT_EQ(text->runs().runs().size(), 2000U);
    EXPECT_TRUE(text->attribute_atIndex_effectiveRange("A"_ns, 1'000'999, nullptr)->isEqual(box(999)));
}

} // namespace
} // namespace zr
