#include <zrbasic/core/text.h>

#include <zrbasic/core/tools.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/exception.h>

#include <gtest/gtest.h>
#include <string>

namespace zr {
namespace {

std::string text(NSString* string) {
    return string ? '\'' + string->utf8() + '\'' : "null";
}

TEST(TextValidity, isAStringOfMoreThanWhiteSpace) {
    struct Row {
        const char* label;
        id value;
        bool isValid;
    };
    const Row rows[] = {
        {"null", nullptr, false},
        {"the null object", NSNull::null(), false},
        {"a number", box(12), false},
        {"an array of text", array({"a"_ns}), false},
        {"a class", NSString::classObject(), false},
        {"the empty string", ""_ns, false},
        {"three spaces", "   "_ns, false},
        {"tab and space", "\t "_ns, false},
        {"no-break space", u"\u00A0"_ns, false},
        {"ideographic space", u"\u3000"_ns, false},
        {"zero-width space", u"\u200B"_ns, false},
        {"a lone line feed", "\n"_ns, true},
        {"a lone carriage return", "\r"_ns, true},
        {"vertical tab", "\v"_ns, true},
        {"form feed", "\f"_ns, true},
        {"next line", u"\u0085"_ns, true},
        {"line separator", u"\u2028"_ns, true},
        {"byte order mark", u"\uFEFF"_ns, true},
        {"a letter between spaces", " a "_ns, true},
        {"an emoji", u"😀"_ns, true},
        {"half a surrogate pair", u"\xD83D"_ns, true},
        {"a mutable string", NSMutableString::stringWithString("a"_ns), true},
        {"a mutable blank string", NSMutableString::stringWithString(" "_ns), false},
        {"a zero character", NSString::fromUtf16(std::u16string_view(u"\0", 1)), true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(ZRXTextValid(row.value), row.isValid);
        EXPECT_EQ(ZRTextValid(row.value), row.isValid);
        EXPECT_EQ(ZRXTools::isLegalString(row.value), row.isValid);
    }
}

TEST(TextValidity, goesThroughTheClassOperation) {
    Class* const metaclass = object_getClass(ZRXTools::classObject());
    const SEL selector = "isLegalString:"_sel;
    const IMP original = class_getMethodImplementation(metaclass, selector);
    class_replaceMethod(metaclass, selector, imp(+[](NSObject*, SEL, NSObject*) { return true; }));
    EXPECT_TRUE(ZRTextValid(nullptr));
    EXPECT_FALSE(ZRXTextValid(nullptr));
    class_replaceMethod(metaclass, selector, original);
    EXPECT_FALSE(ZRTextValid(nullptr));
}

TEST(Trimming, takesWhiteSpaceAndLineBreaksFromBothEnds) {
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace("  ab \n"_ns)), "'ab'");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace(u"\u2028\v a\n b\u3000\u200B\f"_ns)), "'a\n b'");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace("ab"_ns)), "'ab'");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace(u" 😀 "_ns)), "'😀'");
}

TEST(Trimming, isNullWhenNothingIsLeft) {
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace("\n"_ns)), "null");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace(" \r\n\t"_ns)), "null");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace(""_ns)), "null");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace("  "_ns)), "null");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace(nullptr)), "null");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace(NSNull::null())), "null");
    EXPECT_EQ(text(ZRXStringByTrimmingWhiteSpace(box(1))), "null");
}

TEST(Trimming, isNeverNullInTheOtherOperation) {
    EXPECT_EQ(text(stringByTrimmingBothEndWhiteSpace(" ab\n"_ns)), "'ab'");
    EXPECT_EQ(text(stringByTrimmingBothEndWhiteSpace("\n"_ns)), "''");
    EXPECT_EQ(text(stringByTrimmingBothEndWhiteSpace(nullptr)), "''");
    EXPECT_EQ(text(stringByTrimmingBothEndWhiteSpace(NSNull::null())), "''");
    EXPECT_EQ(text(stringByTrimmingBothEndWhiteSpace(box(1))), "''");
    EXPECT_EQ(text(stringByTrimmingBothEndWhiteSpace("  "_ns)), "''");
}

