#include <zrbasic/platform/foundation/attributed_string.h>

#include "checks.h"
#include "run_listing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {
namespace {

using test::raised;
using test::raisedName;
using test::runListing;

constexpr NSUInteger hugeIndex = std::numeric_limits<NSUInteger>::max();

Ref<NSAttributedString> plain(NSString* text) {
    return make<NSAttributedString>(&NSAttributedString::initWithString, text);
}

Ref<NSAttributedString> styled(NSString* text, NSDictionary* attributes) {
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, text, attributes);
}

/// "ab" with A=1, "cd" with A=1 and B=2, "ef" without attributes.
Ref<NSAttributedString> sample() {
    const Ref<NSMutableAttributedString> text =
        make<NSMutableAttributedString>(&NSAttributedString::initWithString, "abcdef"_ns);
    text->addAttribute_value_range("A"_ns, box(1), {0, 4});
    text->addAttribute_value_range("B"_ns, box(2), {2, 2});
    return cast<NSAttributedString>(text->copy());
}

TEST(AttributedStringMaking, givesTheWholeTextOneSetOfAttributes) {
    EXPECT_EQ(runListing(plain("abc"_ns)), "abc{}");
    EXPECT_EQ(runListing(styled("abc"_ns, dictionary({{"A"_ns, box(1)}}))), "abc{A=1}");
    EXPECT_EQ(runListing(styled("abc"_ns, nullptr)), "abc{}");
    EXPECT_EQ(runListing(styled("abc"_ns, NSDictionary::dictionary())), "abc{}");
    EXPECT_EQ(runListing(styled("abc"_ns, dictionary({{"A"_ns, NSNull::null()}}))), "abc{A=<null>}");
    const Ref<NSAttributedString> copy =
        make<NSAttributedString>(&NSAttributedString::initWithAttributedString, sample());
    EXPECT_EQ(runListing(copy), "ab{A=1}cd{A=1 B=2}ef{}");
}

TEST(AttributedStringMaking, withoutATextIsEmpty) {
    EXPECT_EQ(make<NSAttributedString>()->length(), 0U);
    EXPECT_EQ(make<NSAttributedString>()->string()->view(), u"");
    EXPECT_TRUE(make<NSAttributedString>()->isEqual(plain(""_ns)));
    EXPECT_EQ(runListing(styled(""_ns, dictionary({{"A"_ns, box(1)}}))), "");
}

