#pragma once

class QImage;

namespace zr::qt {

/// Draws `over` on `below`, of the same size and both in 32 bits with the colours multiplied by the alpha: the lightness
/// of `over` with the hue and saturation of what is there. A mode that painters do not have.
void blendLuminosity(QImage& below, const QImage& over);

} // namespace zr::qt
