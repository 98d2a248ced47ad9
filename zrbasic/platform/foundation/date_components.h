#pragma once

#include <zrbasic/platform/runtime/declare.h>

#include <limits>

namespace zr {

class NSDate;

/// The fields that a calendar can give; a sum of these where several are asked for.
enum NSCalendarUnit : NSUInteger {
    NSCalendarUnitYear = 4,
    NSCalendarUnitMonth = 8,
    NSCalendarUnitDay = 16,
    NSCalendarUnitHour = 32,
    NSCalendarUnitMinute = 64,
    NSCalendarUnitSecond = 128,
    NSCalendarUnitWeekday = 512,
};

/// What a field reads that nobody set.
inline constexpr NSInteger NSDateComponentUndefined = std::numeric_limits<NSInteger>::max();

/// The calendar fields of a moment. Any number may be set; nothing is checked or carried over.
class ZR_EXPORT NSDateComponents : public NSObject {
    ZR_OBJECT(NSDateComponents, NSObject)

  public:
    NSDateComponents();
    ~NSDateComponents() override;

    /// Within its era: the year before the year 1 is 1, too.
    ZR_PROPERTY(NSInteger, year, setYear)
    /// From 1 on.
    ZR_PROPERTY(NSInteger, month, setMonth)
    /// Of the month, from 1 on.
    ZR_PROPERTY(NSInteger, day, setDay)
    ZR_PROPERTY(NSInteger, hour, setHour)
    ZR_PROPERTY(NSInteger, minute, setMinute)
    ZR_PROPERTY(NSInteger, second, setSecond)
    /// 1 is Sunday, 7 is Saturday.
    ZR_PROPERTY(NSInteger, weekday, setWeekday)

    /// True for components with the same fields, set and not set.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// Another object with the same fields.
    [[nodiscard]] id copy() const override;
};

/// The Gregorian calendar in the local time zone, as they were when the process first asked; days before 15 October
/// 1582 are those of the Julian calendar. May be used from any thread.
class ZR_EXPORT NSCalendar : public NSObject {
    ZR_DECLARE_CLASS(NSCalendar, NSObject)

  public:
    ~NSCalendar() override;

    /// The same object every time. Never null.
    [[nodiscard]] static Ref<NSCalendar> currentCalendar();

    /// The fields that `units` asks for; the others stay undefined, and bits that mean nothing are ignored.
    ///
    /// Null for a null date. A date that is not a number, or infinite, has no fields; one beyond five million years has
    /// those of the last moment that the calendar reaches.
    [[nodiscard]] Ref<NSDateComponents> components_fromDate(NSUInteger units, NSDate* date) const;
};

} // namespace zr
