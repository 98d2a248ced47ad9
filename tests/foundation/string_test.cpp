#include <zrbasic/platform/foundation/string.h>

#include "checks.h"

#include <zrbasic/platform/foundation/character_set.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

constexpr NSUInteger hugeLength = std::numeric_limits<NSUInteger>::max();

std::u16string text(const Ref<NSString>& string) {
    return string ? std::u16string(string->view()) : u"no string";
}

TEST(StringMaking, literalsAreConstants) {
    EXPECT_EQ(text("price"_ns), u"price");
    EXPECT_EQ(text(u"\u4EF7"_ns), u"\u4EF7");
    EXPECT_EQ(text("\xE4\xBB\xB7"_ns), u"\u4EF7");
    EXPECT_EQ(text(""_ns), u"");
    const auto literal = [] { return "same"_ns; };
    EXPECT_EQ(literal().get(), literal().get());
}

TEST(StringMaking, invalidUtf8GivesNoString) {
    EXPECT_EQ(text(NSString::stringWithUTF8String("a\xC3\xA9")), u"a\u00E9");
    EXPECT_EQ(text(NSString::stringWithUTF8String("")), u"");
    EXPECT_FALSE(NSString::stringWithUTF8String("\xFF"));
    EXPECT_FALSE(NSString::stringWithUTF8String("\xED\xA0\x80"));
    EXPECT_FALSE(NSString::stringWithUTF8String(nullptr));
    EXPECT_FALSE(NSMutableString::stringWithUTF8String("\xC3"));
    EXPECT_EQ(text(NSString::fromUtf8("a\xFF")), u"a\uFFFD");
}

