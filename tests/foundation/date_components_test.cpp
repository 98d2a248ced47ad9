#include <zrbasic/platform/foundation/date_components.h>

#include "fresh_process.h"

#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <string>

namespace {

using namespace zr;

constexpr NSUInteger allUnits = 4 + 8 + 16 + 32 + 64 + 128 + 512;
constexpr NSInteger undefined = 0x7FFFFFFFFFFFFFFF;

Ref<NSDateComponents> componentsAt(double since1970, NSUInteger units = allUnits) {
    return NSCalendar::currentCalendar()->components_fromDate(units, NSDate::dateWithTimeIntervalSince1970(since1970));
}

/// "2021-3-14 3:00:00 1", the weekday last.
std::string at(double since1970) {
    const auto fields = componentsAt(since1970);
    char text[128];
    std::snprintf(text, sizeof text, "%ld-%ld-%ld %ld:%02ld:%02ld %ld", fields->year(), fields->month(), fields->day(),
                  fields->hour(), fields->minute(), fields->second(), fields->weekday());
    return text;
}

TEST(DateComponents, areUndefinedUntilSet) {
    const auto fields = make<NSDateComponents>();
    EXPECT_EQ(NSDateComponentUndefined, undefined);
    EXPECT_EQ(fields->year(), undefined);
    EXPECT_EQ(fields->month(), undefined);
    EXPECT_EQ(fields->day(), undefined);
    EXPECT_EQ(fields->hour(), undefined);
    EXPECT_EQ(fields->minute(), undefined);
    EXPECT_EQ(fields->second(), undefined);
    EXPECT_EQ(fields->weekday(), undefined);
    fields->setMonth(-5);
    EXPECT_EQ(fields->month(), -5) << "nothing is checked";
}

TEST(DateComponents, areEqualByTheirFields) {
    const auto fields = componentsAt(1.0e9);
    const auto same = componentsAt(1.0e9 + 0.5);
    EXPECT_NE(fields, same);
    EXPECT_TRUE(fields->isEqual(same));
    EXPECT_EQ(fields->hash(), same->hash());
    EXPECT_FALSE(fields->isEqual(componentsAt(1.0e9, allUnits - NSCalendarUnitWeekday)));
    EXPECT_FALSE(fields->isEqual(componentsAt(1.0e9 + 1)));
    EXPECT_FALSE(fields->isEqual(nullptr));
    EXPECT_FALSE(fields->isEqual(box(1)));
    const id copy = fields->copy();
    EXPECT_TRUE(fields->isEqual(copy));
    cast<NSDateComponents>(copy)->setYear(1);
    EXPECT_FALSE(fields->isEqual(copy));
}

TEST(DateComponents, holdWhatWasAskedFor) {
    EXPECT_EQ(NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay | NSCalendarUnitHour | NSCalendarUnitMinute |
                  NSCalendarUnitSecond | NSCalendarUnitWeekday,
              764);
    const auto some = componentsAt(1.0e9, NSCalendarUnitMonth | NSCalendarUnitSecond);
    EXPECT_EQ(some->month(), 9);
    EXPECT_EQ(some->second(), 40);
    EXPECT_EQ(some->year(), undefined);
    EXPECT_EQ(some->weekday(), undefined);
    EXPECT_TRUE(componentsAt(1.0e9, 0)->isEqual(make<NSDateComponents>()));
    EXPECT_TRUE(componentsAt(1.0e9, ~allUnits)->isEqual(make<NSDateComponents>())) << "bits that mean nothing";
    EXPECT_TRUE(componentsAt(1.0e9, ~NSUInteger(0))->isEqual(componentsAt(1.0e9)));
}

TEST(DateComponents, followTheCalendarInUtc) {
    if (test::runsInFreshProcess({"TZ=UTC"})) {
        return;
    }
    const struct {
        const char* name;
        double since1970;
        const char* fields;
    } rows[] = {
        {"the beginning", 0, "1970-1-1 0:00:00 5"},
        {"a moment before", -0.001, "1969-12-31 23:59:59 4"},
        {"less than a millisecond before", -0.0001, "1969-12-31 23:59:59 4"},
        {"the last millisecond of a second", 0.999, "1970-1-1 0:00:00 5"},
        {"leap day", 951782400, "2000-2-29 0:00:00 3"},
        {"no leap day", 4107542400, "2100-3-1 0:00:00 2"},
        {"a Sunday", 1615705199, "2021-3-14 6:59:59 1"},
        {"a Saturday", 1615679999, "2021-3-13 23:59:59 7"},
        {"first day of the Gregorian calendar", -12219292800, "1582-10-15 0:00:00 6"},
        {"the day before", -12219292801, "1582-10-4 23:59:59 5"},
        {"distant past", -62135769600, "1-1-1 0:00:00 7"},
        {"the year before", -62135769601, "1-12-31 23:59:59 6"},
        {"distant future", 64092211200, "4001-1-1 0:00:00 2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(at(row.since1970), row.fields);
    }
}

TEST(DateComponents, areThoseOfTheLocalTimeZone) {
    if (test::runsInFreshProcess({"TZ=America/New_York"})) {
        return;
    }
    EXPECT_EQ(at(1615705199), "2021-3-14 1:59:59 1");
    EXPECT_EQ(at(1615705200), "2021-3-14 3:00:00 1") << "summer time begins";
    EXPECT_EQ(at(1636264799), "2021-11-7 1:59:59 1");
    EXPECT_EQ(at(1636264800), "2021-11-7 1:00:00 1") << "and ends";
    EXPECT_EQ(at(0), "1969-12-31 19:00:00 4");
}

TEST(DateComponents, knowZonesThatAreNoWholeHoursAway) {
    if (test::runsInFreshProcess({"TZ=Asia/Kathmandu"})) {
        return;
    }
    EXPECT_EQ(at(1.0e9), "2001-9-9 7:31:40 1");
}

TEST(DateComponents, agreeWithTheSystem) {
    if (test::runsInFreshProcess({"TZ=Europe/Berlin"})) {
        return;
    }
    int different = 0;
    // About every five days from 1970 to 2037, at all times of the day.
    for (std::time_t seconds = 0; seconds < 2114380800; seconds += 432007) {
        std::tm local{};
        localtime_r(&seconds, &local);
        const auto fields = componentsAt(static_cast<double>(seconds));
        different += fields->year() != local.tm_year + 1900 || fields->month() != local.tm_mon + 1 ||
                     fields->day() != local.tm_mday || fields->hour() != local.tm_hour ||
                     fields->minute() != local.tm_min || fields->second() != local.tm_sec ||
                     fields->weekday() != local.tm_wday + 1;
    }
    EXPECT_EQ(different, 0);
}

TEST(DateComponents, anyDateIsSurvived) {
    using Limits = std::numeric_limits<double>;
    EXPECT_FALSE(NSCalendar::currentCalendar()->components_fromDate(allUnits, nullptr));
    for (const double moment : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) {
        EXPECT_TRUE(componentsAt(moment)->isEqual(make<NSDateComponents>())) << moment;
    }
    for (const double moment : {1e14, 1e17, 1e300, Limits::max()}) {
        const auto late = componentsAt(moment);
        const auto early = componentsAt(-moment);
        EXPECT_GT(late->year(), 3000000) << moment;
        EXPECT_GT(early->year(), 3000000) << "years before the first are counted backwards";
        EXPECT_TRUE(late->month() >= 1 && late->month() <= 12 && early->month() >= 1 && early->month() <= 12);
        EXPECT_TRUE(late->weekday() >= 1 && late->weekday() <= 7 && early->weekday() >= 1 && early->weekday() <= 7);
    }
}

TEST(DateComponents, answerMessages) {
    const id calendar = send<id>(NSCalendar::classObject(), "currentCalendar"_sel);
    EXPECT_EQ(calendar, NSCalendar::currentCalendar());
    const auto fields = send<Ref<NSDateComponents>>(calendar, "components:fromDate:"_sel, allUnits,
                                                    NSDate::dateWithTimeIntervalSince1970(1.0e9));
    ASSERT_TRUE(fields);
    EXPECT_EQ(send<NSInteger>(fields, "second"_sel), 40);
    send<>(fields, "setYear:"_sel, 7);
    EXPECT_EQ(fields->year(), 7);
    EXPECT_FALSE(send<id>(calendar, "components:fromDate:"_sel, allUnits, "today"_ns));
}

} // namespace
