#include <zrbasic/platform/foundation/date.h>

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <limits>

namespace zr {

namespace {

constexpr std::int64_t secondsPerDay = 86400;

struct CivilDay {
    std::int64_t year;
    int month;
    int day;
};

std::int64_t floorDivide(std::int64_t value, std::int64_t divisor) noexcept {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// `days` counts from 1970-01-01. Years begin in March here, so that the leap day is their last.
CivilDay civilDayFrom(std::int64_t days) noexcept {
    // 1582-10-15, the first day of the Gregorian calendar.
    constexpr std::int64_t firstGregorianDay = -141427;
    std::int64_t year = 0;
    std::int64_t dayOfYear = 0;
    if (days >= firstGregorianDay) {
        // From 0000-03-01 of the Gregorian calendar carried back.
        const std::int64_t shifted = days + 719468;
        const std::int64_t era = floorDivide(shifted, 146097);
        const std::int64_t dayOfEra = shifted - era * 146097;
        const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
        year = era * 400 + yearOfEra;
        dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    } else {
        // From 0000-03-01 of the Julian calendar, two days earlier; every fourth year is a leap year.
        const std::int64_t shifted = days + 719470;
        const std::int64_t cycle = floorDivide(shifted, 1461);
        const std::int64_t dayOfCycle = shifted - cycle * 1461;
        const std::int64_t yearOfCycle = (dayOfCycle - dayOfCycle / 1460) / 365;
        year = cycle * 4 + yearOfCycle;
        dayOfYear = dayOfCycle - 365 * yearOfCycle;
    }
    const auto monthFromMarch = static_cast<int>((5 * dayOfYear + 2) / 153);
    const int day = static_cast<int>(dayOfYear) - (153 * monthFromMarch + 2) / 5 + 1;
    const int month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    return {month <= 2 ? year + 1 : year, month, day};
}

Ref<NSDate> dateAt(NSTimeInterval sinceReference) {
    return make<NSDate>(&NSDate::initWithTimeIntervalSinceReferenceDate, sinceReference);
}

} // namespace

ZR_DEFINE_CLASS(NSDate) {
    is.classMethod<&NSDate::date>("date")
        .classMethod<&NSDate::dateWithTimeIntervalSinceNow>("dateWithTimeIntervalSinceNow:")
        .classMethod<&NSDate::dateWithTimeIntervalSince1970>("dateWithTimeIntervalSince1970:")
        .classMethod<&NSDate::dateWithTimeIntervalSinceReferenceDate>("dateWithTimeIntervalSinceReferenceDate:")
        .classMethod<&NSDate::dateWithTimeInterval_sinceDate>("dateWithTimeInterval:sinceDate:")
        .classMethod<&NSDate::distantFuture>("distantFuture")
        .classMethod<&NSDate::distantPast>("distantPast")
        .classMethod<&NSDate::currentTimeIntervalSinceReferenceDate>("timeIntervalSinceReferenceDate")
        .method<&NSDate::initWithTimeIntervalSinceNow>("initWithTimeIntervalSinceNow:")
        .method<&NSDate::initWithTimeIntervalSince1970>("initWithTimeIntervalSince1970:")
        .method<&NSDate::initWithTimeIntervalSinceReferenceDate>("initWithTimeIntervalSinceReferenceDate:")
        .method<&NSDate::timeIntervalSinceReferenceDate>("timeIntervalSinceReferenceDate")
        .method<&NSDate::timeIntervalSince1970>("timeIntervalSince1970")
        .method<&NSDate::timeIntervalSinceNow>("timeIntervalSinceNow")
        .method<&NSDate::timeIntervalSinceDate>("timeIntervalSinceDate:")
        .method<&NSDate::dateByAddingTimeInterval>("dateByAddingTimeInterval:")
        .method<&NSDate::compare>("compare:")
        .method<&NSDate::earlierDate>("earlierDate:")
        .method<&NSDate::laterDate>("laterDate:")
        .method<&NSDate::isEqualToDate>("isEqualToDate:");
}

NSDate::NSDate() = default;
NSDate::~NSDate() = default;

Ref<NSDate> NSDate::date() {
    return dateAt(currentTimeIntervalSinceReferenceDate());
}

Ref<NSDate> NSDate::dateWithTimeIntervalSinceNow(NSTimeInterval seconds) {
    return dateAt(currentTimeIntervalSinceReferenceDate() + seconds);
}

Ref<NSDate> NSDate::dateWithTimeIntervalSince1970(NSTimeInterval seconds) {
    return dateAt(seconds - NSTimeIntervalSince1970);
}

Ref<NSDate> NSDate::dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds) {
    return dateAt(seconds);
}

Ref<NSDate> NSDate::dateWithTimeInterval_sinceDate(NSTimeInterval seconds, NSDate* date) {
    return date != nullptr ? date->dateByAddingTimeInterval(seconds) : nullptr;
}

Ref<NSDate> NSDate::distantFuture() {
    static NSDate* const moment = dateWithTimeIntervalSince1970(64092211200.0).leak();
    return moment;
}

Ref<NSDate> NSDate::distantPast() {
    static NSDate* const moment = dateWithTimeIntervalSince1970(-62135769600.0).leak();
    return moment;
}

NSTimeInterval NSDate::currentTimeIntervalSinceReferenceDate() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    // Shifted while still an integer: a double loses digits when it counts from 1970.
    const auto sinceReference = now - std::chrono::seconds(static_cast<std::int64_t>(NSTimeIntervalSince1970));
    return std::chrono::duration<double>(sinceReference).count();
}

