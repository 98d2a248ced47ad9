#pragma once

#include <zrbasic/platform/appkit/peer.h>
#include <zrbasic/platform/appkit/responder.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/geometry.h>

#include <memory>
#include <vector>

namespace zr {

class CALayer;
class NSBitmapImageRep;
class NSCursor;
class NSLayoutConstraint;
class NSMenu;
class NSTrackingArea;
class NSView;
class NSWindow;

/// Where a subview goes among its siblings.
enum NSWindowOrderingMode : NSInteger {
    NSWindowBelow = -1,
    NSWindowOut = 0,
    NSWindowAbove = 1,
};

/// How a view shows that it has the keyboard.
enum NSFocusRingType : NSUInteger {
    NSFocusRingTypeDefault = 0,
    NSFocusRingTypeNone = 1,
    NSFocusRingTypeExterior = 2,
};

/// What gives when the superview's extent changes, a sum of these; nothing, at first, leaves the frame alone.
enum NSAutoresizingMaskOptions : NSUInteger {
    NSViewNotSizable = 0,
    /// The gap to the superview's left edge, where x is 0.
    NSViewMinXMargin = 1,
    NSViewWidthSizable = 2,
    NSViewMaxXMargin = 4,
    /// The gap to the edge where y is 0: the lower one, or the upper one of a flipped superview.
    NSViewMinYMargin = 8,
    NSViewHeightSizable = 16,
    NSViewMaxYMargin = 32,
};

enum NSLayoutConstraintOrientation : NSInteger {
    NSLayoutConstraintOrientationHorizontal = 0,
    NSLayoutConstraintOrientationVertical = 1,
};

/// From 1 to 1000, which cannot be overruled.
using NSLayoutPriority = float;

inline constexpr NSLayoutPriority NSLayoutPriorityRequired = 1000;
inline constexpr NSLayoutPriority NSLayoutPriorityDefaultHigh = 750;
inline constexpr NSLayoutPriority NSLayoutPriorityDefaultLow = 250;

/// What is left free along the four edges of a rectangle, in points.
struct NSEdgeInsets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;

    friend bool operator==(const NSEdgeInsets&, const NSEdgeInsets&) = default;
};

/// An extent that a view does not have of itself.
inline constexpr double NSViewNoIntrinsicMetric = -1;

/// A cursor that shows over a part of a view.
struct CursorRect {
    NSRect rect;
    Ref<NSCursor> cursor;
};

/// A rectangle in a tree of rectangles: draws itself and is handed the events over it.
///
/// Its frame lies in the superview's coordinates, its bounds are the same extent in its own. The origin is at the lower
/// left, or at the upper left where `isFlipped` says so; that of the outermost view's superview, which is none, at the
/// lower left. Coordinates are kept exactly as they are set.
///
/// A view keeps its subviews and not its superview. What stands on the screen for it is its peer, which it has only
/// while it is, or was, on one: all of its state is in the view. Main thread only, though the last reference may be let
/// go anywhere.
class ZR_EXPORT NSView : public NSResponder {
    ZR_DECLARE_CLASS(NSView, NSResponder)
  public:
    NSView();
    ~NSView() override;

    /// With the zero frame.
    id init() override;
    virtual id initWithFrame(NSRect frame);

    [[nodiscard]] NSRect frame() const { return m_frame; }
    virtual void setFrame(NSRect frame);
    virtual void setFrameOrigin(NSPoint origin);
    virtual void setFrameSize(NSSize size);
    /// The extent is the frame's; the origin is the zero point unless set.
    [[nodiscard]] NSRect bounds() const { return {m_boundsOrigin, m_frame.size}; }
    virtual void setBoundsOrigin(NSPoint origin);
    /// Whether y grows downwards; false unless overridden.
    [[nodiscard]] virtual bool isFlipped() const;
    /// A sum of `NSAutoresizingMaskOptions`.
    [[nodiscard]] NSUInteger autoresizingMask() const { return m_autoresizingMask; }
    void setAutoresizingMask(NSUInteger mask) { m_autoresizingMask = mask; }
    /// Called when the extent is another one: what each subview's mask names shares the difference equally, but no
    /// width or height goes below 0. A difference that is no finite number changes nothing.
    virtual void resizeSubviewsWithOldSize(NSSize oldSize);

