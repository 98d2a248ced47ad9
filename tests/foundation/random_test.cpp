#include <zrbasic/platform/foundation/random.h>

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace zr {
namespace {

TEST(RandomNumbers, rarelyRepeat) {
    std::set<std::uint32_t> seen;
    for (int i = 0; i < 1000; ++i)
        seen.insert(arc4random());
    EXPECT_GT(seen.size(), 990U);
}

TEST(RandomNumbers, reachEveryBit) {
    std::uint32_t everSet = 0;
    std::uint32_t alwaysSet = ~std::uint32_t{0};
    for (int i = 0; i < 200; ++i) {
        const std::uint32_t number = arc4random();
        everSet |= number;
        alwaysSet &= number;
    }
    EXPECT_EQ(everSet, ~std::uint32_t{0});
    EXPECT_EQ(alwaysSet, 0U);
}

TEST(BoundedRandomNumbers, reachEveryNumberBelowTheBoundAndNoOther) {
    std::set<std::uint32_t> seen;
    for (int i = 0; i < 1000; ++i)
        seen.insert(arc4random_uniform(5));
    EXPECT_EQ(seen, (std::set<std::uint32_t>{0, 1, 2, 3, 4}));
}

TEST(BoundedRandomNumbers, areZeroWithoutRoom) {
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(arc4random_uniform(0), 0U);
        EXPECT_EQ(arc4random_uniform(1), 0U);
    }
}

TEST(RandomBytes, fillAnyLength) {
    std::vector<unsigned char> bytes(1000, 0);
    arc4random_buf(bytes.data(), bytes.size());
    EXPECT_GT(std::set<unsigned char>(bytes.begin(), bytes.end()).size(), 100U);
    EXPECT_GT(std::set<unsigned char>(bytes.end() - 200, bytes.end()).size(), 50U);
    const std::vector<unsigned char> before = bytes;
    arc4random_buf(bytes.data(), 0);
    EXPECT_EQ(bytes, before);
}

} // namespace
} // namespace zr