TEST(StringMaking, anotherStringIsTakenOver) {
    const Ref<NSString> original = "gold"_ns;
    EXPECT_EQ(NSString::stringWithString(original).get(), original.get());
    EXPECT_EQ(text(make<NSString>(&NSString::initWithString, original)), u"gold");
    const Ref<NSMutableString> changing = NSMutableString::stringWithString(original);
    const Ref<NSString> snapshot = NSString::stringWithString(changing);
    changing->appendString("!"_ns);
    EXPECT_EQ(text(snapshot), u"gold");
    EXPECT_EQ(raisedName([] { (void)NSString::stringWithString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { (void)make<NSString>(&NSString::initWithString, nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(text(NSString::string()), u"");
    EXPECT_EQ(text(make<NSString>()), u"");
}

TEST(StringParts, countCodeUnits) {
    const Ref<NSString> string = u"a\u00E9\U0001F600"_ns;
    EXPECT_EQ(string->length(), 4U);
    EXPECT_EQ(string->characterAtIndex(1), u'\u00E9');
    EXPECT_EQ(string->characterAtIndex(2), char16_t(0xD83D));
    EXPECT_EQ(text(string->substringFromIndex(2)), u"\U0001F600");
    EXPECT_EQ(text(string->substringToIndex(2)), u"a\u00E9");
    EXPECT_EQ(text(string->substringWithRange({1, 1})), u"\u00E9");
    EXPECT_EQ(string->substringToIndex(3)->length(), 3U) << "a pair may be cut";
}

TEST(StringParts, theLengthIsALegalStart) {
    const Ref<NSString> string = "abc"_ns;
    EXPECT_EQ(text(string->substringFromIndex(3)), u"");
    EXPECT_EQ(text(string->substringToIndex(3)), u"abc");
    EXPECT_EQ(string->substringToIndex(3).get(), string.get()) << "the whole is the string itself";
    EXPECT_EQ(text(string->substringWithRange({3, 0})), u"");
    EXPECT_EQ(text(""_ns->substringFromIndex(0)), u"");
    EXPECT_EQ(text(""_ns->substringWithRange({0, 0})), u"");
}

TEST(StringParts, whatLiesOutsideRaises) {
    const Ref<NSString> string = "abc"_ns;
    EXPECT_EQ(raised([&] {
                  (void)string->substringWithRange({2, hugeLength});
              }),
              "NSRangeException: -[NSString substringWithRange:]: Range {2, 18446744073709551615} out of bounds; "
              "string length 3");
    EXPECT_EQ(raised([&] { (void)string->substringFromIndex(4); }),
              "NSRangeException: -[NSString substringFromIndex:]: Index 4 out of bounds; string length 3");
    EXPECT_EQ(raisedName([&] { (void)string->substringToIndex(4); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { (void)string->substringWithRange({4, 0}); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { (void)string->substringWithRange({hugeLength, 2}); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { (void)string->substringWithRange({0, 4}); }), NSRangeException);
    EXPECT_EQ(raised([&] { (void)string->characterAtIndex(3); }),
              "NSRangeException: -[NSString characterAtIndex:]: Range or index out of bounds");
    EXPECT_EQ(raisedName([] { (void)""_ns->characterAtIndex(0); }), NSRangeException);
}

TEST(StringEquality, goesByCodeUnit) {
    const Ref<NSString> composed = u"\u00E9"_ns;
    const Ref<NSString> decomposed = u"e\u0301"_ns;
    EXPECT_FALSE(composed->isEqualToString(decomposed));
    EXPECT_FALSE(composed->isEqual(decomposed));
    EXPECT_NE(composed->hash(), decomposed->hash());
    EXPECT_TRUE("abc"_ns->isEqual(NSString::fromUtf8("abc")));
    EXPECT_EQ("abc"_ns->hash(), NSString::fromUtf8("abc")->hash());
    EXPECT_EQ("abc"_ns->hash(), NSMutableString::stringWithString("abc"_ns)->hash());
}

TEST(StringEquality, nothingButAStringIsEqual) {
    const Ref<NSString> string = "1970"_ns;
    EXPECT_FALSE(string->isEqual(nullptr));
    EXPECT_FALSE(string->isEqualToString(nullptr));
    EXPECT_FALSE(string->isEqual(NSDate::date()));
    EXPECT_FALSE(string->isEqual(make<NSObject>()));
    EXPECT_FALSE(string->isEqual(NSNull::null()));
    EXPECT_FALSE(string->isEqual(box(1970))) << "a number never equals a string";
    EXPECT_TRUE(string->isEqual(NSMutableString::stringWithString(string)));
    EXPECT_TRUE(NSMutableString::stringWithString(string)->isEqual(string));
}

TEST(StringCopying, aStringIsItsOwnCopyAndDescription) {
    const Ref<NSString> string = "abc"_ns;
    EXPECT_EQ(string->copy().get(), string.get());
    EXPECT_EQ(string->description().get(), string.get());
    const id changing = string->mutableCopy();
    EXPECT_TRUE(changing->isKindOfClass(NSMutableString::classObject()));
    EXPECT_TRUE(changing->isEqual(string));
    EXPECT_NE(changing.get(), static_cast<NSObject*>(string.get()));
}

TEST(StringJoining, appendsAndReplacesParts) {
    EXPECT_EQ(text("ab"_ns->stringByAppendingString("cd"_ns)), u"abcd");
    EXPECT_EQ(text(""_ns->stringByAppendingString(""_ns)), u"");
    EXPECT_EQ(text("abcd"_ns->stringByReplacingCharactersInRange_withString({1, 2}, "-"_ns)), u"a-d");
    EXPECT_EQ(text("abcd"_ns->stringByReplacingCharactersInRange_withString({4, 0}, "e"_ns)), u"abcde");
    EXPECT_EQ(raisedName([] { (void)"ab"_ns->stringByAppendingString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] {
                  (void)"ab"_ns->stringByReplacingCharactersInRange_withString({0, 1}, nullptr);
              }),
              NSInvalidArgumentException);
    EXPECT_EQ(raised([] {
                  (void)"abc"_ns->stringByReplacingCharactersInRange_withString({2, 5}, "x"_ns);
              }),
              "NSRangeException: -[NSString stringByReplacingCharactersInRange:withString:]: Range {2, 5} out of "
              "bounds; string length 3");
}

TEST(StringTrimming, removesMembersAtBothEnds) {
    const Ref<NSCharacterSet> blanks = NSCharacterSet::whitespaceCharacterSet();
    const Ref<NSCharacterSet> all = NSCharacterSet::whitespaceAndNewlineCharacterSet();
    EXPECT_EQ(text(u" \t a b \u3000\u200B"_ns->stringByTrimmingCharactersInSet(blanks)), u"a b");
    EXPECT_EQ(text(u"\n a\n"_ns->stringByTrimmingCharactersInSet(blanks)), u"\n a\n");
    EXPECT_EQ(text(u"\u000B\u000C\u0085 a \u2028"_ns->stringByTrimmingCharactersInSet(all)), u"a");
    EXPECT_EQ(text(" \n "_ns->stringByTrimmingCharactersInSet(all)), u"");
    const Ref<NSString> clean = "a b"_ns;
    EXPECT_EQ(clean->stringByTrimmingCharactersInSet(all).get(), clean.get());
    EXPECT_EQ(raisedName([&] { (void)clean->stringByTrimmingCharactersInSet(nullptr); }), NSInvalidArgumentException);
}

TEST(StringTrimming, aChangingStringGivesASnapshot) {
    const Ref<NSMutableString> changing = NSMutableString::stringWithString("a b"_ns);
    const Ref<NSString> trimmed = changing->stringByTrimmingCharactersInSet(NSCharacterSet::whitespaceCharacterSet());
    changing->appendString("c"_ns);
    EXPECT_EQ(text(trimmed), u"a b");
    EXPECT_FALSE(trimmed->isKindOfClass(NSMutableString::classObject()));
}

TEST(StringMessages, operationsAnswerByName) {
    const Ref<NSString> string = "12 gold"_ns;
    EXPECT_EQ(send<NSUInteger>(string, "length"_sel), 7U);
    EXPECT_EQ(send<NSInteger>(string, "integerValue"_sel), 12);
    EXPECT_TRUE(send<bool>(string, "hasPrefix:"_sel, "12"_ns));
    EXPECT_EQ(send<NSRange>(string, "rangeOfString:"_sel, "gold"_ns), NSMakeRange(3, 4));
    EXPECT_EQ(text(send<Ref<NSString>>(string, "substringWithRange:"_sel, NSMakeRange(3, 2))), u"go");
    EXPECT_EQ(text(send<Ref<NSString>>(NSString::classObject(), "stringWithString:"_sel, string)), u"12 gold");
    EXPECT_EQ(send<NSUInteger>(nullptr, "length"_sel), 0U);
    EXPECT_EQ(raisedName([&] { (void)send<bool>(string, "hasPrefix:"_sel, NSDate::date()); }),
              NSInvalidArgumentException)
        << "an object of another kind arrives as null";
}

TEST(StringMessages, theNullObjectIsNoText) {
    const Ref<NSString> string = "abc"_ns;
    EXPECT_FALSE(send<bool>(string, "isEqualToString:"_sel, NSNull::null()));
    EXPECT_EQ(send<NSInteger>(string, "compare:"_sel, NSNull::null()), NSOrderedDescending);
    for (const char* name :
         {"rangeOfString:", "containsString:", "hasPrefix:", "hasSuffix:", "stringByAppendingString:",
          "componentsSeparatedByString:", "stringByTrimmingCharactersInSet:", "stringByAppendingPathComponent:",
          "localizedStandardRangeOfString:"}) {
        EXPECT_EQ(raisedName([&] { (void)string->performSelector_withObject(sel_registerName(name), NSNull::null()); }),
                  NSInvalidArgumentException)
            << name;
    }
}

TEST(StringMessages, onlySomeConversionsExist) {
    const Ref<NSString> string = "12"_ns;
    for (const char* name : {"intValue", "integerValue", "longLongValue", "floatValue", "doubleValue", "boolValue"}) {
        EXPECT_TRUE(string->respondsToSelector(sel_registerName(name))) << name;
    }
    for (const char* name : {"unsignedIntegerValue", "unsignedLongLongValue", "unsignedIntValue", "longValue",
                             "charValue", "unsignedCharValue", "shortValue"}) {
        EXPECT_FALSE(string->respondsToSelector(sel_registerName(name))) << name;
        EXPECT_EQ(raisedName([&] { send(string, sel_registerName(name)); }), NSInvalidArgumentException) << name;
    }
}

TEST(StringMessages, theEncodedTextIsTheCallers) {
    const std::u16string lone = {u'a', char16_t(0xD800)};
    EXPECT_EQ(NSString::fromUtf16(lone)->UTF8String(), "a\xEF\xBF\xBD");
    EXPECT_EQ(u"\U0001F600"_ns->utf8(), "\xF0\x9F\x98\x80");
    EXPECT_EQ(NSString::fromUtf16(std::u16string(2, u'\0'))->UTF8String(), std::string(2, '\0'));
    EXPECT_EQ(""_ns->UTF8String(), "");
}

TEST(StringHashes, areStableAndSpread) {
    std::set<NSUInteger> seen;
    for (int i = 0; i < 1000; ++i) {
        const Ref<NSString> key = NSString::stringWithFormat("key%d"_ns, i);
        const NSUInteger hash = key->hash();
        EXPECT_EQ(hash, key->hash());
        seen.insert(hash);
    }
    EXPECT_EQ(seen.size(), 1000U);
}

} // namespace
} // namespace zr
