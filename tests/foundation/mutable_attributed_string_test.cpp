#include <zrbasic/platform/foundation/mutable_attributed_string.h>

#include "checks.h"
#include "run_listing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace zr {
namespace {

using test::raisedName;
using test::runListing;

constexpr NSUInteger hugeIndex = std::numeric_limits<NSUInteger>::max();

Ref<NSMutableAttributedString> changing(std::u16string_view text) {
    return make<NSMutableAttributedString>(&NSAttributedString::initWithString, NSString::fromUtf16(text));
}

Ref<NSAttributedString> piece(std::u16string_view text, const char* name, int value) {
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, NSString::fromUtf16(text),
                                    dictionary({{NSString::fromUtf8(name), box(value)}}));
}

Ref<NSAttributedString> plainPiece(std::u16string_view text) {
    return make<NSAttributedString>(&NSAttributedString::initWithString, NSString::fromUtf16(text));
}

TEST(AttributeAdding, laysOverWhatIsThere) {
    const Ref<NSMutableAttributedString> text = changing(u"abcdef");
    text->addAttribute_value_range("A"_ns, box(1), {1, 3});
    EXPECT_EQ(runListing(text), "a{}bcd{A=1}ef{}");
    text->addAttribute_value_range("B"_ns, box(2), {2, 3});
    EXPECT_EQ(runListing(text), "a{}b{A=1}cd{A=1 B=2}e{B=2}f{}");
    text->addAttribute_value_range("A"_ns, box(3), {0, 6});
    EXPECT_EQ(runListing(text), "ab{A=3}cde{A=3 B=2}f{A=3}");
    text->addAttributes_range(dictionary({{"B"_ns, box(2)}, {"C"_ns, NSNull::null()}}), {0, 6});
    EXPECT_EQ(runListing(text), "abcdef{A=3 B=2 C=<null>}");
}

TEST(AttributeAdding, joinsEqualNeighbours) {
    const Ref<NSMutableAttributedString> text = changing(u"abcdef");
    text->addAttribute_value_range("A"_ns, box(1), {0, 2});
    text->addAttribute_value_range("A"_ns, box(1), {2, 2});
    EXPECT_EQ(runListing(text), "abcd{A=1}ef{}");
    text->addAttribute_value_range("A"_ns, box(1), {5, 1});
    text->addAttribute_value_range("A"_ns, box(1), {4, 1});
    EXPECT_EQ(runListing(text), "abcdef{A=1}");
    text->addAttribute_value_range("A"_ns, box(1), {2, 2});
    EXPECT_EQ(runListing(text), "abcdef{A=1}");
}

TEST(AttributeAdding, leavesEmptyRangesAlone) {
    const Ref<NSMutableAttributedString> text = changing(u"ab");
    text->addAttribute_value_range("A"_ns, box(1), {1, 0});
    text->addAttribute_value_range("A"_ns, box(1), {2, 0});
    text->setAttributes_range(dictionary({{"A"_ns, box(1)}}), {1, 0});
    text->removeAttribute_range("A"_ns, {2, 0});
    EXPECT_EQ(runListing(text), "ab{}");
    const Ref<NSMutableAttributedString> empty = make<NSMutableAttributedString>();
    empty->addAttribute_value_range("A"_ns, box(1), {0, 0});
    empty->addAttributes_range(dictionary({{"A"_ns, box(1)}}), {0, 0});
    EXPECT_EQ(empty->length(), 0U);
}

TEST(AttributeAdding, takesNoNoticeOfLaterChangesToTheDictionary) {
    const Ref<NSMutableDictionary> attributes = NSMutableDictionary::fromEntries({{"A"_ns, box(1)}});
    const Ref<NSMutableAttributedString> text = changing(u"abc");
    text->addAttributes_range(attributes, {0, 1});
    text->setAttributes_range(attributes, {1, 1});
    text->append(u"d", attributes);
    attributes->setObject_forKey(box(2), "A"_ns);
    EXPECT_EQ(runListing(text), "ab{A=1}c{}d{A=1}");
}

