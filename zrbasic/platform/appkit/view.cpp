#include <zrbasic/platform/appkit/view.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/layout_constraint.h>
#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/tracking_area.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

/// For those that scroll what lies in them.
void tellSuperviewOfFrame(NSView& view) {
    const Ref<NSView> superview = view.superview();
    if (superview && superview->respondsToSelector("subviewFrameChanged:"_sel)) {
        send<void>(superview, "subviewFrameChanged:"_sel, &view);
    }
}

} // namespace

ZR_DEFINE_CLASS(NSView) {
    is.method<&NSView::initWithFrame>("initWithFrame:");
    is.method<&NSView::frame>("frame");
    is.method<&NSView::setFrame>("setFrame:");
    is.method<&NSView::setFrameOrigin>("setFrameOrigin:");
    is.method<&NSView::setFrameSize>("setFrameSize:");
    is.method<&NSView::bounds>("bounds");
    is.method<&NSView::setBoundsOrigin>("setBoundsOrigin:");
    is.method<&NSView::isFlipped>("isFlipped");
    is.method<&NSView::autoresizingMask>("autoresizingMask");
    is.method<&NSView::setAutoresizingMask>("setAutoresizingMask:");
    is.method<&NSView::resizeSubviewsWithOldSize>("resizeSubviewsWithOldSize:");
    is.method<&NSView::menu>("menu");
    is.method<&NSView::setMenu>("setMenu:");
    is.method<&NSView::viewDidChangeEffectiveAppearance>("viewDidChangeEffectiveAppearance");
    is.method<&NSView::superview>("superview");
    is.method<&NSView::subviews>("subviews");
    is.method<&NSView::addSubview>("addSubview:");
    is.method<&NSView::addSubview_positioned_relativeTo>("addSubview:positioned:relativeTo:");
    is.method<&NSView::removeFromSuperview>("removeFromSuperview");
    is.method<&NSView::isDescendantOf>("isDescendantOf:");
    is.method<&NSView::viewWithTag>("viewWithTag:");
    is.method<&NSView::window>("window");
    is.method<&NSView::viewWillMoveToWindow>("viewWillMoveToWindow:");
    is.method<&NSView::viewDidMoveToWindow>("viewDidMoveToWindow");
    is.method<&NSView::viewWillMoveToSuperview>("viewWillMoveToSuperview:");
    is.method<&NSView::viewDidMoveToSuperview>("viewDidMoveToSuperview");
    is.method<&NSView::acceptsFirstMouse>("acceptsFirstMouse:");
    is.method<&NSView::hitTest>("hitTest:");
    is.method<&NSView::convertPoint_toView>("convertPoint:toView:");
    is.method<&NSView::convertPoint_fromView>("convertPoint:fromView:");
    is.method<&NSView::convertRect_toView>("convertRect:toView:");
    is.method<&NSView::convertRect_fromView>("convertRect:fromView:");
    is.method<&NSView::isHidden>("isHidden");
    is.method<&NSView::setHidden>("setHidden:");
    is.method<&NSView::isHiddenOrHasHiddenAncestor>("isHiddenOrHasHiddenAncestor");
    is.method<&NSView::alphaValue>("alphaValue");
    is.method<&NSView::setAlphaValue>("setAlphaValue:");
    is.method<&NSView::wantsLayer>("wantsLayer");
    is.method<&NSView::setWantsLayer>("setWantsLayer:");
    is.method<&NSView::layer>("layer");
    is.method<&NSView::needsDisplay>("needsDisplay");
    is.method<&NSView::setNeedsDisplay>("setNeedsDisplay:");
    is.method<&NSView::drawRect>("drawRect:");
    is.method<&NSView::bitmapImageRepForCachingDisplayInRect>("bitmapImageRepForCachingDisplayInRect:");
    is.method<&NSView::cacheDisplayInRect_toBitmapImageRep>("cacheDisplayInRect:toBitmapImageRep:");
    is.method<&NSView::prepareForReuse>("prepareForReuse");
    is.method<&NSView::trackingAreas>("trackingAreas");
    is.method<&NSView::addTrackingArea>("addTrackingArea:");
    is.method<&NSView::removeTrackingArea>("removeTrackingArea:");
    is.method<&NSView::updateTrackingAreas>("updateTrackingAreas");
    is.method<&NSView::resetCursorRects>("resetCursorRects");
    is.method<&NSView::addCursorRect_cursor>("addCursorRect:cursor:");
    is.method<&NSView::discardCursorRects>("discardCursorRects");
    is.method<&NSView::intrinsicContentSize>("intrinsicContentSize");
    is.method<&NSView::invalidateIntrinsicContentSize>("invalidateIntrinsicContentSize");
    is.method<&NSView::contentHuggingPriorityForOrientation>("contentHuggingPriorityForOrientation:");
    is.method<&NSView::setContentHuggingPriority_forOrientation>("setContentHuggingPriority:forOrientation:");
    is.method<&NSView::contentCompressionResistancePriorityForOrientation>(
        "contentCompressionResistancePriorityForOrientation:");
    is.method<&NSView::setContentCompressionResistancePriority_forOrientation>(
        "setContentCompressionResistancePriority:forOrientation:");
    is.method<&NSView::addConstraint>("addConstraint:");
    is.method<&NSView::addConstraints>("addConstraints:");
    is.method<&NSView::removeConstraint>("removeConstraint:");
    is.method<&NSView::constraints>("constraints");
    is.method<&NSView::translatesAutoresizingMaskIntoConstraints>("translatesAutoresizingMaskIntoConstraints");
    is.method<&NSView::setTranslatesAutoresizingMaskIntoConstraints>("setTranslatesAutoresizingMaskIntoConstraints:");
    is.method<&NSView::tag>("tag");
    is.method<&NSView::identifier>("identifier");
    is.method<&NSView::setIdentifier>("setIdentifier:");
    is.method<&NSView::toolTip>("toolTip");
    is.method<&NSView::setToolTip>("setToolTip:");
    is.method<&NSView::focusRingType>("focusRingType");
    is.method<&NSView::setFocusRingType>("setFocusRingType:");
    is.method<&NSView::nextKeyView>("nextKeyView");
    is.method<&NSView::setNextKeyView>("setNextKeyView:");
    is.method<&NSView::previousKeyView>("previousKeyView");
    is.method<&NSView::canBecomeKeyView>("canBecomeKeyView");
    is.method<&NSView::accessibilityLabel>("accessibilityLabel");
    is.method<&NSView::setAccessibilityLabel>("setAccessibilityLabel:");
}

