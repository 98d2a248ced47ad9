#include <zrbasic/platform/foundation/date.h>

#include "checks.h"

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zr {
namespace {

using test::raisedName;

constexpr double infinity = std::numeric_limits<double>::infinity();

Ref<NSDate> at(double since1970) {
    return NSDate::dateWithTimeIntervalSince1970(since1970);
}

TEST(DateMaking, countsFromTheReferenceDate) {
    EXPECT_EQ(NSDate::dateWithTimeIntervalSinceReferenceDate(0)->timeIntervalSince1970(), 978307200.0);
    EXPECT_EQ(at(0)->timeIntervalSinceReferenceDate(), -978307200.0);
    EXPECT_EQ(make<NSDate>(&NSDate::initWithTimeIntervalSince1970, 978307260.0)->timeIntervalSinceReferenceDate(),
              60.0);
    EXPECT_EQ(make<NSDate>(&NSDate::initWithTimeIntervalSinceReferenceDate, 1.5)->timeIntervalSinceReferenceDate(),
              1.5);
    EXPECT_EQ(NSDate::dateWithTimeInterval_sinceDate(10, at(5))->timeIntervalSince1970(), 15.0);
    EXPECT_FALSE(NSDate::dateWithTimeInterval_sinceDate(10, nullptr));
}

TEST(DateMaking, nowIsNow) {
    const double before = NSDate::currentTimeIntervalSinceReferenceDate();
    const Ref<NSDate> now = NSDate::date();
    const Ref<NSDate> made = make<NSDate>();
    const Ref<NSDate> later = NSDate::dateWithTimeIntervalSinceNow(60);
    const double after = NSDate::currentTimeIntervalSinceReferenceDate();
    EXPECT_GE(now->timeIntervalSinceReferenceDate(), before);
    EXPECT_LE(now->timeIntervalSinceReferenceDate(), made->timeIntervalSinceReferenceDate());
    EXPECT_LE(made->timeIntervalSinceReferenceDate(), after);
    EXPECT_GE(later->timeIntervalSinceReferenceDate(), before + 60);
    EXPECT_LE(later->timeIntervalSinceReferenceDate(), after + 60);
    EXPECT_GT(later->timeIntervalSinceNow(), 0);
    EXPECT_LE(now->timeIntervalSinceNow(), 0);
    EXPECT_LT(std::fabs(make<NSDate>(&NSDate::initWithTimeIntervalSinceNow, -5.0)->timeIntervalSinceNow() + 5), 5.0);
}

TEST(DateMaking, theDistantOnesAreConstants) {
    EXPECT_EQ(NSDate::distantFuture()->timeIntervalSince1970(), 64092211200.0);
    EXPECT_EQ(NSDate::distantPast()->timeIntervalSince1970(), -62135769600.0);
    EXPECT_EQ(NSDate::distantFuture().get(), NSDate::distantFuture().get());
    EXPECT_EQ(NSDate::distantFuture()->description()->utf8(), "4001-01-01 00:00:00 +0000");
    EXPECT_EQ(NSDate::distantPast()->description()->utf8(), "0001-01-01 00:00:00 +0000");
}

TEST(DateDescription, isUtcWithoutFractions) {
    const struct {
        const char* label;
        double seconds;
        const char* text;
    } rows[] = {
        {"the epoch", 0, "1970-01-01 00:00:00 +0000"},
        {"a fraction is dropped", 0.999, "1970-01-01 00:00:00 +0000"},
        {"a fraction before the epoch too", -0.5, "1969-12-31 23:59:59 +0000"},
        {"the reference date", 978307200, "2001-01-01 00:00:00 +0000"},
        {"leap day of a century year", 951782400, "2000-02-29 00:00:00 +0000"},
        {"no leap day in 2100", 4107542400, "2100-03-01 00:00:00 +0000"},
        {"end of a year", 1735689599, "2024-12-31 23:59:59 +0000"},
        {"leap day and time of day", 1709210096, "2024-02-29 12:34:56 +0000"},
        {"first Gregorian day", -12219292800, "1582-10-15 00:00:00 +0000"},
        {"last Julian day", -12219292801, "1582-10-04 23:59:59 +0000"},
        {"Julian leap day in 1500", -14825894400, "1500-02-29 00:00:00 +0000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(at(row.seconds)->description()->utf8(), row.text);
    }
}

TEST(DateDescription, extremeDatesStayDefined) {
    EXPECT_EQ(at(infinity)->description()->utf8(), "inf");
    EXPECT_EQ(at(-infinity)->description()->utf8(), "-inf");
    EXPECT_EQ(at(std::nan(""))->description()->utf8(), "nan");
    EXPECT_EQ(at(1e300)->description()->utf8().substr(0, 7), "3168875");
    EXPECT_EQ(at(-1e300)->description()->utf8().front(), '-');
    EXPECT_EQ(at(253402300800)->description()->utf8(), "10000-01-01 00:00:00 +0000");
}

TEST(DateOrder, earlierAndLater) {
    const Ref<NSDate> first = at(1);
    const Ref<NSDate> second = at(2);
    EXPECT_EQ(first->compare(second), NSOrderedAscending);
    EXPECT_EQ(second->compare(first), NSOrderedDescending);
    EXPECT_EQ(first->compare(at(1)), NSOrderedSame);
    EXPECT_EQ(first->earlierDate(second).get(), first.get());
    EXPECT_EQ(first->laterDate(second).get(), second.get());
    EXPECT_EQ(first->earlierDate(at(1)).get(), first.get());
    EXPECT_EQ(first->laterDate(nullptr).get(), first.get());
    EXPECT_EQ(first->earlierDate(nullptr).get(), first.get());
    EXPECT_EQ(raisedName([&] { (void)first->compare(nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(second->timeIntervalSinceDate(first), 1.0);
    EXPECT_TRUE(std::isnan(second->timeIntervalSinceDate(nullptr)));
    EXPECT_EQ(first->dateByAddingTimeInterval(-3)->timeIntervalSince1970(), -2.0);
}

TEST(DateEquality, isThatOfTheMoment) {
    EXPECT_TRUE(at(5)->isEqual(at(5)));
    EXPECT_TRUE(at(5)->isEqualToDate(at(5)));
    EXPECT_EQ(at(5)->hash(), at(5)->hash());
    EXPECT_FALSE(at(5)->isEqual(at(5.5)));
    EXPECT_FALSE(at(5)->isEqual(nullptr));
    EXPECT_FALSE(at(5)->isEqual(NSNull::null()));
    EXPECT_FALSE(at(5)->isEqualToDate(nullptr));
    EXPECT_FALSE(at(0)->isEqual("1970-01-01 00:00:00 +0000"_ns));
    const Ref<NSDate> negativeZero = NSDate::dateWithTimeIntervalSinceReferenceDate(-0.0);
    const Ref<NSDate> zero = NSDate::dateWithTimeIntervalSinceReferenceDate(0.0);
    EXPECT_TRUE(zero->isEqual(negativeZero));
    EXPECT_EQ(zero->hash(), negativeZero->hash());
    EXPECT_EQ(zero->copy().get(), static_cast<NSObject*>(zero.get()));
}

TEST(DateMessages, operationsAnswerByName) {
    const id date = send<id>(NSDate::classObject(), "dateWithTimeIntervalSince1970:"_sel, 60.0);
    EXPECT_EQ(send<double>(date, "timeIntervalSince1970"_sel), 60.0);
    EXPECT_EQ(send<NSComparisonResult>(date, "compare:"_sel, at(61)), NSOrderedAscending);
    EXPECT_EQ(send<double>(nullptr, "timeIntervalSince1970"_sel), 0.0);
    EXPECT_TRUE(send<id>(NSDate::classObject(), "distantPast"_sel)->isEqual(NSDate::distantPast()));
    EXPECT_GT(send<double>(NSDate::classObject(), "timeIntervalSinceReferenceDate"_sel), 0.0);
}

} // namespace
} // namespace zr
