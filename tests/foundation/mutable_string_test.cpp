#include <zrbasic/platform/foundation/mutable_string.h>

#include "checks.h"

#include <zrbasic/platform/foundation/date.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {
namespace {

using test::raised;
using test::raisedName;

constexpr NSUInteger hugeLength = std::numeric_limits<NSUInteger>::max();

Ref<NSMutableString> changing(std::u16string_view units) {
    return NSMutableString::stringWithString(NSString::fromUtf16(units));
}

TEST(MutableStringMaking, startsEmptyOrWithAText) {
    EXPECT_EQ(NSMutableString::string()->length(), 0U);
    EXPECT_NE(NSMutableString::string().get(), NSMutableString::string().get());
    EXPECT_EQ(NSMutableString::stringWithCapacity(10)->view(), u"");
    EXPECT_EQ(NSMutableString::stringWithCapacity(hugeLength)->view(), u"") << "the capacity is only a hint";
    EXPECT_TRUE(NSMutableString::fromUtf8("a\xFF")->isEqual(u"a\uFFFD"_ns));
    EXPECT_TRUE(NSMutableString::fromUtf16(u"ab")->isKindOfClass(NSMutableString::classObject()));
    EXPECT_EQ(NSMutableString::stringWithFormat("%d-%@"_ns, 7, "a"_ns)->view(), u"7-a");
    EXPECT_EQ(raisedName([] { (void)NSMutableString::stringWithString(nullptr); }), NSInvalidArgumentException);
}

TEST(MutableStringEditing, everyOperationChangesTheText) {
    const Ref<NSMutableString> string = changing(u"bd");
    string->appendString("e"_ns);
    EXPECT_EQ(string->view(), u"bde");
    string->insertString_atIndex("a"_ns, 0);
    string->insertString_atIndex("c"_ns, 2);
    EXPECT_EQ(string->view(), u"abcde");
    string->insertString_atIndex("f"_ns, 5);
    EXPECT_EQ(string->view(), u"abcdef") << "the length is a legal place";
    string->deleteCharactersInRange({1, 2});
    EXPECT_EQ(string->view(), u"adef");
    string->replaceCharactersInRange_withString({1, 3}, "-"_ns);
    EXPECT_EQ(string->view(), u"a-");
    string->appendFormat("%02lx"_ns, 255L);
    EXPECT_EQ(string->view(), u"a-ff");
    string->setString(""_ns);
    EXPECT_EQ(string->view(), u"");
}

TEST(MutableStringEditing, occurrencesAreReplacedAndCounted) {
    const Ref<NSMutableString> string = changing(u"aaaa");
    EXPECT_EQ(string->replaceOccurrencesOfString_withString_options_range("aa"_ns, "b"_ns, 0, {0, 4}), 2U);
    EXPECT_EQ(string->view(), u"bb");
    EXPECT_EQ(string->replaceOccurrencesOfString_withString_options_range("x"_ns, "y"_ns, 0, {0, 2}), 0U);
    EXPECT_EQ(string->replaceOccurrencesOfString_withString_options_range(""_ns, "y"_ns, 0, {0, 2}), 0U);
    EXPECT_EQ(string->replaceOccurrencesOfString_withString_options_range("(b)"_ns, "$1$1"_ns,
                                                                          NSRegularExpressionSearch, {1, 1}),
              1U);
    EXPECT_EQ(string->view(), u"bbb");
    const Ref<NSMutableString> accented = changing(u"\u00E9e\u0301");
    EXPECT_EQ(
        accented->replaceOccurrencesOfString_withString_options_range(u"\u00E9"_ns, "e"_ns, NSLiteralSearch, {0, 3}),
        1U);
    EXPECT_EQ(accented->view(), u"ee\u0301");
}

TEST(MutableStringEditing, takesItselfAsArgument) {
    const Ref<NSMutableString> string = changing(u"abc");
    string->appendString(string);
    EXPECT_EQ(string->view(), u"abcabc");
    string->insertString_atIndex(string, 1);
    EXPECT_EQ(string->view(), u"aabcabcbcabc");
    string->replaceCharactersInRange_withString({0, 11}, string);
    EXPECT_EQ(string->view(), u"aabcabcbcabcc");
    string->setString(string);
    EXPECT_EQ(string->view(), u"aabcabcbcabcc");
    EXPECT_EQ(string->replaceOccurrencesOfString_withString_options_range(string, "x"_ns, 0, {0, 13}), 1U);
    EXPECT_EQ(string->view(), u"x");
}

TEST(MutableStringEditing, whatLiesOutsideRaisesAndChangesNothing) {
    const Ref<NSMutableString> string = changing(u"abc");
    EXPECT_EQ(raised([&] {
                  string->replaceCharactersInRange_withString({2, hugeLength}, "x"_ns);
              }),
              "NSRangeException: -[NSMutableString replaceCharactersInRange:withString:]: Range {2, "
              "18446744073709551615} out of bounds; string length 3");
    EXPECT_EQ(raisedName([&] { string->deleteCharactersInRange({3, 1}); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { string->insertString_atIndex("x"_ns, 4); }), NSRangeException);
    EXPECT_EQ(raisedName([&] {
                  string->replaceOccurrencesOfString_withString_options_range("a"_ns, "b"_ns, 0, {0, 4});
              }),
              NSRangeException);
    EXPECT_EQ(string->view(), u"abc");
}

TEST(MutableStringEditing, nullRaisesAndChangesNothing) {
    const Ref<NSMutableString> string = changing(u"abc");
    EXPECT_EQ(raisedName([&] { string->appendString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { string->setString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { string->insertString_atIndex(nullptr, 0); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] {
                  string->replaceCharactersInRange_withString({0, 1}, nullptr);
              }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { string->appendFormat(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { send(string, "appendString:"_sel, NSDate::date()); }), NSInvalidArgumentException);
    EXPECT_EQ(string->view(), u"abc");
}

TEST(MutableStringIdentity, aCopyNoLongerChanges) {
    const Ref<NSMutableString> string = changing(u"abc");
    const id copy = string->copy();
    EXPECT_FALSE(copy->isKindOfClass(NSMutableString::classObject()));
    const id second = string->mutableCopy();
    EXPECT_TRUE(second->isKindOfClass(NSMutableString::classObject()));
    string->appendString("d"_ns);
    EXPECT_TRUE(copy->isEqual("abc"_ns));
    EXPECT_TRUE(second->isEqual("abc"_ns));
    EXPECT_FALSE(string->isEqual(copy));
}

TEST(MutableStringIdentity, theHashFollowsTheText) {
    const Ref<NSMutableString> string = changing(u"abc");
    EXPECT_EQ(string->hash(), "abc"_ns->hash());
    string->appendString("d"_ns);
    EXPECT_EQ(string->hash(), "abcd"_ns->hash());
    EXPECT_TRUE(string->isEqualToString("abcd"_ns));
    EXPECT_EQ(string->description().get(), string.get());
}

TEST(MutableStringIdentity, operationsAnswerByName) {
    const id string = send<id>(NSMutableString::classObject(), "string"_sel);
    ASSERT_TRUE(string->isKindOfClass(NSMutableString::classObject()));
    send(string, "appendString:"_sel, "12"_ns);
    send(string, "insertString:atIndex:"_sel, "-"_ns, NSUInteger(0));
    EXPECT_EQ(send<NSInteger>(string, "integerValue"_sel), -12);
    send(string, "deleteCharactersInRange:"_sel, NSMakeRange(0, 2));
    EXPECT_TRUE(string->isEqual("2"_ns));
    EXPECT_FALSE("2"_ns->respondsToSelector("appendString:"_sel));
}

} // namespace
} // namespace zr