TEST(EqualityIgnoringCase, disregardsCaseAndWidth) {
    EXPECT_TRUE(isEqualToStringIgnoringCase("ABC"_ns, "abc"_ns));
    EXPECT_TRUE(isEqualToStringIgnoringCase(u"ＡＢＣ"_ns, "abc"_ns));
    EXPECT_TRUE(isEqualToStringIgnoringCase("1"_ns, u"１"_ns));
    EXPECT_TRUE(isEqualToStringIgnoringCase(u"straße"_ns, "STRASSE"_ns));
    EXPECT_TRUE(isEqualToStringIgnoringCase(u"É"_ns, u"e\u0301"_ns));
    EXPECT_FALSE(isEqualToStringIgnoringCase(u"é"_ns, "e"_ns));
    EXPECT_FALSE(isEqualToStringIgnoringCase("abc"_ns, "abcd"_ns));
}

TEST(EqualityIgnoringCase, wantsValidText) {
    EXPECT_FALSE(isEqualToStringIgnoringCase("abc"_ns, nullptr));
    EXPECT_FALSE(isEqualToStringIgnoringCase("abc"_ns, NSNull::null()));
    EXPECT_FALSE(isEqualToStringIgnoringCase("12"_ns, box(12)));
    EXPECT_FALSE(isEqualToStringIgnoringCase("   "_ns, "   "_ns));
    EXPECT_FALSE(isEqualToStringIgnoringCase(""_ns, ""_ns));
    EXPECT_TRUE(isEqualToStringIgnoringCase("\n"_ns, "\n"_ns));
    EXPECT_FALSE(isEqualToStringIgnoringCase(nullptr, "abc"_ns));
}

TEST(Prefixes, areTriedOneByOne) {
    EXPECT_TRUE(hasAnyPrefixs("sh600000"_ns, array({"sz"_ns, "sh"_ns})));
    EXPECT_FALSE(hasAnyPrefixs("sh600000"_ns, array({"sz"_ns, "SH"_ns})));
    EXPECT_FALSE(hasAnyPrefixs("sh"_ns, array({})));
    EXPECT_FALSE(hasAnyPrefixs("sh"_ns, nullptr));
    EXPECT_FALSE(hasAnyPrefixs("sh"_ns, array({""_ns}))) << "an empty prefix is none";
    EXPECT_TRUE(hasAnyPrefixs("sh"_ns, array({box(1), NSNull::null(), "s"_ns}))) << "what is no string is passed over";
    EXPECT_FALSE(hasAnyPrefixs(nullptr, array({"s"_ns})));
    EXPECT_TRUE(hasAnyPrefixs(u"e\u0301x"_ns, array({"e"_ns}))) << "prefixes go by code unit";
}

TEST(Containing, triesTheStringsOneByOne) {
    EXPECT_TRUE(containAnyStrings("BTCUSDT"_ns, array({"ETH"_ns, "USD"_ns})));
    EXPECT_FALSE(containAnyStrings("BTCUSDT"_ns, array({"ETH"_ns, "usd"_ns})));
    EXPECT_FALSE(containAnyStrings("a"_ns, array({})));
    EXPECT_FALSE(containAnyStrings("a"_ns, nullptr));
    EXPECT_FALSE(containAnyStrings("a"_ns, array({""_ns})));
    EXPECT_TRUE(containAnyStrings("a"_ns, array({NSNull::null(), box(1), "a"_ns})));
    EXPECT_FALSE(containAnyStrings(nullptr, array({"a"_ns})));
    EXPECT_TRUE(containAnyStrings(u"caf\u00E9"_ns, array({u"e\u0301"_ns}))) << "canonical equivalents are the same";
}

