#pragma once

#include <zrbasic/platform/foundation/affine_transform.h>
#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/types.h>

namespace zr {

class CGPath;
class NSAttributedString;
class NSBitmapImageRep;
class NSColor;

/// How what is drawn and what is there already make up the result.
enum NSCompositingOperation : NSUInteger {
    NSCompositingOperationClear = 0,
    /// The drawing alone, transparent where it is.
    NSCompositingOperationCopy = 1,
    /// The drawing over what is there.
    NSCompositingOperationSourceOver = 2,
    NSCompositingOperationSourceIn = 3,
    /// What is there, as far as the drawing is opaque.
    NSCompositingOperationDestinationIn = 7,
    NSCompositingOperationMultiply = 14,
    NSCompositingOperationScreen = 15,
    /// The lightness of the drawing with the hue and saturation of what is there.
    NSCompositingOperationLuminosity = 28,
};

/// What a toolkit draws with, on behalf of an `NSGraphicsContext`, which is how views and cells use it.
///
/// Coordinates are those of the view or image that is drawn: y grows upwards, or downwards for one that is flipped;
/// text and pictures stand upright either way. A null colour draws nothing. Main thread only, and only while the
/// drawing lasts.
class ZR_EXPORT Canvas {
  public:
    Canvas() = default;
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    virtual ~Canvas();

    /// Keeps the clipping and the transform, and brings back what was kept last. Calls are balanced.
    virtual void save() = 0;
    virtual void restore() = 0;
    /// Nothing is drawn outside of `rect` any more.
    virtual void clipToRect(NSRect rect) = 0;
    /// Everything drawn from here on goes through `transform` first.
    virtual void concat(const NSAffineTransformStruct& transform) = 0;

    virtual void fillRect(NSRect rect, NSColor* color, NSCompositingOperation operation) = 0;
    virtual void fillRoundedRect(NSRect rect, double xRadius, double yRadius, NSColor* color) = 0;
    /// The line, `width` points wide, lies inside of `rect` with its outer edge on it; its corners are square where the
    /// radius is 0.
    virtual void strokeRoundedRect(NSRect rect, double radius, double width, NSColor* color) = 0;
    /// What the path goes around, open parts closed by a straight line: everything that it goes around more often one
    /// way than the other.
    virtual void fillPath(const CGPath& path, NSColor* color) = 0;
    /// A line `width` points wide along the path, cut off at its ends and pointed at its corners.
    virtual void strokePath(const CGPath& path, double width, NSColor* color) = 0;

    /// The text in `rect`, from its top on and cut off at its edges, aligned and broken as its paragraph style says.
    /// What has no font or colour is drawn in the system font of 13 points and in black. `isSingleLine` draws
    /// everything on one line, cut or shortened at its ends as the style's line-break mode says, and as high as it is:
    /// in a lower rectangle it reaches below.
    virtual void drawText(NSAttributedString* text, NSRect rect, bool isSingleLine) = 0;

    /// The part `from` of the bitmap, in the bitmap's points with y upwards, spread over `to`; an empty `from` is all
    /// of it. `fraction` is how opaque the drawing is, from 0 to 1.
    virtual void drawBitmap(NSBitmapImageRep* bitmap, NSRect to, NSRect from, NSCompositingOperation operation,
                            double fraction) = 0;
};

} // namespace zr