TEST(AttributedStringMaking, raisesForNull) {
    EXPECT_EQ(raisedName([] { (void)plain(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { (void)styled(nullptr, NSDictionary::dictionary()); }), NSInvalidArgumentException);
    EXPECT_EQ(
        raisedName([] { (void)make<NSAttributedString>(&NSAttributedString::initWithAttributedString, nullptr); }),
        NSInvalidArgumentException);
}

TEST(AttributedStringMaking, copiesTextAndDictionary) {
    const Ref<NSMutableString> text = NSMutableString::stringWithString("abc"_ns);
    const Ref<NSMutableDictionary> attributes = NSMutableDictionary::fromEntries({{"A"_ns, box(1)}});
    const Ref<NSAttributedString> made = styled(text, attributes);
    text->appendString("d"_ns);
    attributes->setObject_forKey(box(2), "A"_ns);
    attributes->setObject_forKey(box(3), "B"_ns);
    EXPECT_EQ(runListing(made), "abc{A=1}");
}

TEST(AttributedStringMaking, sharesADictionaryThatCannotChange) {
    const Ref<NSDictionary> attributes = dictionary({{"A"_ns, box(1)}});
    EXPECT_EQ(styled("abc"_ns, attributes)->attributesAtIndex_effectiveRange(0, nullptr).get(), attributes.get());
    EXPECT_EQ(styled("def"_ns, attributes)->attributesAtIndex_effectiveRange(2, nullptr).get(), attributes.get());
}

TEST(AttributedStringReading, givesTheRunOfAPlace) {
    const struct {
        NSUInteger index;
        NSRange run;
        NSUInteger count;
    } rows[] = {{0, {0, 2}, 1}, {1, {0, 2}, 1}, {2, {2, 2}, 2}, {3, {2, 2}, 2}, {4, {4, 2}, 0}, {5, {4, 2}, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.index);
        NSRange run;
        EXPECT_EQ(sample()->attributesAtIndex_effectiveRange(row.index, &run)->count(), row.count);
        EXPECT_EQ(run, row.run);
    }
}

TEST(AttributedStringReading, givesOneAttributeWithTheRunOfAll) {
    const Ref<NSAttributedString> text = sample();
    NSRange run;
    EXPECT_TRUE(text->attribute_atIndex_effectiveRange("A"_ns, 3, &run)->isEqual(box(1)));
    EXPECT_EQ(run, (NSRange{2, 2}));
    EXPECT_FALSE(text->attribute_atIndex_effectiveRange("B"_ns, 0, nullptr));
    EXPECT_FALSE(text->attribute_atIndex_effectiveRange("C"_ns, 5, &run));
    EXPECT_EQ(run, (NSRange{4, 2}));
}

TEST(AttributedStringReading, givesTheLongestStretchOfOneAttribute) {
    const struct {
        const char* name;
        NSUInteger index;
        NSRange limit;
        NSRange stretch;
        bool isThere;
    } rows[] = {
        {"A", 0, {0, 6}, {0, 4}, true},  {"A", 3, {0, 6}, {0, 4}, true},  {"A", 5, {0, 6}, {4, 2}, false},
        {"A", 2, {1, 2}, {1, 2}, true},  {"B", 0, {0, 6}, {0, 2}, false}, {"B", 5, {0, 6}, {4, 2}, false},
        {"C", 3, {0, 6}, {0, 6}, false}, {"C", 3, {2, 3}, {2, 3}, false}, {"A", 3, {3, 1}, {3, 1}, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.name) + std::to_string(row.index));
        NSRange stretch;
        const id value = sample()->attribute_atIndex_longestEffectiveRange_inRange(NSString::fromUtf8(row.name),
                                                                                   row.index, &stretch, row.limit);
        EXPECT_EQ(value != nullptr, row.isThere);
        EXPECT_EQ(stretch, row.stretch);
    }
    EXPECT_TRUE(sample()->attribute_atIndex_longestEffectiveRange_inRange("A"_ns, 0, nullptr, {0, 1}));
}

TEST(AttributedStringReading, raisesForPlacesOutsideAndForNullNames) {
    const Ref<NSAttributedString> text = sample();
    for (const NSUInteger index : {NSUInteger(6), NSUInteger(7), NSUInteger(NSNotFound), hugeIndex}) {
        SCOPED_TRACE(index);
        NSRange run;
        EXPECT_EQ(raisedName([&] { (void)text->attributesAtIndex_effectiveRange(index, &run); }), NSRangeException);
        EXPECT_EQ(raisedName([&] { (void)text->attribute_atIndex_effectiveRange("A"_ns, index, nullptr); }),
                  NSRangeException);
        EXPECT_EQ(raisedName([&] {
                      (void)text->attribute_atIndex_longestEffectiveRange_inRange("A"_ns, index, &run, {0, 6});
                  }),
                  NSRangeException);
        EXPECT_EQ(raisedName([&] { (void)text->attributedSubstringFromRange({index, 1}); }), NSRangeException);
        EXPECT_EQ(raisedName([&] { (void)text->attributedSubstringFromRange({1, index}); }), NSRangeException);
    }
    EXPECT_EQ(raisedName([&] { (void)plain(""_ns)->attributesAtIndex_effectiveRange(0, nullptr); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { (void)text->attribute_atIndex_effectiveRange(nullptr, 0, nullptr); }),
              NSInvalidArgumentException);
    const auto stretch = [&](NSString* name, NSUInteger index, NSRange limit) {
        return raisedName(
            [&] { (void)text->attribute_atIndex_longestEffectiveRange_inRange(name, index, nullptr, limit); });
    };
    EXPECT_EQ(stretch(nullptr, 0, {0, 1}), NSInvalidArgumentException);
    EXPECT_EQ(stretch("A"_ns, 1, {2, 2}), NSRangeException) << "before the limit";
    EXPECT_EQ(stretch("A"_ns, 4, {2, 2}), NSRangeException) << "behind the limit";
    EXPECT_EQ(stretch("A"_ns, 4, {4, 3}), NSRangeException) << "the limit ends behind the text";
    EXPECT_EQ(stretch("A"_ns, 0, {0, 0}), NSRangeException);
}

TEST(AttributedStringReading, substringsKeepTheirRuns) {
    const Ref<NSAttributedString> text = sample();
    EXPECT_EQ(runListing(text->attributedSubstringFromRange({1, 4})), "b{A=1}cd{A=1 B=2}e{}");
    EXPECT_EQ(runListing(text->attributedSubstringFromRange({2, 2})), "cd{A=1 B=2}");
    EXPECT_EQ(runListing(text->attributedSubstringFromRange({4, 2})), "ef{}");
    EXPECT_EQ(text->attributedSubstringFromRange({6, 0})->length(), 0U);
    EXPECT_EQ(text->attributedSubstringFromRange({0, 6}).get(), text.get()) << "the whole needs no copy";
}

std::string walk(NSAttributedString* text, NSRange range, NSUInteger options) {
    std::string log;
    text->enumerateAttributesInRange_options_usingBlock(
        range, options, [&](NSDictionary* attributes, NSRange run, bool&) {
            log += std::to_string(run.location) + '+' + std::to_string(run.length) + ':' +
                   std::to_string(attributes->count()) + ' ';
        });
    return log;
}

TEST(AttributedStringWalks, deliverEveryRunCutToTheRange) {
    EXPECT_EQ(walk(sample(), {0, 6}, 0), "0+2:1 2+2:2 4+2:0 ");
    EXPECT_EQ(walk(sample(), {1, 4}, 0), "1+1:1 2+2:2 4+1:0 ");
    EXPECT_EQ(walk(sample(), {1, 4}, NSAttributedStringEnumerationReverse), "4+1:0 2+2:2 1+1:1 ");
    EXPECT_EQ(walk(sample(), {0, 6}, NSAttributedStringEnumerationLongestEffectiveRangeNotRequired),
              "0+2:1 2+2:2 4+2:0 ");
    EXPECT_EQ(walk(sample(), {3, 0}, 0), "");
    EXPECT_EQ(walk(plain(""_ns), {0, 0}, NSAttributedStringEnumerationReverse), "");
}

TEST(AttributedStringWalks, joinRunsThatDifferInOtherAttributes) {
    std::string log;
    const auto visitor = [&](NSObject* value, NSRange range, bool&) {
        log += std::to_string(range.location) + '+' + std::to_string(range.length) + (value ? "! " : "- ");
    };
    sample()->enumerateAttribute_inRange_options_usingBlock("A"_ns, {0, 6}, 0, visitor);
    EXPECT_EQ(log, "0+4! 4+2- ");
    log.clear();
    sample()->enumerateAttribute_inRange_options_usingBlock("B"_ns, {1, 4}, NSAttributedStringEnumerationReverse,
                                                            visitor);
    EXPECT_EQ(log, "4+1- 2+2! 1+1- ");
    log.clear();
    sample()->enumerateAttribute_inRange_options_usingBlock("C"_ns, {0, 6}, 0, visitor);
    EXPECT_EQ(log, "0+6- ");
}

TEST(AttributedStringWalks, endWhenTold) {
    int calls = 0;
    sample()->enumerateAttributesInRange_options_usingBlock({0, 6}, 0, [&](NSDictionary*, NSRange, bool& stop) {
        ++calls;
        stop = true;
    });
    EXPECT_EQ(calls, 1);
    sample()->enumerateAttribute_inRange_options_usingBlock("B"_ns, {0, 6}, 0,
                                                            [&](NSObject* value, NSRange, bool& stop) {
                                                                ++calls;
                                                                stop = value != nullptr;
                                                            });
    EXPECT_EQ(calls, 3);
    sample()->enumerateAttributesInRange_options_usingBlock({0, 6}, 0, nullptr);
    sample()->enumerateAttribute_inRange_options_usingBlock("B"_ns, {0, 6}, 0, nullptr);
}

TEST(AttributedStringWalks, raiseForBadRangesAndNullNames) {
    const auto nothing = [](NSDictionary*, NSRange, bool&) {};
    EXPECT_EQ(raisedName([&] {
                  sample()->enumerateAttributesInRange_options_usingBlock({5, 2}, 0, nothing);
              }),
              NSRangeException);
    EXPECT_EQ(raisedName([&] {
                  sample()->enumerateAttributesInRange_options_usingBlock({1, hugeIndex}, 0, nothing);
              }),
              NSRangeException);
    const auto neither = [](NSObject*, NSRange, bool&) {};
    EXPECT_EQ(raisedName([&] {
                  sample()->enumerateAttribute_inRange_options_usingBlock("A"_ns, {7, 0}, 0, neither);
              }),
              NSRangeException);
    EXPECT_EQ(raisedName([&] {
                  sample()->enumerateAttribute_inRange_options_usingBlock(nullptr, {0, 1}, 0, neither);
              }),
              NSInvalidArgumentException);
}

TEST(AttributedStringEquality, isThatOfTextAndAttributesAtEveryPlace) {
    EXPECT_TRUE(sample()->isEqual(sample()));
    const Ref<NSAttributedString> text = sample();
    EXPECT_TRUE(text->isEqual(text));
    EXPECT_EQ(sample()->hash(), sample()->hash());
    EXPECT_TRUE(
        styled("ab"_ns, dictionary({{"A"_ns, box(1)}}))->isEqual(styled("ab"_ns, dictionary({{"A"_ns, box(1.0)}}))))
        << "values are compared as values";
    EXPECT_FALSE(
        styled("ab"_ns, dictionary({{"A"_ns, box(1)}}))->isEqual(styled("ab"_ns, dictionary({{"A"_ns, box(2)}}))));
    EXPECT_FALSE(plain("ab"_ns)->isEqual(styled("ab"_ns, dictionary({{"A"_ns, box(1)}}))));
    EXPECT_EQ(plain("ab"_ns)->hash(), styled("ab"_ns, dictionary({{"A"_ns, box(1)}}))->hash()) << "by the text alone";
    EXPECT_FALSE(plain("ab"_ns)->isEqual(plain("ac"_ns)));
    EXPECT_FALSE(plain(u"\u00E9"_ns)->isEqual(plain(u"e\u0301"_ns))) << "by code unit";
    EXPECT_FALSE(plain("ab"_ns)->isEqual("ab"_ns)) << "a plain string is another kind";
    EXPECT_FALSE(plain("ab"_ns)->isEqual(nullptr));
    EXPECT_FALSE(plain("ab"_ns)->isEqual(NSNull::null()));
    EXPECT_FALSE(plain("ab"_ns)->isEqualToAttributedString(nullptr));
}

TEST(AttributedStringEquality, doesNotMindHowTheRunsWereCut) {
    // A mutable value may change after it was put in, and make equal what had been cut in two.
    const Ref<NSMutableString> value = NSMutableString::stringWithString("x"_ns);
    const Ref<NSMutableAttributedString> text =
        make<NSMutableAttributedString>(&NSAttributedString::initWithString, "abcd"_ns);
    text->addAttribute_value_range("A"_ns, value, {0, 2});
    text->addAttribute_value_range("A"_ns, "y"_ns, {2, 2});
    EXPECT_FALSE(text->isEqual(styled("abcd"_ns, dictionary({{"A"_ns, "y"_ns}}))));
    value->setString("y"_ns);
    EXPECT_TRUE(text->isEqual(styled("abcd"_ns, dictionary({{"A"_ns, "y"_ns}}))));
    EXPECT_TRUE(styled("abcd"_ns, dictionary({{"A"_ns, "y"_ns}}))->isEqual(text));
}

TEST(AttributedStringCopies, areTheReceiverWhenItCannotChange) {
    const Ref<NSAttributedString> text = sample();
    EXPECT_EQ(text->copy().get(), text.get());
    const id copy = text->mutableCopy();
    auto* const changing = cast<NSMutableAttributedString>(copy);
    ASSERT_NE(changing, nullptr);
    EXPECT_TRUE(changing->isEqual(text));
    changing->deleteCharactersInRange({0, 5});
    EXPECT_EQ(runListing(changing), "f{}");
    EXPECT_EQ(runListing(text), "ab{A=1}cd{A=1 B=2}ef{}");
}

TEST(AttributedStringDescription, writesEachRunWithItsAttributes) {
    EXPECT_EQ(sample()->description()->utf8(), "ab{\n    A = 1;\n}cd{\n    A = 1;\n    B = 2;\n}ef{\n}");
    EXPECT_EQ(plain(""_ns)->description()->utf8(), "");
}

TEST(AttributedStringMessages, answerByName) {
    const id text = sample();
    EXPECT_EQ(send<NSUInteger>(text, "length"_sel), 6U);
    EXPECT_EQ(send<Ref<NSString>>(text, "string"_sel)->view(), u"abcdef");
    EXPECT_TRUE(send<bool>(text, "isEqualToAttributedString:"_sel, sample()));
    EXPECT_FALSE(send<bool>(text, "isEqualToAttributedString:"_sel, "abcdef"_ns)) << "of another kind: read as null";
    NSRange run;
    EXPECT_TRUE(send<id>(text, "attribute:atIndex:effectiveRange:"_sel, "B"_ns, 3, &run));
    EXPECT_EQ(run, (NSRange{2, 2}));
    EXPECT_EQ(raisedName([&] {
                  send<id>(class_createInstance(NSAttributedString::classObject()), "initWithString:"_sel, box(1));
              }),
              NSInvalidArgumentException);
}

} // namespace
} // namespace zr
