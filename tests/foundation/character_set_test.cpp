#include <zrbasic/platform/foundation/character_set.h>

#include "checks.h"

#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {
namespace {

using test::raisedName;

std::size_t memberCount(NSCharacterSet* set) {
    std::size_t count = 0;
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        count += set->longCharacterIsMember(c) ? 1 : 0;
    }
    return count;
}

Ref<NSCharacterSet> setOf(NSString* members) {
    return NSCharacterSet::characterSetWithCharactersInString(members);
}

TEST(WhitespaceSets, holdExactlyTheirMembers) {
    EXPECT_EQ(memberCount(NSCharacterSet::whitespaceCharacterSet()), 19U);
    EXPECT_EQ(memberCount(NSCharacterSet::newlineCharacterSet()), 7U);
    EXPECT_EQ(memberCount(NSCharacterSet::whitespaceAndNewlineCharacterSet()), 26U);
    EXPECT_TRUE(NSCharacterSet::whitespaceCharacterSet()->characterIsMember(0x200B));
    EXPECT_FALSE(NSCharacterSet::whitespaceCharacterSet()->characterIsMember(u'\n'));
    EXPECT_TRUE(NSCharacterSet::newlineCharacterSet()->characterIsMember(0x85));
    for (const char16_t c : {0x180E, 0xFEFF, 0x1C, 0x1F}) {
        EXPECT_FALSE(NSCharacterSet::whitespaceAndNewlineCharacterSet()->characterIsMember(c)) << static_cast<int>(c);
    }
}

TEST(ReadyMadeSets, knowEveryScript) {
    const Ref<NSCharacterSet> digits = NSCharacterSet::decimalDigitCharacterSet();
    EXPECT_TRUE(digits->characterIsMember(u'7'));
    EXPECT_TRUE(digits->characterIsMember(u'\u0663'));
    EXPECT_TRUE(digits->characterIsMember(u'\uFF13'));
    EXPECT_TRUE(digits->longCharacterIsMember(U'\U0001D7D8'));
    EXPECT_FALSE(digits->characterIsMember(u'\u00BD'));
    const Ref<NSCharacterSet> letters = NSCharacterSet::letterCharacterSet();
    EXPECT_TRUE(letters->characterIsMember(u'\u4EF7'));
    EXPECT_TRUE(letters->characterIsMember(u'\u0301')) << "marks count as letters";
    EXPECT_FALSE(letters->characterIsMember(u'7'));
    EXPECT_TRUE(NSCharacterSet::alphanumericCharacterSet()->isSupersetOfSet(letters));
    EXPECT_TRUE(NSCharacterSet::alphanumericCharacterSet()->characterIsMember(u'\u00BD'));
    EXPECT_TRUE(NSCharacterSet::uppercaseLetterCharacterSet()->characterIsMember(u'A'));
    EXPECT_FALSE(NSCharacterSet::lowercaseLetterCharacterSet()->characterIsMember(u'A'));
    EXPECT_TRUE(NSCharacterSet::punctuationCharacterSet()->characterIsMember(u'!'));
    EXPECT_TRUE(NSCharacterSet::controlCharacterSet()->characterIsMember(0));
}

TEST(ReadyMadeSets, areMadeOnce) {
    EXPECT_EQ(NSCharacterSet::letterCharacterSet().get(), NSCharacterSet::letterCharacterSet().get());
    EXPECT_EQ(NSCharacterSet::URLQueryAllowedCharacterSet().get(), NSCharacterSet::URLQueryAllowedCharacterSet().get());
    EXPECT_NE(NSCharacterSet::letterCharacterSet().get(), NSCharacterSet::alphanumericCharacterSet().get());
}

std::string allowedAscii(NSCharacterSet* set) {
    std::string result;
    for (char16_t c = 0x21; c < 0x7F; ++c) {
        const bool isLetterOrDigit = (c >= u'0' && c <= u'9') || ((c | 0x20) >= u'a' && (c | 0x20) <= u'z');
        if (set->characterIsMember(c) && !isLetterOrDigit) {
            result.push_back(static_cast<char>(c));
        }
    }
    return result;
}

TEST(UrlSets, holdWhatMayStandUnescaped) {
    EXPECT_EQ(allowedAscii(NSCharacterSet::URLQueryAllowedCharacterSet()), "!$&'()*+,-./:;=?@_~");
    EXPECT_EQ(allowedAscii(NSCharacterSet::URLFragmentAllowedCharacterSet()), "!$&'()*+,-./:;=?@_~");
    EXPECT_EQ(allowedAscii(NSCharacterSet::URLPathAllowedCharacterSet()), "!$&'()*+,-./:=@_~");
    EXPECT_EQ(allowedAscii(NSCharacterSet::URLUserAllowedCharacterSet()), "!$&'()*+,-.;=_~");
    EXPECT_EQ(allowedAscii(NSCharacterSet::URLPasswordAllowedCharacterSet()), "!$&'()*+,-.;=_~");
    EXPECT_EQ(allowedAscii(NSCharacterSet::URLHostAllowedCharacterSet()), "!$&'()*+,-.:;=[]_~");
    EXPECT_EQ(memberCount(NSCharacterSet::URLQueryAllowedCharacterSet()), 62U + 19U);
}

