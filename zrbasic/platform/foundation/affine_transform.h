#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/declare.h>

namespace zr {

/// A linear map and a shift: x' = m11 x + m21 y + tX, y' = m12 x + m22 y + tY.
struct NSAffineTransformStruct {
    double m11 = 1;
    double m12 = 0;
    double m21 = 0;
    double m22 = 1;
    double tX = 0;
    double tY = 0;

    friend bool operator==(const NSAffineTransformStruct&, const NSAffineTransformStruct&) = default;
};

/// What `first` and then `second` do.
[[nodiscard]] constexpr NSAffineTransformStruct transformBoth(const NSAffineTransformStruct& first,
                                                              const NSAffineTransformStruct& second) {
    return {first.m11 * second.m11 + first.m12 * second.m21,
            first.m11 * second.m12 + first.m12 * second.m22,
            first.m21 * second.m11 + first.m22 * second.m21,
            first.m21 * second.m12 + first.m22 * second.m22,
            first.tX * second.m11 + first.tY * second.m21 + second.tX,
            first.tX * second.m12 + first.tY * second.m22 + second.tY};
}

[[nodiscard]] constexpr NSPoint transformedPoint(const NSAffineTransformStruct& transform, NSPoint point) {
    return {transform.m11 * point.x + transform.m21 * point.y + transform.tX,
            transform.m12 * point.x + transform.m22 * point.y + transform.tY};
}

/// A linear map and a shift, put together step by step: what is added is done to a point before what is there already.
/// To draw through it, `concat` it to what is being drawn, see appkit/graphics_context.h.
///
/// A fresh one changes nothing. Numbers that are not finite are kept as they are given. Used on one thread at a time.
class ZR_EXPORT NSAffineTransform : public NSObject {
    ZR_DECLARE_CLASS(NSAffineTransform, NSObject)
  public:
    NSAffineTransform();
    ~NSAffineTransform() override;

    [[nodiscard]] static Ref<NSAffineTransform> transform();
    /// As another; null gives one that changes nothing.
    id initWithTransform(NSAffineTransform* transform);

    void translateXBy_yBy(double x, double y);
    void scaleBy(double factor);
    void scaleXBy_yBy(double x, double y);
    /// Counterclockwise where y grows upwards. Whole quarters of a turn are exact.
    void rotateByDegrees(double degrees);
    void rotateByRadians(double radians);
    /// The other is done before, or after, what is there; null does nothing.
    void prependTransform(NSAffineTransform* transform);
    void appendTransform(NSAffineTransform* transform);
    /// Makes it undo what it did. Raises `NSGenericException` for one that cannot be undone, as one that makes
    /// everything flat.
    void invert();

    [[nodiscard]] NSPoint transformPoint(NSPoint point) const;
    /// Without the shift.
    [[nodiscard]] NSSize transformSize(NSSize size) const;

    [[nodiscard]] const NSAffineTransformStruct& transformStruct() const { return m_struct; }
    void setTransformStruct(const NSAffineTransformStruct& numbers) { m_struct = numbers; }

    /// True for one of the same numbers.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    /// Another one of the same numbers.
    [[nodiscard]] id copy() const override;

  private:
    void prepend(const NSAffineTransformStruct& numbers);

    NSAffineTransformStruct m_struct;
};

} // namespace zr
