#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

/// Place and extent, one by one: what windows and views answer alike, as messages.
///
/// `zr_minX`, `zr_minY`, `zr_width` and `zr_height` are doubles, `zr_origin` is a point, `zr_size` a size and `zr_frame`
/// a rectangle; each has a setter, `setZr_minX:` and so on. `zr_maxX` and `zr_maxY` can only be read. Call the functions
/// of the same names where the kind of object is known: see window.h and view.h beside this file.
class ZR_EXPORT ZRXCoordinateProtocol {
    ZR_PROTOCOL(ZRXCoordinateProtocol)
};

} // namespace zr
