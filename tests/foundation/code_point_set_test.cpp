#include <zrbasic/platform/foundation/code_point_set_p.h>

#include <gtest/gtest.h>

namespace zr::detail {
namespace {

using Stretches = std::vector<CodePointSet::Stretch>;

TEST(CodePointSets, joinWhatOverlapsOrTouches) {
    EXPECT_EQ(CodePointSet(Stretches{{5, 9}, {1, 3}, {4, 4}, {8, 12}, {20, 21}}).stretches(),
              (Stretches{{1, 12}, {20, 21}}));
    EXPECT_EQ(CodePointSet(Stretches{{1, 30}, {5, 6}}).stretches(), (Stretches{{1, 30}}));
    EXPECT_EQ(CodePointSet(Stretches{{9, 5}}).stretches(), Stretches{}) << "a stretch that runs backwards is none";
    EXPECT_EQ(CodePointSet(Stretches{{0x10FFF0, 0x7FFFFFFF}}).stretches(), (Stretches{{0x10FFF0, 0x10FFFF}}));
    EXPECT_EQ(CodePointSet(u"bca").stretches(), (Stretches{{'a', 'c'}}));
}

TEST(CodePointSets, membershipHoldsOnBothSidesOfAscii) {
    const CodePointSet set(Stretches{{0x3F, 0x40}, {0x7F, 0x80}, {0x4E00, 0x4E00}, {0x10FFFF, 0x10FFFF}});
    for (const char32_t member : {0x3F, 0x40, 0x7F, 0x80, 0x4E00, 0x10FFFF}) {
        EXPECT_TRUE(set.contains(member)) << static_cast<unsigned>(member);
    }
    for (const char32_t stranger : {0x0, 0x3E, 0x41, 0x7E, 0x81, 0x4DFF, 0x4E01, 0x10FFFE, 0x110000}) {
        EXPECT_FALSE(set.contains(stranger)) << static_cast<unsigned>(stranger);
    }
}

TEST(CodePointSets, patternsThatAreNoneGiveNothing) {
    EXPECT_EQ(CodePointSet::fromPattern(u"[a-c]").stretches(), (Stretches{{'a', 'c'}}));
    EXPECT_TRUE(CodePointSet::fromPattern(u"[a-").isEmpty());
    EXPECT_TRUE(CodePointSet::fromPattern(u"").isEmpty());
    EXPECT_TRUE(CodePointSet::fromPattern(u"[:NoSuchProperty:]").isEmpty());
    EXPECT_EQ(CodePointSet::fromPattern(u"[x{yz}]").stretches(), (Stretches{{'x', 'x'}}))
        << "strings in a set are no code points";
}

TEST(CodePointSets, operationsFollowSetAlgebra) {
    const CodePointSet a(Stretches{{1, 10}, {20, 30}});
    const CodePointSet b(Stretches{{5, 25}});
    EXPECT_EQ(a.united(b).stretches(), (Stretches{{1, 30}}));
    EXPECT_EQ(a.intersected(b).stretches(), (Stretches{{5, 10}, {20, 25}}));
    EXPECT_EQ(a.without(b).stretches(), (Stretches{{1, 4}, {26, 30}}));
    EXPECT_EQ(a.inverted().inverted(), a);
    EXPECT_TRUE(a.intersected(a.inverted()).isEmpty());
    EXPECT_EQ(a.united(a.inverted()).stretches(), (Stretches{{0, 0x10FFFF}}));
    EXPECT_EQ(a.hash(), CodePointSet(Stretches{{20, 30}, {1, 10}}).hash());
    EXPECT_NE(a.hash(), b.hash());
}

} // namespace
} // namespace zr::detail