TEST(AttributeAdding, sharesOneDictionaryPerRun) {
    const Ref<NSDictionary> attributes = dictionary({{"A"_ns, box(1)}});
    const Ref<NSMutableAttributedString> text = changing(u"abcd");
    text->setAttributes_range(attributes, {0, 1});
    text->addAttributes_range(attributes, {2, 1});
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(0, nullptr).get(), attributes.get());
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(2, nullptr).get(), attributes.get());
    text->addAttribute_value_range("B"_ns, box(2), {0, 4});
    EXPECT_EQ(runListing(text), "a{A=1 B=2}b{B=2}c{A=1 B=2}d{B=2}");
    EXPECT_EQ(runListing(cast<NSAttributedString>(text->copy())), runListing(text));
}

TEST(AttributeSetting, dropsWhatWasThere) {
    const Ref<NSMutableAttributedString> text = changing(u"abcd");
    text->addAttribute_value_range("A"_ns, box(1), {0, 4});
    text->setAttributes_range(dictionary({{"B"_ns, box(2)}}), {1, 2});
    EXPECT_EQ(runListing(text), "a{A=1}bc{B=2}d{A=1}");
    text->setAttributes_range(nullptr, {2, 2});
    EXPECT_EQ(runListing(text), "a{A=1}b{B=2}cd{}");
    text->setAttributes_range(dictionary({{"A"_ns, box(1)}}), {0, 4});
    EXPECT_EQ(runListing(text), "abcd{A=1}");
}

TEST(AttributeRemoval, takesOneNameAway) {
    const Ref<NSMutableAttributedString> text = changing(u"abcd");
    text->addAttribute_value_range("A"_ns, box(1), {0, 3});
    text->addAttribute_value_range("B"_ns, box(2), {1, 3});
    text->removeAttribute_range("A"_ns, {1, 2});
    EXPECT_EQ(runListing(text), "a{A=1}bcd{B=2}");
    text->removeAttribute_range("C"_ns, {0, 4});
    EXPECT_EQ(runListing(text), "a{A=1}bcd{B=2}");
    text->removeAttribute_range("B"_ns, {0, 4});
    text->removeAttribute_range("A"_ns, {0, 4});
    EXPECT_EQ(runListing(text), "abcd{}");
}

TEST(AttributeErrors, leaveTheTextAsItWas) {
    const Ref<NSMutableAttributedString> text = changing(u"abc");
    text->addAttribute_value_range("A"_ns, box(1), {0, 1});
    const Ref<NSDictionary> attributes = dictionary({{"B"_ns, box(2)}});
    const NSRange bad[] = {{0, 4}, {3, 1}, {4, 0}, {1, hugeIndex}, {hugeIndex, 1}, {NSNotFound, 0}};
    for (const NSRange range : bad) {
        SCOPED_TRACE(std::to_string(range.location) + '+' + std::to_string(range.length));
        const std::function<void()> actions[] = {
            [&] { text->addAttribute_value_range("B"_ns, box(2), range); },
            [&] { text->addAttributes_range(attributes, range); },
            [&] { text->addAttributes_range(nullptr, range); },
            [&] { text->setAttributes_range(attributes, range); },
            [&] { text->removeAttribute_range("A"_ns, range); },
            [&] { text->replaceCharactersInRange_withString(range, "x"_ns); },
            [&] { text->replaceCharactersInRange_withAttributedString(range, plainPiece(u"x")); },
            [&] { text->deleteCharactersInRange(range); },
        };
        for (const auto& action : actions) {
            EXPECT_EQ(raisedName(action), NSRangeException);
        }
    }
    EXPECT_EQ(raisedName([&] { text->insertAttributedString_atIndex(plainPiece(u"x"), 4); }), NSRangeException);
    EXPECT_EQ(runListing(text), "a{A=1}bc{}");
}

