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

[[nodiscard]] constexpr double NSMinX(NSRect rect) {
    return rect.origin.x;
}
[[nodiscard]] constexpr double NSMinY(NSRect rect) {
    return rect.origin.y;
}
[[nodiscard]] constexpr double NSMaxX(NSRect rect) {
    return rect.origin.x + rect.size.width;
}
[[nodiscard]] constexpr double NSMaxY(NSRect rect) {
    return rect.origin.y + rect.size.height;
}

/// `rect` with `dx` points less on the left and on the right, and `dy` less at the top and at the bottom. Nothing is
/// clamped: too little room gives a negative extent.
[[nodiscard]] constexpr NSRect NSInsetRect(NSRect rect, double dx, double dy) {
    return {{rect.origin.x + dx, rect.origin.y + dy}, {rect.size.width - 2 * dx, rect.size.height - 2 * dy}};
}

/// Whether there is nothing in it; negative extents and those that are not numbers count as nothing.
[[nodiscard]] constexpr bool NSIsEmptyRect(NSRect rect) {
    return !(rect.size.width > 0 && rect.size.height > 0);
}

/// What both have in common; the zero rectangle when that is nothing.
[[nodiscard]] constexpr NSRect NSIntersectionRect(NSRect a, NSRect b) {
    const double left = NSMinX(a) > NSMinX(b) ? NSMinX(a) : NSMinX(b);
    const double bottom = NSMinY(a) > NSMinY(b) ? NSMinY(a) : NSMinY(b);
    const double right = NSMaxX(a) < NSMaxX(b) ? NSMaxX(a) : NSMaxX(b);
    const double top = NSMaxY(a) < NSMaxY(b) ? NSMaxY(a) : NSMaxY(b);
    return right > left && top > bottom ? NSRect{{left, bottom}, {right - left, top - bottom}} : NSRect{};
}

/// Whether a pointer at `point` is over `rect`: of two rectangles that touch it is over one only. `isFlipped` says that
/// y grows downwards, so that it is the row of pixels at the top that counts as inside either way.
[[nodiscard]] constexpr bool NSMouseInRect(NSPoint point, NSRect rect, bool isFlipped) {
    const bool isBetween = isFlipped ? point.y >= NSMinY(rect) && point.y < NSMaxY(rect)
                                     : point.y > NSMinY(rect) && point.y <= NSMaxY(rect);
    return point.x >= NSMinX(rect) && point.x < NSMaxX(rect) && isBetween;
}

} // namespace zr