id NSDate::init() {
    m_seconds = currentTimeIntervalSinceReferenceDate();
    return this;
}

id NSDate::initWithTimeIntervalSinceNow(NSTimeInterval seconds) {
    m_seconds = currentTimeIntervalSinceReferenceDate() + seconds;
    return this;
}

id NSDate::initWithTimeIntervalSince1970(NSTimeInterval seconds) {
    m_seconds = seconds - NSTimeIntervalSince1970;
    return this;
}

id NSDate::initWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds) {
    m_seconds = seconds;
    return this;
}

NSTimeInterval NSDate::timeIntervalSince1970() const {
    return m_seconds + NSTimeIntervalSince1970;
}

NSTimeInterval NSDate::timeIntervalSinceNow() const {
    return m_seconds - currentTimeIntervalSinceReferenceDate();
}

NSTimeInterval NSDate::timeIntervalSinceDate(NSDate* other) const {
    return other != nullptr ? m_seconds - other->m_seconds : std::numeric_limits<double>::quiet_NaN();
}

Ref<NSDate> NSDate::dateByAddingTimeInterval(NSTimeInterval seconds) const {
    return dateAt(m_seconds + seconds);
}

NSComparisonResult NSDate::compare(NSDate* other) const {
    if (other == nullptr) {
        NSException::raise(NSInvalidArgumentException, "*** -[NSDate compare:]: nil argument");
    }
    if (m_seconds < other->m_seconds) {
        return NSOrderedAscending;
    }
    return m_seconds > other->m_seconds ? NSOrderedDescending : NSOrderedSame;
}

Ref<NSDate> NSDate::earlierDate(NSDate* other) {
    return other != nullptr && other->m_seconds < m_seconds ? other : this;
}

Ref<NSDate> NSDate::laterDate(NSDate* other) {
    return other != nullptr && other->m_seconds > m_seconds ? other : this;
}

bool NSDate::isEqualToDate(NSDate* other) const {
    return other != nullptr && (other == this || other->m_seconds == m_seconds);
}

bool NSDate::isEqual(NSObject* other) const {
    return isEqualToDate(cast<NSDate>(other));
}

NSUInteger NSDate::hash() const {
    // The two zeros are equal dates.
    return std::hash<double>()(m_seconds == 0 ? 0.0 : m_seconds);
}

Ref<NSString> NSDate::description() const {
    // Far beyond any calendar; keeps the arithmetic below inside 64 bits.
    constexpr double limit = 1e17;
    const double since1970 = timeIntervalSince1970();
    char text[64];
    if (!std::isfinite(since1970)) {
        return NSString::stringWithUTF8String(std::isnan(since1970) ? "nan" : since1970 > 0 ? "inf" : "-inf");
    }
    const auto seconds = static_cast<std::int64_t>(std::floor(std::fmin(std::fmax(since1970, -limit), limit)));
    const std::int64_t days = floorDivide(seconds, secondsPerDay);
    const auto timeOfDay = static_cast<int>(seconds - days * secondsPerDay);
    const CivilDay day = civilDayFrom(days);
    std::snprintf(text, sizeof text, "%04lld-%02d-%02d %02d:%02d:%02d +0000", static_cast<long long>(day.year),
                  day.month, day.day, timeOfDay / 3600, timeOfDay / 60 % 60, timeOfDay % 60);
    return NSString::stringWithUTF8String(text);
}

id NSDate::copy() const {
    return id(const_cast<NSDate*>(this));
}

} // namespace zr
