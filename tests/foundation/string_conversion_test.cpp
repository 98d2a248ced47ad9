#include <zrbasic/platform/foundation/string.h>

#include "checks.h"

#include <zrbasic/platform/foundation/character_set.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {
namespace {

using test::raisedName;

std::u16string text(const Ref<NSString>& subject) {
    return subject ? std::u16string(subject->view()) : u"no string";
}

TEST(StringNumbers, areReadFromTheStart) {
    EXPECT_EQ("12abc"_ns->integerValue(), 12);
    EXPECT_EQ("-1.9"_ns->integerValue(), -1);
    EXPECT_EQ("99999999999999999999"_ns->longLongValue(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ("-99999999999"_ns->intValue(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(" 1e3x"_ns->doubleValue(), 1000.0);
    EXPECT_EQ("1.5"_ns->floatValue(), 1.5F);
    EXPECT_EQ(u"\u00A042"_ns->integerValue(), 42);
    EXPECT_EQ("\n42"_ns->integerValue(), 0);
    EXPECT_EQ(""_ns->doubleValue(), 0.0);
}

TEST(StringNumbers, truthIsALetterOrADigit) {
    for (const char* yes : {"YES", "yes", "true", "t", "9", "+000009", "  y", "12abc", "-7"}) {
        EXPECT_TRUE(NSString::fromUtf8(yes)->boolValue()) << yes;
    }
    for (const char* no : {"no", "false", "0", "-00000", "+t", "0t", "<true>", "_true", "on", "", "0.5", "\n42"}) {
        EXPECT_FALSE(NSString::fromUtf8(no)->boolValue()) << no;
    }
}

TEST(StringCase, mapsWholeTexts) {
    EXPECT_EQ(text("Gold"_ns->uppercaseString()), u"GOLD");
    EXPECT_EQ(text("GoLD"_ns->lowercaseString()), u"gold");
    EXPECT_EQ(text("gold FUTURES"_ns->capitalizedString()), u"Gold Futures");
    EXPECT_EQ(text(u"\u00DF"_ns->uppercaseString()), u"SS");
    EXPECT_EQ(text(""_ns->uppercaseString()), u"");
}

TEST(StringCase, halfAPairStaysAsItIs) {
    const Ref<NSString> half = u"\U00010428x"_ns->substringToIndex(1);
    EXPECT_EQ(text(half->uppercaseString()), text(half));
    EXPECT_EQ(text(u"\u0149"_ns->substringToIndex(1)->uppercaseString()), u"\u02BCN");
    EXPECT_EQ(text(u"\u0130"_ns->lowercaseString()), u"i\u0307");
}

TEST(StringEscapes, areRemovedOrRefused) {
    for (const char* malformed : {"%", "%4", "%zz", "%%41", "100%", "%FF", "%C3", "%C3%28", "%ED%A0%80"}) {
        EXPECT_FALSE(NSString::fromUtf8(malformed)->stringByRemovingPercentEncoding()) << malformed;
    }
    EXPECT_EQ(text("a+b"_ns->stringByRemovingPercentEncoding()), u"a+b");
    EXPECT_EQ(text("%00"_ns->stringByRemovingPercentEncoding()), std::u16string(1, u'\0'));
    EXPECT_EQ(text(u"\u4F60%41"_ns->stringByRemovingPercentEncoding()), u"\u4F60A");
    EXPECT_EQ(text("%c3%A9"_ns->stringByRemovingPercentEncoding()), u"\u00E9");
    EXPECT_EQ(text(""_ns->stringByRemovingPercentEncoding()), u"");
}

TEST(StringEscapes, areWrittenForWhatIsNotAllowed) {
    const Ref<NSCharacterSet> query = NSCharacterSet::URLQueryAllowedCharacterSet();
    EXPECT_EQ(text(u"a b&c=\u00E9%"_ns->stringByAddingPercentEncodingWithAllowedCharacters(query)),
              u"a%20b&c=%C3%A9%25");
    const Ref<NSCharacterSet> accented = NSCharacterSet::characterSetWithCharactersInString(u"a\u00E9"_ns);
    EXPECT_EQ(text(u"a\u00E9b"_ns->stringByAddingPercentEncodingWithAllowedCharacters(accented)), u"a%C3%A9%62")
        << "only ASCII may stay";
    const std::u16string lone = {u'a', char16_t(0xD800)};
    EXPECT_FALSE(NSString::fromUtf16(lone)->stringByAddingPercentEncodingWithAllowedCharacters(query));
    EXPECT_EQ(text(""_ns->stringByAddingPercentEncodingWithAllowedCharacters(query)), u"");
    EXPECT_EQ(raisedName([] { (void)"a"_ns->stringByAddingPercentEncodingWithAllowedCharacters(nullptr); }),
              NSInvalidArgumentException);
}

TEST(StringPaths, componentsAreJoinedByOneSlash) {
    const struct {
        const char* path;
        const char* component;
        const char* joined;
    } rows[] = {
        {"/tmp", "scratch.tiff", "/tmp/scratch.tiff"},
        {"/tmp/", "scratch.tiff", "/tmp/scratch.tiff"},
        {"/", "scratch.tiff", "/scratch.tiff"},
        {"", "scratch.tiff", "scratch.tiff"},
        {"/tmp", "/a/b/", "/tmp/a/b"},
        {"/tmp", "", "/tmp"},
        {"", "/a", "/a"},
        {"a", "/", "a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.joined);
        EXPECT_EQ(
            NSString::fromUtf8(row.path)->stringByAppendingPathComponent(NSString::fromUtf8(row.component))->utf8(),
            row.joined);
    }
    EXPECT_EQ(raisedName([] { (void)"a"_ns->stringByAppendingPathComponent(nullptr); }), NSInvalidArgumentException);
}

TEST(StringPaths, theLastComponentAndItsExtension) {
    const struct {
        const char* path;
        const char* last;
        const char* extension;
    } rows[] = {
        {"/tmp/scratch.tiff", "scratch.tiff", "tiff"},
        {"/tmp/scratch", "scratch", ""},
        {"/tmp/", "tmp", ""},
        {"scratch///", "scratch", ""},
        {"/", "/", ""},
        {"///", "/", ""},
        {"", "", ""},
        {".scratch.tiff", ".scratch.tiff", "tiff"},
        {".hidden", ".hidden", ""},
        {"a.", "a.", ""},
        {"/a.b/c", "c", ""},
        {"/tmp/scratch..tiff", "scratch..tiff", "tiff"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(NSString::fromUtf8(row.path)->lastPathComponent()->utf8(), row.last);
        EXPECT_EQ(NSString::fromUtf8(row.path)->pathExtension()->utf8(), row.extension);
    }
}

} // namespace
} // namespace zr