NSView::NSView() = default;

NSView::~NSView() {
    // First of all: what the peer does on its way out must not find the view any more, from below neither.
    for (const Ref<NSView>& view : m_subviews) {
        view->m_superview = nullptr;
    }
    m_peer.reset();
}

id NSView::init() {
    return initWithFrame(NSZeroRect);
}

id NSView::initWithFrame(NSRect frame) {
    m_frame = frame;
    return id(this);
}

void NSView::setFrame(NSRect frame) {
    setFrameOrigin(frame.origin);
    setFrameSize(frame.size);
}

void NSView::setFrameOrigin(NSPoint origin) {
    if (m_frame.origin == origin) {
        return;
    }
    m_frame.origin = origin;
    tellPeer(ViewChange::Frame);
    if (m_superview) {
        send<void>(m_superview, "setNeedsDisplay:"_sel, true);
    }
    tellSuperviewOfFrame(*this);
}

void NSView::setFrameSize(NSSize size) {
    if (m_frame.size != size) {
        const Ref<NSView> self(this);
        const NSSize oldSize = m_frame.size;
        m_frame.size = size;
        geometryChanged();
        send<void>(this, "resizeSubviewsWithOldSize:"_sel, oldSize);
        tellSuperviewOfFrame(*this);
    }
}

void NSView::setBoundsOrigin(NSPoint origin) {
    if (m_boundsOrigin != origin) {
        m_boundsOrigin = origin;
        geometryChanged();
    }
}

// What depends on the bounds is done by message, so that a class or an object may see to its own.
void NSView::geometryChanged() {
    tellPeer(ViewChange::Frame);
    send<void>(this, "setNeedsDisplay:"_sel, true);
    send<void>(this, "updateTrackingAreas"_sel);
    discardCursorRects();
    send<void>(this, "resetCursorRects"_sel);
}

bool NSView::isFlipped() const {
    return false;
}

Ref<NSArray> NSView::subviews() const {
    return NSArray::fromElements(std::vector<id>(m_subviews.begin(), m_subviews.end()));
}

void NSView::addSubview(NSView* view) {
    addSubview_positioned_relativeTo(view, NSWindowAbove, nullptr);
}

