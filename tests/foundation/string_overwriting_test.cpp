#include <zrbasic/platform/foundation/string_overwriting_p.h>

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace zr {
namespace {

/// Shows what is in it at its very end.
class LastWords : public NSString {
    ZR_OBJECT(LastWords, NSString)
  public:
    ~LastWords() override { heard = m_text; }

    static inline std::u16string heard;
};

TEST(StringOverwriting, isDoneWhenNobodyElseHoldsTheString) {
    for (const char* text : {"short", "long enough for memory of its own, and then some more"}) {
        SCOPED_TRACE(text);
        Ref<NSString> string = make<LastWords>(&NSString::initWithString, NSString::fromUtf8(text));
        const std::size_t length = string->length();
        EXPECT_TRUE(detail::overwriteSoleString(std::move(string)));
        EXPECT_EQ(string, nullptr);
        EXPECT_EQ(LastWords::heard, std::u16string(length, u'\0'));
    }
}

TEST(StringOverwriting, leavesAStringAloneThatSomebodyHolds) {
    Ref<NSString> text = NSString::fromUtf16(u"secret");
    const Ref<NSString> held = text;
    EXPECT_FALSE(detail::overwriteSoleString(std::move(text)));
    EXPECT_EQ(held->utf8(), "secret");
    EXPECT_FALSE(detail::overwriteSoleString("constant"_ns));
    EXPECT_EQ("constant"_ns->utf8(), "constant");
    EXPECT_FALSE(detail::overwriteSoleString(nullptr));
    EXPECT_TRUE(detail::overwriteSoleString(NSString::fromUtf16(std::u16string())));
}

} // namespace
} // namespace zr
