#pragma once

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

} // namespace zr