TEST(AttributeErrors, nullRaisesButANullDictionaryAddsNothing) {
    const Ref<NSMutableAttributedString> text = changing(u"abc");
    const std::function<void()> actions[] = {
        [&] {
            text->addAttribute_value_range(nullptr, box(2), {0, 1});
        },
        [&] {
            text->addAttribute_value_range("A"_ns, nullptr, {0, 1});
        },
        [&] {
            text->addAttribute_value_range("A"_ns, nullptr, {0, 0});
        },
        [&] {
            text->removeAttribute_range(nullptr, {0, 1});
        },
        [&] {
            text->replaceCharactersInRange_withString({0, 1}, nullptr);
        },
        [&] {
            text->replaceCharactersInRange_withAttributedString({0, 1}, nullptr);
        },
        [&] { text->appendAttributedString(nullptr); },
        [&] { text->insertAttributedString_atIndex(nullptr, 0); },
        [&] { text->setAttributedString(nullptr); },
    };
    for (const auto& action : actions) {
        EXPECT_EQ(raisedName(action), NSInvalidArgumentException);
    }
    text->addAttributes_range(nullptr, {0, 3});
    EXPECT_EQ(runListing(text), "abc{}");
}

TEST(ReplacingWithAString, takesTheFirstReplacedCharactersAttributes) {
    const struct {
        const char* what;
        NSRange range;
        const char* result;
    } rows[] = {
        {"over a border", {1, 2}, "axy{A=1}d{B=2}"},
        {"the second run", {2, 2}, "ab{A=1}xy{B=2}"},
        {"all", {0, 4}, "xy{A=1}"},
        {"insertion: the character before", {2, 0}, "abxy{A=1}cd{B=2}"},
        {"insertion at the beginning: the first", {0, 0}, "xyab{A=1}cd{B=2}"},
        {"insertion at the end: the last", {4, 0}, "ab{A=1}cdxy{B=2}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Ref<NSMutableAttributedString> text = changing(u"abcd");
        text->addAttribute_value_range("A"_ns, box(1), {0, 2});
        text->addAttribute_value_range("B"_ns, box(2), {2, 2});
        text->replaceCharactersInRange_withString(row.range, "xy"_ns);
        EXPECT_EQ(runListing(text), row.result);
    }
    const Ref<NSMutableAttributedString> empty = make<NSMutableAttributedString>();
    empty->replaceCharactersInRange_withString({0, 0}, "xy"_ns);
    EXPECT_EQ(runListing(empty), "xy{}");
}

TEST(ReplacingWithAnAttributedString, bringsExactlyItsOwnAttributes) {
    const Ref<NSMutableAttributedString> text = changing(u"abcd");
    text->addAttribute_value_range("A"_ns, box(1), {0, 4});
    text->replaceCharactersInRange_withAttributedString({1, 2}, plainPiece(u"xyz"));
    EXPECT_EQ(runListing(text), "a{A=1}xyz{}d{A=1}");
    text->replaceCharactersInRange_withAttributedString({2, 1}, piece(u"-", "B", 2));
    EXPECT_EQ(runListing(text), "a{A=1}x{}-{B=2}z{}d{A=1}");
    text->replaceCharactersInRange_withAttributedString({1, 3}, plainPiece(u""));
    EXPECT_EQ(runListing(text), "ad{A=1}");
    text->setAttributedString(piece(u"new", "C", 3));
    EXPECT_EQ(runListing(text), "new{C=3}");
}

TEST(Appending, keepsThePiecesRuns) {
    const Ref<NSMutableAttributedString> text = make<NSMutableAttributedString>();
    text->appendAttributedString(piece(u"a", "A", 1));
    text->appendAttributedString(plainPiece(u"b"));
    text->appendAttributedString(piece(u"c", "A", 1));
    EXPECT_EQ(runListing(text), "a{A=1}b{}c{A=1}");
    text->appendAttributedString(piece(u"d", "A", 1));
    EXPECT_EQ(runListing(text), "a{A=1}b{}cd{A=1}") << "equal neighbours are one run";
    text->insertAttributedString_atIndex(piece(u"-", "B", 2), 0);
    text->insertAttributedString_atIndex(plainPiece(u"+"), 5);
    EXPECT_EQ(runListing(text), "-{B=2}a{A=1}b{}cd{A=1}+{}");
    text->append(u"!", nullptr);
    text->append(u"", dictionary({{"Z"_ns, box(1)}}));
    EXPECT_EQ(runListing(text), "-{B=2}a{A=1}b{}cd{A=1}+!{}");
}

TEST(Appending, takesTheTextItself) {
    const Ref<NSMutableAttributedString> text = changing(u"ab");
    text->addAttribute_value_range("A"_ns, box(1), {0, 1});
    text->appendAttributedString(text);
    EXPECT_EQ(runListing(text), "a{A=1}b{}a{A=1}b{}");
    text->replaceCharactersInRange_withAttributedString({1, 2}, text);
    EXPECT_EQ(runListing(text), "aa{A=1}b{}a{A=1}bb{}");
    text->setAttributedString(text);
    EXPECT_EQ(runListing(text), "aa{A=1}b{}a{A=1}bb{}");
    text->replaceCharactersInRange_withString({0, 5}, text->string());
    EXPECT_EQ(runListing(text), "aababb{A=1}b{}");
}

TEST(Deleting, joinsWhatMeets) {
    const Ref<NSMutableAttributedString> text = changing(u"abcd");
    text->addAttribute_value_range("A"_ns, box(1), {1, 2});
    text->deleteCharactersInRange({1, 2});
    EXPECT_EQ(runListing(text), "ad{}");
    text->deleteCharactersInRange({1, 0});
    EXPECT_EQ(runListing(text), "ad{}");
    text->deleteCharactersInRange({0, 2});
    EXPECT_EQ(runListing(text), "");
    text->deleteCharactersInRange({0, 0});
    text->append(u"x", nullptr);
    EXPECT_EQ(runListing(text), "x{}");
}

TEST(MutableAttributedStringCopies, doNotFollow) {
    const Ref<NSMutableAttributedString> text = changing(u"ab");
    const Ref<NSString> string = text->string();
    const id copy = text->copy();
    const id another = text->mutableCopy();
    text->append(u"c", nullptr);
    text->addAttribute_value_range("A"_ns, box(1), {0, 3});
    EXPECT_EQ(string->view(), u"ab");
    EXPECT_EQ(runListing(cast<NSAttributedString>(copy)), "ab{}");
    EXPECT_FALSE(cast<NSMutableAttributedString>(copy));
    EXPECT_EQ(runListing(cast<NSMutableAttributedString>(another)), "ab{}");
    EXPECT_EQ(text->string()->view(), u"abc");
    EXPECT_EQ(runListing(text), "abc{A=1}");
    EXPECT_EQ(text->hash(), changing(u"abc")->hash());
    EXPECT_TRUE(text->attributedSubstringFromRange({0, 3})->isEqual(text));
    EXPECT_NE(text->attributedSubstringFromRange({0, 3}).get(), text.get()) << "that one may change";
}

TEST(MutableAttributedStringWalks, allowChangesInsideTheVisitedRange) {
    const Ref<NSMutableAttributedString> text = changing(u"aabb");
    text->addAttribute_value_range("A"_ns, box(1), {0, 2});
    text->addAttribute_value_range("A"_ns, box(2), {2, 2});
    std::string log;
    text->enumerateAttribute_inRange_options_usingBlock("A"_ns, {0, 4}, 0, [&](NSObject*, NSRange range, bool&) {
        log += std::to_string(range.location) + '+' + std::to_string(range.length) + ' ';
        text->addAttribute_value_range("A"_ns, box(2), range);
    });
    EXPECT_EQ(log, "0+2 2+2 ") << "what joins with the run visited is not visited again";
    EXPECT_EQ(runListing(text), "aabb{A=2}");
    log.clear();
    text->enumerateAttributesInRange_options_usingBlock({0, 4}, NSAttributedStringEnumerationReverse,
                                                        [&](NSDictionary* attributes, NSRange range, bool&) {
                                                            // The attributes outlive their place in the text.
                                                            text->setAttributes_range(nullptr, range);
                                                            log += std::to_string(attributes->count());
                                                        });
    EXPECT_EQ(log, "1");
    EXPECT_EQ(runListing(text), "aabb{}");
}

TEST(MutableAttributedStringWalks, raiseWhenTheTextWasShortened) {
    for (const NSUInteger options : {NSUInteger(0), NSUInteger(NSAttributedStringEnumerationReverse)}) {
        const Ref<NSMutableAttributedString> text = changing(u"abcd");
        text->addAttribute_value_range("A"_ns, box(1), {0, 2});
        EXPECT_EQ(raisedName([&] {
                      text->enumerateAttributesInRange_options_usingBlock(
                          {0, 4}, options, [&](NSDictionary*, NSRange, bool&) {
                              text->deleteCharactersInRange({0, text->length()});
                          });
                  }),
                  NSRangeException);
        EXPECT_EQ(text->length(), 0U);
        text->setAttributedString(piece(u"ab", "A", 1));
        text->append(u"cd", nullptr);
        EXPECT_EQ(raisedName([&] {
                      text->enumerateAttribute_inRange_options_usingBlock(
                          "A"_ns, {0, 4}, options, [&](NSObject*, NSRange, bool&) {
                              text->deleteCharactersInRange({0, text->length()});
                          });
                  }),
                  NSRangeException);
    }
}

// An attribute's value that touches the text from which it has just been taken away.
class Meddler : public NSObject {
    ZR_OBJECT(Meddler, NSObject)
  public:
    ~Meddler() override { text->replaceCharactersInRange_withString({0, 1}, "!!"_ns); }
    NSMutableAttributedString* text = nullptr;
};

TEST(MutableAttributedStringValues, mayChangeTheTextWhenTheyEnd) {
    const Ref<NSMutableAttributedString> text = changing(u"abcd");
    {
        const Ref<Meddler> meddler = make<Meddler>();
        meddler->text = text;
        text->addAttribute_value_range("A"_ns, meddler, {1, 2});
    }
    text->deleteCharactersInRange({0, 3});
    EXPECT_EQ(runListing(text), "!!{}") << "the letter that was left is the first one then";
    {
        const Ref<Meddler> meddler = make<Meddler>();
        meddler->text = text;
        text->addAttribute_value_range("A"_ns, meddler, {0, 2});
    }
    text->addAttribute_value_range("A"_ns, box(1), {0, 2});
    EXPECT_EQ(runListing(text), "!!!{A=1}");
}

TEST(MutableAttributedStringSize, isNoObstacle) {
    const std::u16string million(1'000'000, u'x');
    const Ref<NSMutableAttributedString> text = changing(million);
    for (NSUInteger place = 0; place < 1'000'000; place += 1000) {
        text->addAttribute_value_range("A"_ns, box(1), {place, 1});
    }
    EXPECT_EQ(text->runs().runs().size(), 2000U);
    text->addAttribute_value_range("B"_ns, box(2), {0, 1'000'000});
    EXPECT_EQ(text->runs().runs().size(), 2000U);
    text->setAttributes_range(nullptr, {0, 1'000'000});
    EXPECT_EQ(text->runs().runs().size(), 1U);
    text->deleteCharactersInRange({1, 999'998});
    EXPECT_EQ(runListing(text), "xx{}");
}

TEST(MutableAttributedStringMessages, answerByName) {
    const Ref<NSMutableAttributedString> text = changing(u"abc");
    send<void>(text, "addAttribute:value:range:"_sel, "A"_ns, box(1), NSRange{0, 1});
    send<void>(text, "addAttributes:range:"_sel, dictionary({{"B"_ns, box(2)}}), NSRange{0, 1});
    send<void>(text, "removeAttribute:range:"_sel, "A"_ns, NSRange{0, 3});
    send<void>(text, "appendAttributedString:"_sel, plainPiece(u"d"));
    send<void>(text, "replaceCharactersInRange:withString:"_sel, NSRange{1, 1}, "-"_ns);
    EXPECT_EQ(runListing(text), "a{B=2}-cd{}");
    EXPECT_EQ(raisedName([&] { send<void>(text, "appendAttributedString:"_sel, "d"_ns); }), NSInvalidArgumentException)
        << "of another kind: read as null";
    send<void>(text, "addAttributes:range:"_sel, NSNull::null(), NSRange{0, 1});
    EXPECT_EQ(runListing(text), "a{B=2}-cd{}");
}

} // namespace
} // namespace zr
