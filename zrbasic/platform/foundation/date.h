#pragma once

#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/export.h>

namespace zr {

/// A span of time in seconds.
using NSTimeInterval = double;

/// Seconds from 1970-01-01 to 2001-01-01, both at midnight UTC.
inline constexpr NSTimeInterval NSTimeIntervalSince1970 = 978307200.0;

/// A moment, kept as seconds since the reference date, 2001-01-01 00:00:00 UTC. Knows no time zone and never changes,
/// so it may be used from any thread.
class ZR_EXPORT NSDate : public NSObject {
    ZR_DECLARE_CLASS(NSDate, NSObject)
  public:
    NSDate();
    ~NSDate() override;

    /// The present moment.
    [[nodiscard]] static Ref<NSDate> date();
    /// The moment so many seconds after the present one, before it when negative.
    [[nodiscard]] static Ref<NSDate> dateWithTimeIntervalSinceNow(NSTimeInterval seconds);
    [[nodiscard]] static Ref<NSDate> dateWithTimeIntervalSince1970(NSTimeInterval seconds);
    [[nodiscard]] static Ref<NSDate> dateWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds);
    /// Null when `date` is null.
    [[nodiscard]] static Ref<NSDate> dateWithTimeInterval_sinceDate(NSTimeInterval seconds, NSDate* date);
    /// The beginning of the year 4001, later than any date in use; always the same object.
    [[nodiscard]] static Ref<NSDate> distantFuture();
    /// The beginning of the year 1; always the same object.
    [[nodiscard]] static Ref<NSDate> distantPast();
    /// Seconds from the reference date to the present moment.
    [[nodiscard]] static NSTimeInterval currentTimeIntervalSinceReferenceDate();

    /// The present moment.
    id init() override;
    id initWithTimeIntervalSinceNow(NSTimeInterval seconds);
    id initWithTimeIntervalSince1970(NSTimeInterval seconds);
    id initWithTimeIntervalSinceReferenceDate(NSTimeInterval seconds);

    [[nodiscard]] NSTimeInterval timeIntervalSinceReferenceDate() const { return m_seconds; }
    [[nodiscard]] NSTimeInterval timeIntervalSince1970() const;
    /// Seconds from now to this date: negative for a moment that has passed.
    [[nodiscard]] NSTimeInterval timeIntervalSinceNow() const;
    /// Seconds from `other` to this date; NaN for null.
    [[nodiscard]] NSTimeInterval timeIntervalSinceDate(NSDate* other) const;
    [[nodiscard]] Ref<NSDate> dateByAddingTimeInterval(NSTimeInterval seconds) const;

    /// Raises `NSInvalidArgumentException` for null.
    [[nodiscard]] NSComparisonResult compare(NSDate* other) const;
    /// This date or `other`, whichever comes first; this one when they are equal or `other` is null.
    [[nodiscard]] Ref<NSDate> earlierDate(NSDate* other);
    [[nodiscard]] Ref<NSDate> laterDate(NSDate* other);
    [[nodiscard]] bool isEqualToDate(NSDate* other) const;

    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// "1970-01-01 00:00:00 +0000": UTC, the fraction of a second dropped towards the past. Days before 15 October 1582
    /// are those of the Julian calendar. "nan", "inf" or "-inf" for moments that are none.
    [[nodiscard]] Ref<NSString> description() const override;
    /// The date itself.
    [[nodiscard]] id copy() const override;

  private:
    NSTimeInterval m_seconds = 0;
};

} // namespace zr