TEST(DisplayWidth, countsOneForAsciiAndTwoForEveryOtherUnit) {
    EXPECT_EQ(characterLength("hello"_ns), 5U);
    EXPECT_EQ(characterLength(u"中国"_ns), 4U);
    EXPECT_EQ(characterLength(""_ns), 0U);
    EXPECT_EQ(characterLength(nullptr), 0U);
    EXPECT_EQ(characterLength(u"😀"_ns), 4U) << "both halves of the pair count";
    EXPECT_EQ(characterLength(u"\u007F\u0080"_ns), 3U);
    EXPECT_EQ(characterLength(NSString::fromUtf16(std::u16string(1'000'000, u'中'))), 2'000'000U);
}

TEST(Between, isTheTextBetweenTwoMarkers) {
    EXPECT_EQ(text(subStringFrom_to("[x]"_ns, "["_ns, "]"_ns)), "'x'");
    EXPECT_EQ(text(subStringFrom_to("a<<b>>c>>"_ns, "<<"_ns, ">>"_ns)), "'b'");
    EXPECT_EQ(text(subStringFrom_to("[]"_ns, "["_ns, "]"_ns)), "''");
    EXPECT_EQ(text(subStringFrom_to(u"[e\u0301]"_ns, "["_ns, u"\u0301"_ns)), "'e'") << "markers go by code unit";
}

TEST(Between, isTheReceiverItselfWhenAMarkerIsMissing) {
    const Ref<NSString> receiver = NSString::fromUtf8("[x]");
    EXPECT_EQ(subStringFrom_to(receiver, "{"_ns, "]"_ns), receiver);
    EXPECT_EQ(subStringFrom_to(receiver, "["_ns, "}"_ns), receiver);
    EXPECT_EQ(subStringFrom_to(receiver, ""_ns, "]"_ns), receiver);
    EXPECT_EQ(subStringFrom_to(receiver, "["_ns, ""_ns), receiver);
    EXPECT_EQ(subStringFrom_to(receiver, nullptr, "]"_ns), receiver);
    EXPECT_EQ(subStringFrom_to(receiver, "["_ns, nullptr), receiver);
    EXPECT_FALSE(subStringFrom_to(nullptr, "["_ns, "]"_ns));
}

TEST(Between, raisesWhenTheEndComesBeforeTheStartEnds) {
    for (NSString* receiver : {"]["_ns.get(), "]x["_ns.get()}) {
        SCOPED_TRACE(receiver->utf8());
        try {
            static_cast<void>(subStringFrom_to(receiver, "["_ns, "]"_ns));
            ADD_FAILURE() << "the range is no range";
        } catch (const NSException& exception) {
            EXPECT_EQ(exception.name(), NSRangeException);
        }
    }
    EXPECT_THROW(static_cast<void>(subStringFrom_to("a|b"_ns, "|"_ns, "|"_ns)), NSException)
        << "one marker at both ends: its first place ends nothing";
}

TEST(TextOperations, answerMessages) {
    EXPECT_EQ(send<NSUInteger>("ab"_ns, "characterLength"_sel), 2U);
    EXPECT_TRUE(send<bool>("AB"_ns, "isEqualToStringIgnoringCase:"_sel, "ab"_ns));
    EXPECT_TRUE(send<bool>("ab"_ns, "hasAnyPrefixs:"_sel, array({"a"_ns})));
    EXPECT_TRUE(send<bool>("ab"_ns, "containAnyStrings:"_sel, array({"b"_ns})));
    EXPECT_EQ(text(send<Ref<NSString>>("[x]"_ns, "subStringFrom:to:"_sel, "["_ns, "]"_ns)), "'x'");
    EXPECT_EQ(text(send<Ref<NSString>>(NSString::classObject(), "stringByTrimmingBothEndWhiteSpace:"_sel, " a "_ns)),
              "'a'");
    EXPECT_TRUE(NSMutableString::string()->respondsToSelector("characterLength"_sel));
}

} // namespace
} // namespace zr
