#pragma once

#include <zrbasic/platform/appkit/tracking_area.h>
#include <zrbasic/platform/appkit/view.h>

#include <concepts>

/// What every view can do besides: borders, one managed tracking area, pictures of it, order among siblings,
/// geometry.
///
/// A null receiver does nothing and gives zero. Main thread only.
namespace zr {

class NSImage;

// NSView(ZRXHelper)

/// A new view of that class, 300 points wide and high, its origin at zero: `instance<ZRXView>()`.
template <std::derived_from<NSView> T>
[[nodiscard]] Ref<T> instance() {
    return make<T>(&T::initWithFrame, NSMakeRect(0, 0, 300, 300));
}

/// Of the layer, which is made when there is none; in points.
ZR_EXPORT void setZr_borderWidth(NSView* self, double width);
ZR_EXPORT void setZr_cornerRadius(NSView* self, double radius);

/// Follows the pointer over `rect`, in the view's own coordinates, on the view's behalf: it is sent `mouseEntered:` and
/// its kin. `options` is a sum of `NSTrackingAreaOptions`.
///
/// A view has one area from these operations: a second call takes the place of the first. Areas that were added in
/// other ways stay. The shorter forms take the bounds as they are now, and entering and leaving whichever window is
/// active.
ZR_EXPORT void zr_addTrackingAreaWithRect_andOptions(NSView* self, NSRect rect, NSUInteger options);
ZR_EXPORT void zr_addTrackingAreaWithRect(NSView* self, NSRect rect);
ZR_EXPORT void zr_addTrackingAreaWithOptions(NSView* self, NSUInteger options);
ZR_EXPORT void zr_addTrackingArea(NSView* self);

/// What the view shows, drawn anew with everything in it, whether it is on the screen or not: an image of the size of
/// the bounds, with one bitmap. Where nothing can be drawn the bitmap is transparent, and without any extent there is
/// none. Null for null.
///
/// A rectangle only says how large the bitmap is: it always shows the whole bounds, scaled into it. Insets leave out
/// of the bounds' extent what they say; none at all has the bitmap of the bounds.
[[nodiscard]] ZR_EXPORT Ref<NSImage> zr_snapShot(NSView* self);
[[nodiscard]] ZR_EXPORT Ref<NSImage> zr_snapShotWithInsets(NSView* self, NSEdgeInsets insets);
[[nodiscard]] ZR_EXPORT Ref<NSImage> zr_snapShotWithRect(NSView* self, NSRect rect);
/// What the screen shows where the view is, of its window and the windows in front of that; transparent where there is
/// neither. As large as the view, and higher by twice the border of its layer, by which it reaches below the view. An
/// image without a bitmap where nothing can be captured, as in a window that is not on the screen.
[[nodiscard]] ZR_EXPORT Ref<NSImage> screenCachedImage(NSView* self);

/// Adds the elements one after the other, each in front of those before. Null, and what is no view, is passed over.
ZR_EXPORT void zr_addSubviews(NSView* self, NSArray* views);
/// The bounds in screen coordinates; zero for a view that is in no window.
[[nodiscard]] ZR_EXPORT NSRect convertRectToScreen(NSView* self);
/// In front of its siblings; nothing without a superview.
ZR_EXPORT void moveToFront(NSView* self);
/// Shakes the view to and fro about its middle, by 5 degrees for 0.15 seconds, with everything in it; it ends as it
/// began. Nothing for a view without a layer (see `setWantsLayer`).
ZR_EXPORT void beginShakeAnimation(NSView* self);
/// The receiver keeps its width, and `other` gives way where there is not enough room for both side by side. Null
/// changes the receiver alone.
ZR_EXPORT void displayPriorityGreaterThan(NSView* self, NSView* other);

// NSView(CoordinateHelper)
//
// The operations of `ZRXCoordinateProtocol`, in the superview's coordinates. All of them read and set the frame.

[[nodiscard]] ZR_EXPORT double zr_minX(NSView* self);
ZR_EXPORT void setZr_minX(NSView* self, double x);
[[nodiscard]] ZR_EXPORT double zr_minY(NSView* self);
ZR_EXPORT void setZr_minY(NSView* self, double y);
[[nodiscard]] ZR_EXPORT double zr_maxX(NSView* self);
[[nodiscard]] ZR_EXPORT double zr_maxY(NSView* self);
[[nodiscard]] ZR_EXPORT double zr_width(NSView* self);
ZR_EXPORT void setZr_width(NSView* self, double width);
[[nodiscard]] ZR_EXPORT double zr_height(NSView* self);
ZR_EXPORT void setZr_height(NSView* self, double height);
[[nodiscard]] ZR_EXPORT NSSize zr_size(NSView* self);
ZR_EXPORT void setZr_size(NSView* self, NSSize size);
[[nodiscard]] ZR_EXPORT NSRect zr_frame(NSView* self);
ZR_EXPORT void setZr_frame(NSView* self, NSRect frame);
[[nodiscard]] ZR_EXPORT NSPoint zr_origin(NSView* self);
ZR_EXPORT void setZr_origin(NSView* self, NSPoint origin);

} // namespace zr
