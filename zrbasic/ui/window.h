#pragma once

#include <zrbasic/platform/appkit/window.h>

/// Showing, placing, shaking, closing and running windows modally. To show a window that nobody else keeps, use
/// `zr_showWindow`: its controller is kept as long as it is open (see window_controller.h).
///
/// A null receiver does nothing and gives zero. Main thread only.
namespace zr {

class NSNotification;

// NSWindow(ZRXHelper)

/// The view that the toolbar lies in; null for a window without a toolbar.
[[nodiscard]] ZR_EXPORT Ref<NSView> titleBarView(NSWindow* self);
/// The title bar's own buttons; null for a window without a title.
[[nodiscard]] ZR_EXPORT Ref<NSButton> closeButton(NSWindow* self);
[[nodiscard]] ZR_EXPORT Ref<NSButton> miniaturizeButton(NSWindow* self);
[[nodiscard]] ZR_EXPORT Ref<NSButton> zoomButton(NSWindow* self);
ZR_EXPORT void hideAllWindowButtons(NSWindow* self);
/// 28 points on macOS 11 and later and on other systems, 22 before.
[[nodiscard]] ZR_EXPORT double titleBarHeight();

/// Shows the window by its controller, or by a new one, which is kept until the window closes: see the operations of
/// these names in window_controller.h. `place` is as in `orderWindow_relativeTo`, and so is the number.
ZR_EXPORT void zr_showWindow(NSWindow* self, NSObject* sender);
ZR_EXPORT void zr_makeKeyAndOrderFront(NSWindow* self, NSObject* sender);
ZR_EXPORT void zr_orderFront(NSWindow* self, NSObject* sender);
ZR_EXPORT void zr_orderWindow_relativeTo(NSWindow* self, NSWindowOrderingMode place, NSInteger windowNumber);

/// Runs the window modally and gives the response: `runModalForWindow` for the window of its controller, or of a new
/// one.
ZR_EXPORT NSInteger zr_runModal(NSWindow* self);
/// Closes the window and then ends the application's latest modal session, whichever window that is for, with
/// `response`; the short form with `NSModalResponseStop`.
ZR_EXPORT void stopModalWithResponse(NSWindow* self, NSInteger response);
ZR_EXPORT void stopModal(NSWindow* self);
/// Whether closing the window by hand also ends the modal session that it is run in; false at first. It takes effect
/// where `windowWillClose` is called.
[[nodiscard]] ZR_EXPORT bool needStopModalWhenClosed(NSWindow* self);
ZR_EXPORT void setNeedStopModalWhenClosed(NSWindow* self, bool needStop);
/// Ends the modal session of a window that closes: the object of `notification`, a will-close notification. For a modal
/// panel it ends at once. For one with the flag above that closes while the loop is in the modal panel's mode, it ends
/// a little later, from the main queue. Otherwise, and for null, nothing happens.
///
/// Nobody calls this by itself: the application registers its windows for `NSWindowWillCloseNotification` with the
/// selector `windowWillClose:`.
ZR_EXPORT void windowWillClose(NSWindow* self, NSNotification* notification);

/// Shakes the window to and fro, 20 times in half a second, as to say no. It ends where it began. The window's
/// `animations` are replaced.
ZR_EXPORT void beginShakeAnimation(NSWindow* self);

/// Moves the window to the middle of what the main screen leaves to windows, or of the zero rectangle without a screen.
/// Its place is not rounded to whole points.
ZR_EXPORT void centerAtScreen(NSWindow* self);
/// The same for a rectangle, in screen coordinates.
ZR_EXPORT void centerAtRect(NSWindow* self, NSRect rect);

// NSWindow(ZRXCoordinate)
//
// The operations of `ZRXCoordinateProtocol`, in screen coordinates. They read the frame, but the three that set an
// extent set that of the content, and the one dimension that is not given is taken from the frame: so setting the width
// of a window with a title also makes it higher by that title. Callers rely on it.

[[nodiscard]] ZR_EXPORT double zr_minX(NSWindow* self);
ZR_EXPORT void setZr_minX(NSWindow* self, double x);
[[nodiscard]] ZR_EXPORT double zr_minY(NSWindow* self);
ZR_EXPORT void setZr_minY(NSWindow* self, double y);
[[nodiscard]] ZR_EXPORT double zr_maxX(NSWindow* self);
[[nodiscard]] ZR_EXPORT double zr_maxY(NSWindow* self);
[[nodiscard]] ZR_EXPORT double zr_width(NSWindow* self);
ZR_EXPORT void setZr_width(NSWindow* self, double width);
[[nodiscard]] ZR_EXPORT double zr_height(NSWindow* self);
ZR_EXPORT void setZr_height(NSWindow* self, double height);
[[nodiscard]] ZR_EXPORT NSSize zr_size(NSWindow* self);
ZR_EXPORT void setZr_size(NSWindow* self, NSSize size);
[[nodiscard]] ZR_EXPORT NSRect zr_frame(NSWindow* self);
ZR_EXPORT void setZr_frame(NSWindow* self, NSRect frame);
[[nodiscard]] ZR_EXPORT NSPoint zr_origin(NSWindow* self);
ZR_EXPORT void setZr_origin(NSWindow* self, NSPoint origin);

} // namespace zr
