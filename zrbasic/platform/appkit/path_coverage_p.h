#pragma once

#include <zrbasic/platform/appkit/path.h>
#include <zrbasic/platform/foundation/affine_transform.h>
#include <zrbasic/platform/runtime/function_ref.h>

#include <cstdint>
#include <span>
#include <vector>

namespace zr {

/// Straight lines that go around something, from the last point back to the first.
using Polygon = std::vector<NSPoint>;

/// The path with its curves as straight lines that are off by less than a twentieth, once it went through `transform`. None
/// at all for a path that goes to places that are not finite, or too far away to be drawn.
[[nodiscard]] std::vector<Polygon> polygonsOf(const CGPath& path, const NSAffineTransformStruct& transform);
/// What goes around a line along the path, as wide as `width` and then sent through `transform`. Its corners are
/// pointed, or cut where that would reach out further than twice the width.
[[nodiscard]] std::vector<Polygon> outlineOf(const CGPath& path, double width,
                                             const NSAffineTransformStruct& transform);

/// Calls `take` with a row, a place in it, and how much of each pixel from there on lies inside of the polygons, as
/// parts of 255. Only pixels left and above `wide` and `high` are told, and rows in which there are any.
void coverRows(const std::vector<Polygon>& polygons, int wide, int high,
               FunctionRef<void(int y, int x, std::span<const std::uint8_t> parts)> take);

} // namespace zr
