#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>

/// Images recoloured, mirrored and turned. Only an image's best bitmap counts, and results have as many pixels a point
/// as it has; mirroring and whole quarters of a turn move pixels unchanged. A result that would have more pixels than a
/// bitmap can have has none. A null receiver gives null. Main thread only; nothing here raises.
namespace zr {

class NSColor;
class NSImage;

// NSImage(ZRXHelper)

/// Recolours the receiver itself and returns it: every pixel keeps its opacity and its lightness, and takes its hue and
/// saturation from the colour. So black stays black and white stays white, and only what lies between becomes coloured:
/// half grey and pure red give `#ff4a4a`.
///
/// Null makes everything grey, as black does. An image without bitmaps stays as it is.
ZR_EXPORT Ref<NSImage> imageWithTintColor(NSImage* self, NSColor* color);

/// A new image with top and bottom exchanged; null when the width or the height is 0 in single precision. The size is
/// rounded to that precision.
[[nodiscard]] ZR_EXPORT Ref<NSImage> mirrorRotateInYAxis(NSImage* self);
/// The same with left and right exchanged. The spelling is part of the name.
[[nodiscard]] ZR_EXPORT Ref<NSImage> mirrorRotateInXAsix(NSImage* self);

/// A new image of the receiver turned clockwise about its middle by that many degrees, just large enough to hold it: 90
/// makes one 50 wide and 100 high of one 100 wide and 50 high. What is left free is transparent. For an angle that is
/// not finite the result has no extent.
[[nodiscard]] ZR_EXPORT Ref<NSImage> rotateWithAngle(NSImage* self, double degrees);

} // namespace zr
