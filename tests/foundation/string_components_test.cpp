#include <zrbasic/platform/foundation/string.h>

#include "checks.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/character_set.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::raisedName;

std::string joined(const Ref<NSArray>& parts) {
    std::string result;
    for (NSUInteger i = 0; i < parts->count(); ++i) {
        const Ref<NSString> part(cast<NSString>(parts->objectAtIndex(i)));
        result += '[' + (part ? part->utf8() : "no string") + ']';
    }
    return result;
}

TEST(StringSplitting, emptyPartsCount) {
    const struct {
        const char* subject;
        const char* separator;
        const char* parts;
    } rows[] = {
        {"a,b", ",", "[a][b]"},    {"", ",", "[]"},       {",", ",", "[][]"},   {",,", ",", "[][][]"},
        {"a,b,", ",", "[a][b][]"}, {"abc", ",", "[abc]"}, {"a,b", "", "[a,b]"}, {"a::b:c", "::", "[a][b:c]"},
        {"aaa", "aa", "[][a]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.subject);
        EXPECT_EQ(
            joined(NSString::fromUtf8(row.subject)->componentsSeparatedByString(NSString::fromUtf8(row.separator))),
            row.parts);
    }
    EXPECT_EQ(raisedName([] { (void)"a"_ns->componentsSeparatedByString(nullptr); }), NSInvalidArgumentException);
}

TEST(StringSplitting, noSeparatorCutsACombiningSequence) {
    EXPECT_EQ(joined(u"ae\u0301bec"_ns->componentsSeparatedByString("e"_ns)),
              "[ae\xCC\x81"
              "b][c]");
    EXPECT_EQ(joined(u"a\u00E9b"_ns->componentsSeparatedByString(u"e\u0301"_ns)), "[a][b]");
}

TEST(StringSplitting, everyMemberOfASetSeparates) {
    const Ref<NSCharacterSet> separators = NSCharacterSet::characterSetWithCharactersInString(u",;\U0001F600"_ns);
    EXPECT_EQ(joined(u"a,b;\U0001F600c"_ns->componentsSeparatedByCharactersInSet(separators)), "[a][b][][c]");
    EXPECT_EQ(joined(""_ns->componentsSeparatedByCharactersInSet(separators)), "[]");
    EXPECT_EQ(joined("abc"_ns->componentsSeparatedByCharactersInSet(separators)), "[abc]");
    EXPECT_EQ(raisedName([] { (void)"a"_ns->componentsSeparatedByCharactersInSet(nullptr); }),
              NSInvalidArgumentException);
}

} // namespace
} // namespace zr