void NSView::addSubview_positioned_relativeTo(NSView* view, NSWindowOrderingMode place, NSView* sibling) {
    if (!view) {
        return;
    }
    if (isDescendantOf(view)) {
        NSException::raise(NSInvalidArgumentException,
                           "-[NSView addSubview:positioned:relativeTo:]: a view cannot lie in itself");
    }
    const Ref<NSView> kept(view);
    const Ref<NSView> self(this);
    view->leaveOwnWindow();
    const Ref<NSWindow> newWindow = window();
    const bool changesWindow = view->window() != newWindow;
    send<void>(view, "viewWillMoveToSuperview:"_sel, this);
    if (changesWindow) {
        view->tellTree("viewWillMoveToWindow:"_sel, newWindow);
    }
    // Whoever was told may have moved views about.
    if (isDescendantOf(view)) {
        return;
    }
    if (view->m_superview == this) {
        // It does not leave the window, so whoever in it has the keyboard goes on typing.
        std::erase(m_subviews, view);
    } else {
        view->detach();
    }
    const auto found = std::find(m_subviews.begin(), m_subviews.end(), sibling);
    const bool isBelow = place == NSWindowBelow;
    auto position = isBelow ? m_subviews.begin() : m_subviews.end();
    if (found != m_subviews.end()) {
        position = isBelow ? found : std::next(found);
    }
    m_subviews.insert(position, kept);
    view->m_superview = this;
    tellPeer(ViewChange::Subviews);
    // Its frame means another place now, and this view may have nothing on the screen that would see to it.
    view->tellPeer(ViewChange::Frame);
    send<void>(view, "viewDidMoveToSuperview"_sel);
    if (changesWindow) {
        view->tellTree("viewDidMoveToWindow"_sel, nullptr);
    }
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void NSView::leaveOwnWindow() {
    const Ref<NSWindow> own = m_window.lock();
    if (own && own->contentView() == this) {
        own->setContentView(nullptr);
    } else {
        moveToHostWindow(nullptr);
    }
}

void NSView::removeFromSuperview() {
    if (!m_superview) {
        return;
    }
    const Ref<NSView> self(this);
    const bool leavesWindow = window() != nullptr;
    send<void>(this, "viewWillMoveToSuperview:"_sel, nullptr);
    if (leavesWindow) {
        tellTree("viewWillMoveToWindow:"_sel, nullptr);
    }
    detach();
    send<void>(this, "viewDidMoveToSuperview"_sel);
    if (leavesWindow) {
        tellTree("viewDidMoveToWindow"_sel, nullptr);
    }
}

void NSView::detach() {
    if (!m_superview) {
        return;
    }
    if (const Ref<NSWindow> window = this->window()) {
        window->loseFirstResponderIn(this);
    }
    NSView* const superview = std::exchange(m_superview, nullptr);
    if (!superview) {
        return;
    }
    std::erase(superview->m_subviews, this);
    superview->tellPeer(ViewChange::Subviews);
    send<void>(superview, "setNeedsDisplay:"_sel, true);
}

bool NSView::isDescendantOf(NSView* view) const {
    for (const NSView* ancestor = this; ancestor; ancestor = ancestor->m_superview) {
        if (ancestor == view) {
            return true;
        }
    }
    return false;
}

Ref<NSView> NSView::viewWithTag(NSInteger tag) {
    if (this->tag() == tag) {
        return Ref<NSView>(this);
    }
    for (const Ref<NSView>& view : m_subviews) {
        if (Ref<NSView> found = view->viewWithTag(tag)) {
            return found;
        }
    }
    return nullptr;
}

Ref<NSWindow> NSView::window() const {
    const NSView* outermost = this;
    while (outermost->m_superview) {
        outermost = outermost->m_superview;
    }
    return outermost->m_window.lock();
}

void NSView::tellTree(SEL operation, NSWindow* window) {
    const Ref<NSView> self(this);
    if (operation == "viewWillMoveToWindow:"_sel) {
        send<void>(this, operation, window);
    } else {
        send<void>(this, operation);
    }
    // A copy, because a view that is told may run anybody's code.
    const std::vector<Ref<NSView>> views = m_subviews;
    for (const Ref<NSView>& view : views) {
        view->tellTree(operation, window);
    }
}

void NSView::viewWillMoveToWindow(NSWindow*) {}

void NSView::viewDidMoveToWindow() {}

void NSView::viewWillMoveToSuperview(NSView*) {}

void NSView::viewDidMoveToSuperview() {}

Ref<NSResponder> NSView::nextResponder() const {
    if (m_hasOwnNextResponder) {
        return NSResponder::nextResponder();
    }
    return m_superview ? Ref<NSResponder>(m_superview) : Ref<NSResponder>(m_window.lock());
}

void NSView::setNextResponder(NSResponder* responder) {
    m_hasOwnNextResponder = responder != nullptr;
    NSResponder::setNextResponder(responder);
}

bool NSView::acceptsFirstMouse(NSEvent*) {
    return false;
}

void NSView::setHidden(bool hidden) {
    if (m_isHidden == hidden) {
        return;
    }
    m_isHidden = hidden;
    tellPeer(ViewChange::Hidden);
    if (m_superview) {
        send<void>(m_superview, "setNeedsDisplay:"_sel, true);
    }
}

bool NSView::isHiddenOrHasHiddenAncestor() const {
    for (const NSView* view = this; view; view = view->m_superview) {
        if (view->m_isHidden) {
            return true;
        }
    }
    return false;
}

void NSView::setAlphaValue(double alpha) {
    m_alphaValue = std::isnan(alpha) ? 1 : std::clamp(alpha, 0.0, 1.0);
    tellPeer(ViewChange::Alpha);
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void NSView::setWantsLayer(bool wants) {
    if (wants == wantsLayer()) {
        return;
    }
    m_layer = wants ? make<CALayer>() : nullptr;
    if (m_layer) {
        m_layer->setDelegate(this);
    }
    tellPeer(ViewChange::Layer);
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

Ref<CALayer> NSView::layer() const {
    return m_layer;
}

void NSView::setNeedsDisplay(bool needs) {
    m_needsDisplay = needs;
    if (needs) {
        tellPeer(ViewChange::Display);
    }
}

void NSView::drawRect(NSRect) {}

void NSView::prepareForReuse() {
    send<void>(this, "setAlphaValue:"_sel, 1.0);
    send<void>(this, "setHidden:"_sel, false);
}

Ref<NSArray> NSView::trackingAreas() const {
    return NSArray::fromElements(std::vector<id>(m_trackingAreas.begin(), m_trackingAreas.end()));
}

void NSView::addTrackingArea(NSTrackingArea* area) {
    if (area && std::find(m_trackingAreas.begin(), m_trackingAreas.end(), area) == m_trackingAreas.end()) {
        m_trackingAreas.push_back(Ref<NSTrackingArea>(area));
        tellPeer(ViewChange::TrackingAreas);
    }
}

void NSView::removeTrackingArea(NSTrackingArea* area) {
    std::erase(m_trackingAreas, area);
    tellPeer(ViewChange::TrackingAreas);
}

void NSView::updateTrackingAreas() {}

void NSView::resetCursorRects() {}

void NSView::addCursorRect_cursor(NSRect rect, NSCursor* cursor) {
    if (cursor && !NSIsEmptyRect(rect)) {
        m_cursorRects.push_back({rect, Ref<NSCursor>(cursor)});
        tellPeer(ViewChange::CursorRects);
    }
}

void NSView::discardCursorRects() {
    m_cursorRects.clear();
    tellPeer(ViewChange::CursorRects);
}

NSInteger NSView::tag() const {
    return 0;
}

void NSView::setIdentifier(NSString* identifier) {
    m_identifier = identifier ? Ref<NSString>(cast<NSString>(identifier->copy())) : nullptr;
}

void NSView::setToolTip(NSString* toolTip) {
    m_toolTip = toolTip ? Ref<NSString>(cast<NSString>(toolTip->copy())) : nullptr;
    tellPeer(ViewChange::ToolTip);
}

void NSView::setNextKeyView(NSView* view) {
    m_nextKeyView = Weak<NSView>(view);
    if (view) {
        view->m_previousKeyView = Weak<NSView>(this);
    }
}

bool NSView::canBecomeKeyView() const {
    return !isHiddenOrHasHiddenAncestor() && send<bool>(const_cast<NSView*>(this), "acceptsFirstResponder"_sel);
}

void NSView::setAccessibilityLabel(NSString* label) {
    m_accessibilityLabel = label ? Ref<NSString>(cast<NSString>(label->copy())) : nullptr;
    tellPeer(ViewChange::Accessibility);
}

ViewPeer* NSView::ensurePeer() {
    if (!m_peer) {
        m_peer = currentToolkit().makeViewPeer(*this);
    }
    return m_peer.get();
}

void NSView::moveToHostWindow(NSWindow* window) {
    if (m_superview || m_window.lock() == window) {
        return;
    }
    const Ref<NSView> self(this);
    tellTree("viewWillMoveToWindow:"_sel, window);
    if (const Ref<NSWindow> before = this->window()) {
        before->loseFirstResponderIn(this);
    }
    m_window = Weak<NSWindow>(window);
    tellTree("viewDidMoveToWindow"_sel, nullptr);
}

void NSView::tellPeer(ViewChange change) {
    if (m_peer) {
        m_peer->viewChanged(change);
    }
}

} // namespace zr