TEST(SetsOfAString, takeWholeCodePoints) {
    const Ref<NSCharacterSet> set = setOf(u"a\U0001F600"_ns);
    EXPECT_TRUE(set->characterIsMember(u'a'));
    EXPECT_TRUE(set->longCharacterIsMember(U'\U0001F600'));
    EXPECT_FALSE(set->characterIsMember(0xD83D)) << "half a pair is no member";
    EXPECT_EQ(memberCount(set), 2U);
    EXPECT_EQ(memberCount(setOf(""_ns)), 0U);
    const std::u16string lone = {char16_t(0xD83D)};
    EXPECT_TRUE(setOf(NSString::fromUtf16(lone))->characterIsMember(0xD83D));
    EXPECT_EQ(raisedName([] { (void)setOf(nullptr); }), NSInvalidArgumentException);
}

TEST(SetsOfARange, endAtTheLastCodePoint) {
    EXPECT_EQ(memberCount(NSCharacterSet::characterSetWithRange({u'a', 3})), 3U);
    EXPECT_EQ(memberCount(NSCharacterSet::characterSetWithRange({u'a', 0})), 0U);
    EXPECT_EQ(memberCount(NSCharacterSet::characterSetWithRange({0x10FFFF, 9})), 1U);
    EXPECT_EQ(memberCount(NSCharacterSet::characterSetWithRange({0x110000, 9})), 0U);
    const NSUInteger huge = std::numeric_limits<NSUInteger>::max();
    EXPECT_EQ(memberCount(NSCharacterSet::characterSetWithRange({0, huge})), 0x110000U);
    EXPECT_EQ(memberCount(NSCharacterSet::characterSetWithRange({huge, huge})), 0U);
}

TEST(InvertedSets, holdEverythingElse) {
    const Ref<NSCharacterSet> digits = NSCharacterSet::characterSetWithRange({u'0', 10});
    const Ref<NSCharacterSet> others = digits->invertedSet();
    EXPECT_FALSE(others->characterIsMember(u'5'));
    EXPECT_TRUE(others->characterIsMember(u'/'));
    EXPECT_TRUE(others->characterIsMember(u':'));
    EXPECT_TRUE(others->longCharacterIsMember(0x10FFFF));
    EXPECT_EQ(memberCount(others), 0x110000U - 10);
    EXPECT_TRUE(others->invertedSet()->isEqual(digits));
    EXPECT_EQ(memberCount(make<NSCharacterSet>()->invertedSet()), 0x110000U);
    EXPECT_FALSE(others->longCharacterIsMember(0x110000));
}

TEST(SetEquality, goesByMembers) {
    const Ref<NSCharacterSet> fromText = setOf("cab"_ns);
    const Ref<NSCharacterSet> fromRange = NSCharacterSet::characterSetWithRange({u'a', 3});
    EXPECT_TRUE(fromText->isEqual(fromRange));
    EXPECT_EQ(fromText->hash(), fromRange->hash());
    EXPECT_FALSE(fromText->isEqual(setOf("ab"_ns)));
    EXPECT_FALSE(fromText->isEqual(nullptr));
    EXPECT_FALSE(fromText->isEqual(NSNull::null()));
    EXPECT_FALSE(fromText->isEqual("abc"_ns));
    EXPECT_FALSE(fromText->isEqual(NSDate::date()));
    EXPECT_EQ(fromText->copy().get(), static_cast<NSObject*>(fromText.get()));
    EXPECT_FALSE(fromText->isSupersetOfSet(nullptr));
    EXPECT_FALSE(fromText->isSupersetOfSet(setOf("abd"_ns)));
}

TEST(MutableSets, changeInPlace) {
    const Ref<NSMutableCharacterSet> set = make<NSMutableCharacterSet>();
    set->addCharactersInString("abc"_ns);
    set->addCharactersInRange({u'x', 3});
    set->removeCharactersInString("b"_ns);
    set->removeCharactersInRange({u'y', 1});
    EXPECT_TRUE(set->isEqual(setOf("acxz"_ns)));
    set->formUnionWithCharacterSet(setOf("01"_ns));
    set->formIntersectionWithCharacterSet(setOf("019az"_ns));
    EXPECT_TRUE(set->isEqual(setOf("01az"_ns)));
    set->invert();
    EXPECT_FALSE(set->characterIsMember(u'a'));
    set->formUnionWithCharacterSet(set);
    set->invert();
    EXPECT_TRUE(set->isEqual(setOf("01az"_ns)));
    EXPECT_EQ(raisedName([&] { set->addCharactersInString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { set->removeCharactersInString(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { set->formUnionWithCharacterSet(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { set->formIntersectionWithCharacterSet(nullptr); }), NSInvalidArgumentException);
}

TEST(MutableSets, copiesNoLongerChange) {
    const Ref<NSCharacterSet> letters = NSCharacterSet::letterCharacterSet();
    const Ref<NSMutableCharacterSet> set(cast<NSMutableCharacterSet>(letters->mutableCopy()));
    ASSERT_TRUE(set);
    const id copy = set->copy();
    set->addCharactersInString("7"_ns);
    EXPECT_TRUE(copy->isEqual(letters));
    EXPECT_FALSE(copy->isKindOfClass(NSMutableCharacterSet::classObject()));
    EXPECT_FALSE(letters->characterIsMember(u'7')) << "the ready-made set stays as it was";
    EXPECT_TRUE(send<bool>(set, "characterIsMember:"_sel, u'7'));
}

} // namespace
} // namespace zr
