#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/types.h>

#include <functional>
#include <span>

/// What a toolkit puts on the screen for the objects here, seen from them.
///
/// An object owns its peer and tells it what has changed; the peer reads the rest from the object, which has all the
/// state, and sends it events as messages. A peer can be thrown away at any time and made anew from the object.
namespace zr {

class NSBitmapImageRep;
class NSWindow;

/// In which respect a view has changed.
enum class ViewChange {
    /// Its frame, or the bounds' origin.
    Frame,
    /// Which views lie in it, or their order.
    Subviews,
    Hidden,
    /// It must be drawn again.
    Display,
    Alpha,
    /// Background, border or corners of the layer, or whether there is one.
    Layer,
    CursorRects,
    TrackingAreas,
    ToolTip,
    /// Natural size, priorities or constraints.
    Layout,
    /// Whether a control can be used.
    Enabled,
    /// What it says: a control's value, a text view's text or how that looks.
    Content,
    /// Of a text view: the selected range.
    Selection,
    /// A name for those who cannot see it, or what stands in for a value.
    Accessibility,
};

/// What stands on the screen for a view. Main thread only; may be destroyed on any thread.
class ZR_EXPORT ViewPeer {
  public:
    ViewPeer() = default;
    ViewPeer(const ViewPeer&) = delete;
    ViewPeer& operator=(const ViewPeer&) = delete;
    /// The view is on its way out: nothing of it may be touched or retained any more.
    virtual ~ViewPeer();

    virtual void viewChanged(ViewChange change) = 0;
    /// The view has become its window's first responder: key presses go to it.
    virtual void takeKeyboard() = 0;
    /// Turns the view with everything in it, on the screen alone, from angle to angle in as many equal shares of
    /// `seconds` as there are ways between them, and runs `end` when that is over or another turn takes its place. The
    /// angles are radians, those above 0 against the clock; `anchor`, which stays where it is, is a share of the view's
    /// extent from the left and from below. A peer that cannot do it, as this one, ends at once.
    virtual void playRotation(NSPoint anchor, std::span<const double> angles, double seconds,
                              std::function<void()> end);
    /// As `cacheDisplayInRect:toBitmapImageRep:` of the view; false, and nothing is drawn, from a peer that leaves that
    /// to the view, as this one.
    virtual bool drawInto(NSBitmapImageRep& bitmap, NSRect rect);
};

/// In which respect a window has changed.
enum class WindowChange {
    Frame,
    Title,
    StyleMask,
    ContentView,
    FirstResponder,
    /// Which of its buttons are hidden.
    Buttons,
    /// Whether it may be closed, and the like.
    Behavior,
};

/// What stands on the screen for a window; made when the window is first shown. Main thread only; may be destroyed on
/// any thread.
class ZR_EXPORT WindowPeer {
  public:
    WindowPeer() = default;
    WindowPeer(const WindowPeer&) = delete;
    WindowPeer& operator=(const WindowPeer&) = delete;
    /// The window is on its way out: nothing of it may be touched or retained any more.
    virtual ~WindowPeer();

    virtual void windowChanged(WindowChange change) = 0;
    /// Shows the window in front of `relative`, or of all others for null.
    virtual void orderAbove(NSWindow* relative) = 0;
    /// Shows the window behind `relative`, or behind all others for null.
    virtual void orderBelow(NSWindow* relative) = 0;
    virtual void orderOut() = 0;
    /// The window has become key: asks the desktop to activate it.
    virtual void takeKeyboard() = 0;
    /// Moves the window, on the screen alone, from point to point in as many equal shares of `seconds` as there are
    /// ways between them, and ends at the window's frame. The points are origins of the frame.
    virtual void playFrameOrigins(std::span<const NSPoint> points, double seconds) = 0;
};

} // namespace zr
