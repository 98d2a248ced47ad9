#include <zrbasic/platform/foundation/date_components.h>

#include <zrbasic/platform/foundation/date.h>

#include <unicode/ucal.h>

#include <cmath>
#include <memory>

namespace zr {

namespace {

struct CloseCalendar {
    void operator()(UCalendar* calendar) const { ucal_close(calendar); }
};

/// A calendar set to the moment; null when the library has no data to make one of.
std::unique_ptr<UCalendar, CloseCalendar> calendarAt(double secondsSince1970) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UCalendar, CloseCalendar> calendar(ucal_open(nullptr, 0, "en_US", UCAL_GREGORIAN, &status));
    // To the past, so that no second shows before it has begun.
    ucal_setMillis(calendar.get(), std::floor(secondsSince1970 * 1000.0), &status);
    return U_SUCCESS(status) ? std::move(calendar) : nullptr;
}

} // namespace

NSDateComponents::NSDateComponents() {
    for (auto* const field : {&m_year, &m_month, &m_day, &m_hour, &m_minute, &m_second, &m_weekday}) {
        *field = NSDateComponentUndefined;
    }
}

NSDateComponents::~NSDateComponents() = default;

bool NSDateComponents::isEqual(NSObject* other) const {
    auto* const components = cast<NSDateComponents>(other);
    return components && components->year() == year() && components->month() == month() && components->day() == day() &&
           components->hour() == hour() && components->minute() == minute() && components->second() == second() &&
           components->weekday() == weekday();
}

NSUInteger NSDateComponents::hash() const {
    NSUInteger result = 0;
    for (const NSInteger field : {year(), month(), day(), hour(), minute(), second(), weekday()}) {
        result = result * 61 + static_cast<NSUInteger>(field);
    }
    return result;
}

id NSDateComponents::copy() const {
    const auto result = make<NSDateComponents>();
    result->setYear(year());
    result->setMonth(month());
    result->setDay(day());
    result->setHour(hour());
    result->setMinute(minute());
    result->setSecond(second());
    result->setWeekday(weekday());
    return result;
}

ZR_DEFINE_CLASS(NSCalendar) {
    is.classMethod<&NSCalendar::currentCalendar>("currentCalendar");
    is.method<&NSCalendar::components_fromDate>("components:fromDate:");
}

NSCalendar::~NSCalendar() = default;

Ref<NSCalendar> NSCalendar::currentCalendar() {
    static NSCalendar* const shared = make<NSCalendar>().leak();
    return shared;
}

Ref<NSDateComponents> NSCalendar::components_fromDate(NSUInteger units, NSDate* date) const {
    if (!date) {
        return {};
    }
    const auto result = make<NSDateComponents>();
    const double seconds = date->timeIntervalSince1970();
    const auto calendar = std::isfinite(seconds) ? calendarAt(seconds) : nullptr;
    if (!calendar) {
        return result;
    }
    const struct {
        NSCalendarUnit unit;
        UCalendarDateFields field;
        void (NSDateComponents::*set)(NSInteger);
        /// Months are counted from 0 there.
        NSInteger first = 0;
    } rows[] = {
        {NSCalendarUnitYear, UCAL_YEAR, &NSDateComponents::setYear},
        {NSCalendarUnitMonth, UCAL_MONTH, &NSDateComponents::setMonth, 1},
        {NSCalendarUnitDay, UCAL_DATE, &NSDateComponents::setDay},
        {NSCalendarUnitHour, UCAL_HOUR_OF_DAY, &NSDateComponents::setHour},
        {NSCalendarUnitMinute, UCAL_MINUTE, &NSDateComponents::setMinute},
        {NSCalendarUnitSecond, UCAL_SECOND, &NSDateComponents::setSecond},
        {NSCalendarUnitWeekday, UCAL_DAY_OF_WEEK, &NSDateComponents::setWeekday},
    };
    for (const auto& row : rows) {
        if ((units & row.unit) != 0) {
            UErrorCode status = U_ZERO_ERROR;
            (result->*row.set)(row.first + ucal_get(calendar.get(), row.field, &status));
        }
    }
    return result;
}

} // namespace zr
