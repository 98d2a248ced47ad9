#include <zrbasic/platform/foundation/affine_transform.h>

#include <zrbasic/platform/runtime/exception.h>

#include <cmath>
#include <functional>
#include <numbers>

namespace zr {
namespace {

NSAffineTransformStruct turnBy(double sine, double cosine) {
    return {cosine, sine, -sine, cosine, 0, 0};
}

} // namespace

ZR_DEFINE_CLASS(NSAffineTransform) {
    is.classMethod<&NSAffineTransform::transform>("transform");
    is.method<&NSAffineTransform::initWithTransform>("initWithTransform:");
    is.method<&NSAffineTransform::translateXBy_yBy>("translateXBy:yBy:");
    is.method<&NSAffineTransform::scaleBy>("scaleBy:");
    is.method<&NSAffineTransform::scaleXBy_yBy>("scaleXBy:yBy:");
    is.method<&NSAffineTransform::rotateByDegrees>("rotateByDegrees:");
    is.method<&NSAffineTransform::rotateByRadians>("rotateByRadians:");
    is.method<&NSAffineTransform::prependTransform>("prependTransform:");
    is.method<&NSAffineTransform::appendTransform>("appendTransform:");
    is.method<&NSAffineTransform::invert>("invert");
    is.method<&NSAffineTransform::transformPoint>("transformPoint:");
    is.method<&NSAffineTransform::transformSize>("transformSize:");
    is.method<&NSAffineTransform::transformStruct>("transformStruct");
    is.method<&NSAffineTransform::setTransformStruct>("setTransformStruct:");
}

NSAffineTransform::NSAffineTransform() = default;
NSAffineTransform::~NSAffineTransform() = default;

Ref<NSAffineTransform> NSAffineTransform::transform() {
    return make<NSAffineTransform>();
}

id NSAffineTransform::initWithTransform(NSAffineTransform* transform) {
    if (transform) {
        m_struct = transform->m_struct;
    }
    return id(this);
}

void NSAffineTransform::prepend(const NSAffineTransformStruct& numbers) {
    m_struct = transformBoth(numbers, m_struct);
}

void NSAffineTransform::translateXBy_yBy(double x, double y) {
    prepend({1, 0, 0, 1, x, y});
}

void NSAffineTransform::scaleBy(double factor) {
    scaleXBy_yBy(factor, factor);
}

void NSAffineTransform::scaleXBy_yBy(double x, double y) {
    prepend({x, 0, 0, y, 0, 0});
}

void NSAffineTransform::rotateByDegrees(double degrees) {
    // What is left of whole quarters is exact, and small enough for a sine and a cosine that are exact at its end.
    const double turn = std::fmod(degrees, 360);
    const double quarters = std::nearbyint(turn / 90);
    const double rest = (turn - quarters * 90) * std::numbers::pi / 180;
    const double sine = std::sin(rest);
    const double cosine = std::cos(rest);
    switch (std::isfinite(quarters) ? (static_cast<int>(quarters) + 4) % 4 : 0) {
        case 1:
            prepend(turnBy(cosine, -sine));
            break;
        case 2:
            prepend(turnBy(-sine, -cosine));
            break;
        case 3:
            prepend(turnBy(-cosine, sine));
            break;
        default:
            prepend(turnBy(sine, cosine));
            break;
    }
}

void NSAffineTransform::rotateByRadians(double radians) {
    prepend(turnBy(std::sin(radians), std::cos(radians)));
}

void NSAffineTransform::prependTransform(NSAffineTransform* transform) {
    if (transform) {
        prepend(transform->m_struct);
    }
}

void NSAffineTransform::appendTransform(NSAffineTransform* transform) {
    if (transform) {
        m_struct = transformBoth(m_struct, transform->m_struct);
    }
}

void NSAffineTransform::invert() {
    const auto [m11, m12, m21, m22, tX, tY] = m_struct;
    const double area = m11 * m22 - m12 * m21;
    if (area == 0 || !std::isfinite(area)) {
        NSException::raise(NSGenericException, "the transform cannot be inverted");
    }
    m_struct = {
        m22 / area, -m12 / area, -m21 / area, m11 / area, (m21 * tY - m22 * tX) / area, (m12 * tX - m11 * tY) / area};
}

NSPoint NSAffineTransform::transformPoint(NSPoint point) const {
    return transformedPoint(m_struct, point);
}

NSSize NSAffineTransform::transformSize(NSSize size) const {
    return {m_struct.m11 * size.width + m_struct.m21 * size.height,
            m_struct.m12 * size.width + m_struct.m22 * size.height};
}

bool NSAffineTransform::isEqual(NSObject* other) const {
    const auto* const transform = cast<NSAffineTransform>(other);
    return transform && transform->m_struct == m_struct;
}

NSUInteger NSAffineTransform::hash() const {
    return std::hash<double>()(m_struct.m11) ^ std::hash<double>()(m_struct.tX + 2 * m_struct.tY);
}

id NSAffineTransform::copy() const {
    const Ref<NSAffineTransform> made = alloc<NSAffineTransform>();
    made->m_struct = m_struct;
    return made;
}

} // namespace zr
