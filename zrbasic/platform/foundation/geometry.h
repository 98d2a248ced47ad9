#pragma once

namespace zr {

/// A point on a plane whose origin is at the lower left, in units of 1/72 inch or of an image's pixels.
struct NSPoint {
    double x = 0;
    double y = 0;

    friend bool operator==(const NSPoint&, const NSPoint&) = default;
};

/// An extent; nothing keeps it from being negative.
struct NSSize {
    double width = 0;
    double height = 0;

    friend bool operator==(const NSSize&, const NSSize&) = default;
};

/// A rectangle by its lower left corner and its extent.
struct NSRect {
    NSPoint origin;
    NSSize size;

    friend bool operator==(const NSRect&, const NSRect&) = default;
};

inline constexpr NSPoint NSZeroPoint{};
inline constexpr NSSize NSZeroSize{};
inline constexpr NSRect NSZeroRect{};

[[nodiscard]] constexpr NSPoint NSMakePoint(double x, double y) {
    return {x, y};
}

[[nodiscard]] constexpr NSSize NSMakeSize(double width, double height) {
    return {width, height};
}

[[nodiscard]] constexpr NSRect NSMakeRect(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
}

} // namespace zr