    /// Null for the outermost view.
    [[nodiscard]] Ref<NSView> superview() const { return Ref<NSView>(m_superview); }
    /// From the one at the back to the one at the front; a list of the moment. Never null.
    [[nodiscard]] Ref<NSArray> subviews() const;
    /// Puts the view in front of its siblings; it leaves the superview that it had. Null does nothing, and a view that
    /// the receiver lies in raises `NSInvalidArgumentException`.
    virtual void addSubview(NSView* view);
    /// In front of or behind `sibling`, or all of them for null and for one that is no subview.
    virtual void addSubview_positioned_relativeTo(NSView* view, NSWindowOrderingMode place, NSView* sibling);
    virtual void removeFromSuperview();
    /// Whether it is `view` or lies in it, however deep; false for null.
    [[nodiscard]] bool isDescendantOf(NSView* view) const;
    /// The first view of that tag in the tree, the receiver included; null when there is none.
    [[nodiscard]] Ref<NSView> viewWithTag(NSInteger tag);

    /// The window that it lies in, however deep; null when there is none.
    [[nodiscard]] Ref<NSWindow> window() const;
    /// Told about its new window before and after, null when there is none, and only when it is another one. Views that
    /// lie in one that moves are told as well, from the outside to the inside.
    virtual void viewWillMoveToWindow(NSWindow* window);
    virtual void viewDidMoveToWindow();

    /// Told about its new superview before and after; null when it is taken out.
    virtual void viewWillMoveToSuperview(NSView* superview);
    virtual void viewDidMoveToSuperview();

    /// The superview, or for a content view the window, unless another was set.
    [[nodiscard]] Ref<NSResponder> nextResponder() const override;
    void setNextResponder(NSResponder* responder) override;
    /// Whether the click that activates its window also counts for the view; false unless overridden.
    ///
    /// Nobody asks yet: a desktop does not say which click it activated a window with, so toolkits hand that click on
    /// to every view like any other.
    [[nodiscard]] virtual bool acceptsFirstMouse(NSEvent* event);

    /// The frontmost view under `point`, which is in the superview's coordinates; null when it is not over the receiver
    /// or that is hidden.
    [[nodiscard]] virtual Ref<NSView> hitTest(NSPoint point);
    /// From the receiver's coordinates to those of another view in the same tree, and back; null stands for those of
    /// the outermost view's superview. Between trees the result has no meaning.
    [[nodiscard]] NSPoint convertPoint_toView(NSPoint point, NSView* view) const;
    [[nodiscard]] NSPoint convertPoint_fromView(NSPoint point, NSView* view) const;
    [[nodiscard]] NSRect convertRect_toView(NSRect rect, NSView* view) const;
    [[nodiscard]] NSRect convertRect_fromView(NSRect rect, NSView* view) const;

    [[nodiscard]] bool isHidden() const { return m_isHidden; }
    virtual void setHidden(bool hidden);
    /// Whether it, or a view that it lies in, is hidden.
    [[nodiscard]] bool isHiddenOrHasHiddenAncestor() const;
    [[nodiscard]] double alphaValue() const { return m_alphaValue; }
    /// From 0 to 1; anything beyond is clamped, and what is not a number is 1.
    void setAlphaValue(double alpha);

    [[nodiscard]] bool wantsLayer() const { return m_layer != nullptr; }
    /// Makes a layer, or takes it away.
    void setWantsLayer(bool wants);
    /// Null without one.
    [[nodiscard]] Ref<CALayer> layer() const;

