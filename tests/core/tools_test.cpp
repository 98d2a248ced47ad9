#include <zrbasic/core/tools.h>

#include <zrbasic/platform/foundation/clock.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>
#include <limits>
#include <regex>
#include <set>
#include <string>

namespace zr {
namespace {

TEST(Identifiers, areRandomAndInTheUsualForm) {
    const std::regex form("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
    std::set<std::string> seen;
    for (int i = 0; i < 1'000; ++i) {
        const std::string identifier = ZRXTools::genUUID()->utf8();
        EXPECT_EQ(identifier.size(), 36U);
        EXPECT_TRUE(std::regex_match(identifier, form)) << identifier;
        EXPECT_TRUE(seen.insert(identifier).second) << identifier;
    }
}

TEST(Ticks, becomeMilliseconds) {
    mach_timebase_info_data_t timebase{};
    mach_timebase_info(&timebase);
    ASSERT_NE(timebase.denom, 0U);
    const double millisecondsPerTick = double(timebase.numer) / timebase.denom / 1e6;
    EXPECT_EQ(ZRXTools::intervalWithMachTick(0), 0.0);
    EXPECT_DOUBLE_EQ(ZRXTools::intervalWithMachTick(1), millisecondsPerTick);
    EXPECT_DOUBLE_EQ(ZRXTools::intervalWithMachTick(2'500'000), 2'500'000 * millisecondsPerTick);
    EXPECT_GE(ZRXTools::intervalWithMachTick(std::numeric_limits<std::uint64_t>::max()), 0.0)
        << "the product wraps rather than turning negative";
}

TEST(Ticks, areCountedFromAStart) {
    const std::uint64_t start = mach_absolute_time();
    const double first = ZRXTools::intervalFromMachBegining(start);
    const double second = ZRXTools::intervalFromMachBegining(start);
    EXPECT_GE(first, 0.0);
    EXPECT_GE(second, first) << "the clock never runs backwards";
    EXPECT_LT(second, 60'000.0);
    const std::uint64_t later = start + 3'600'000'000'000;
    EXPECT_GT(ZRXTools::intervalFromMachBegining(later), 1e9) << "a start in the future wraps";
}

TEST(Tools, answerClassMessages) {
    Class* const tools = ZRXTools::classObject();
    EXPECT_TRUE(send<bool>(tools, "isLegalString:"_sel, "a"_ns));
    EXPECT_FALSE(send<bool>(tools, "isLegalString:"_sel, box(1)));
    EXPECT_EQ(send<Ref<NSString>>(tools, "genUUID"_sel)->length(), 36U);
    EXPECT_EQ(send<double>(tools, "intervalWithMachTick:"_sel, std::uint64_t{0}), 0.0);
    EXPECT_GE(send<double>(tools, "intervalFromMachBegining:"_sel, mach_absolute_time()), 0.0);
}

} // namespace
} // namespace zr