    /// Whether it is to be drawn again; true for a fresh view.
    [[nodiscard]] bool needsDisplay() const { return m_needsDisplay; }
    virtual void setNeedsDisplay(bool needs);
    /// Draws the view; nothing unless overridden. Called by whoever draws, with the part that must be drawn.
    virtual void drawRect(NSRect dirtyRect);
    /// A transparent bitmap for what is in `rect`: of its size in points, and with as many pixels as it has on the main
    /// screen, a broken one counted as whole. Null for an empty rectangle and one that is too large (see
    /// `NSBitmapImageRep`).
    [[nodiscard]] virtual Ref<NSBitmapImageRep> bitmapImageRepForCachingDisplayInRect(NSRect rect);
    /// Draws what is in `rect`, in the view's own coordinates, over all of the bitmap, scaled where they differ in size:
    /// the view with everything in it, whether it is on the screen or not. Transparent remains what nobody draws; how
    /// opaque the view itself is, and an animation that is being played, do not count. Null, an empty rectangle, and a
    /// program without a toolkit, change nothing.
    virtual void cacheDisplayInRect_toBitmapImageRep(NSRect rect, NSBitmapImageRep* bitmap);

    [[nodiscard]] Ref<NSArray> trackingAreas() const;
    /// Null, and one that is there already, do nothing.
    void addTrackingArea(NSTrackingArea* area);
    /// Null, and one that is not there, do nothing.
    void removeTrackingArea(NSTrackingArea* area);
    /// Called when the bounds have changed; for views whose areas depend on them.
    virtual void updateTrackingAreas();

    /// Called by whoever is about to show something else in the view: it is not hidden any more, and opaque.
    virtual void prepareForReuse();

    /// Called when cursor rectangles must be set up anew; the old ones are gone by then.
    virtual void resetCursorRects();
    /// Null, and an empty rectangle, do nothing.
    void addCursorRect_cursor(NSRect rect, NSCursor* cursor);
    void discardCursorRects();
    [[nodiscard]] const std::vector<CursorRect>& cursorRects() const { return m_cursorRects; }

    /// The natural extent, `NSViewNoIntrinsicMetric` where there is none.
    [[nodiscard]] virtual NSSize intrinsicContentSize() const;
    virtual void invalidateIntrinsicContentSize();
    /// How hard the view resists being made larger, 250 at first, or smaller than its natural extent, 750 at first.
    [[nodiscard]] NSLayoutPriority contentHuggingPriorityForOrientation(
        NSLayoutConstraintOrientation orientation) const;
    void setContentHuggingPriority_forOrientation(NSLayoutPriority priority, NSLayoutConstraintOrientation orientation);
    [[nodiscard]] NSLayoutPriority contentCompressionResistancePriorityForOrientation(
        NSLayoutConstraintOrientation orientation) const;
    void setContentCompressionResistancePriority_forOrientation(NSLayoutPriority priority,
                                                                NSLayoutConstraintOrientation orientation);

    /// What limits the extents of the view and of those in it (see layout_constraint.h); kept. Adding null, or what is
    /// there already, and removing what is not there, do nothing.
    void addConstraint(NSLayoutConstraint* constraint);
    /// Anything else in the list is skipped.
    void addConstraints(NSArray* constraints);
    void removeConstraint(NSLayoutConstraint* constraint);
    /// A list of the moment; never null.
    [[nodiscard]] Ref<NSArray> constraints() const;
    /// Whether the frame as it was set says where the view is, rather than constraints; true at first.
    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const { return m_translatesAutoresizingMask; }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);

    /// 0 unless overridden.
    [[nodiscard]] virtual NSInteger tag() const;
    /// What the view is known by; null at first. Copied when set.
    [[nodiscard]] Ref<NSString> identifier() const { return m_identifier; }
    void setIdentifier(NSString* identifier);
    /// The menu that a press with the right button opens over the view; null, at first, hands the press on. Kept.
    [[nodiscard]] Ref<NSMenu> menu() const;
    void setMenu(NSMenu* menu);
    void rightMouseDown(NSEvent* event) override;
    /// Called, from the outside to the inside, when the application's appearance is another one; everything is drawn
    /// again then. For views that were given colours: those of the appearance (see color.h) must be set again.
    virtual void viewDidChangeEffectiveAppearance();
    [[nodiscard]] Ref<NSString> toolTip() const { return m_toolTip; }
    void setToolTip(NSString* toolTip);
    [[nodiscard]] NSFocusRingType focusRingType() const { return m_focusRingType; }
    void setFocusRingType(NSFocusRingType type) { m_focusRingType = type; }

    /// Where the tab key leads from here, and the other way round; null, at first, leaves that to where the views lie.
    /// Not kept.
    [[nodiscard]] Ref<NSView> nextKeyView() const { return m_nextKeyView.lock(); }
    [[nodiscard]] Ref<NSView> previousKeyView() const { return m_previousKeyView.lock(); }
    /// The receiver becomes the previous one of `view`.
    void setNextKeyView(NSView* view);
    /// Whether the tab key may stop here: when it accepts to be first responder and nothing hides it.
    [[nodiscard]] virtual bool canBecomeKeyView() const;

    /// What those are told who cannot see the view; null at first. Copied when set.
    [[nodiscard]] Ref<NSString> accessibilityLabel() const { return m_accessibilityLabel; }
    void setAccessibilityLabel(NSString* label);

    // For toolkits

    /// What stands on the screen for the view; null when nothing does.
    [[nodiscard]] ViewPeer* peer() const { return m_peer.get(); }
    /// The peer, made by the current toolkit when there is none; null when that makes none either.
    ViewPeer* ensurePeer();
    /// Takes the peer off the screen; what it shows next is made anew.
    void dropPeer() { m_peer.reset(); }
    /// Puts a view without a superview into a window that has it on the screen without being its content view, or
    /// takes it out again for null; the window is not kept.
    void moveToHostWindow(NSWindow* window);

  protected:
    /// Tells the peer, if there is one.
    void tellPeer(ViewChange change);

  private:
    /// From the view's coordinates to its superview's, and back.
    [[nodiscard]] NSPoint toSuperview(NSPoint point) const;
    [[nodiscard]] NSPoint fromSuperview(NSPoint point) const;
    /// From the coordinates around the outermost view.
    [[nodiscard]] NSPoint fromOutermost(NSPoint point) const;
    void geometryChanged();
    /// Of the outermost view in a window: it is no longer that.
    void leaveOwnWindow();
    void detach();
    void tellTree(SEL operation, NSWindow* window);
    void constraintChanged(NSLayoutConstraint& constraint);

    friend class NSWindow;

    NSRect m_frame;
    NSPoint m_boundsOrigin;
    NSUInteger m_autoresizingMask = NSViewNotSizable;
    NSView* m_superview = nullptr;
    /// Of the outermost view in a window; null in all others.
    Weak<NSWindow> m_window;
    std::vector<Ref<NSView>> m_subviews;
    bool m_hasOwnNextResponder = false;
    bool m_isHidden = false;
    bool m_needsDisplay = true;
    double m_alphaValue = 1;
    Ref<CALayer> m_layer;
    std::vector<Ref<NSTrackingArea>> m_trackingAreas;
    std::vector<CursorRect> m_cursorRects;
    NSLayoutPriority m_hugging[2] = {NSLayoutPriorityDefaultLow, NSLayoutPriorityDefaultLow};
    NSLayoutPriority m_resistance[2] = {NSLayoutPriorityDefaultHigh, NSLayoutPriorityDefaultHigh};
    std::vector<Ref<NSLayoutConstraint>> m_constraints;
    bool m_translatesAutoresizingMask = true;
    Ref<NSString> m_identifier;
    Ref<NSString> m_toolTip;
    Ref<NSMenu> m_menu;
    NSFocusRingType m_focusRingType = NSFocusRingTypeDefault;
    Weak<NSView> m_nextKeyView;
    Weak<NSView> m_previousKeyView;
    Ref<NSString> m_accessibilityLabel;
    std::unique_ptr<ViewPeer> m_peer;
};

} // namespace zr
