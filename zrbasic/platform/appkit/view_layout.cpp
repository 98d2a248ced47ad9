#include <zrbasic/platform/appkit/layout_constraint.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

// What a view says about its extents.
namespace zr {
namespace {

std::size_t indexOf(NSLayoutConstraintOrientation orientation) {
    return orientation == NSLayoutConstraintOrientationVertical ? 1 : 0;
}

/// Spreads the difference over what of a gap, an extent and the gap behind it the mask of the x axis names.
void stretch(double& origin, double& extent, double difference, NSUInteger mask) {
    const int isGap = (mask & NSViewMinXMargin) != 0;
    const int isExtent = (mask & NSViewWidthSizable) != 0;
    const int isEnd = (mask & NSViewMaxXMargin) != 0;
    const int parts = isGap + isExtent + isEnd;
    // What is no finite number would stay so for ever.
    if (parts > 0 && difference != 0 && std::isfinite(difference)) {
        origin += isGap * difference / parts;
        extent = std::max(extent + isExtent * difference / parts, 0.0);
    }
}

/// For those that lay out what lies in them.
void tellSuperviewOfPriorities(NSView& view) {
    const Ref<NSView> superview = view.superview();
    if (superview && superview->respondsToSelector("subviewPrioritiesChanged:"_sel)) {
        send<void>(superview, "subviewPrioritiesChanged:"_sel, &view);
    }
}

} // namespace

NSSize NSView::intrinsicContentSize() const {
    return {NSViewNoIntrinsicMetric, NSViewNoIntrinsicMetric};
}

void NSView::invalidateIntrinsicContentSize() {
    tellPeer(ViewChange::Layout);
}

NSLayoutPriority NSView::contentHuggingPriorityForOrientation(NSLayoutConstraintOrientation orientation) const {
    return m_hugging[indexOf(orientation)];
}

void NSView::setContentHuggingPriority_forOrientation(NSLayoutPriority priority,
                                                      NSLayoutConstraintOrientation orientation) {
    if (std::exchange(m_hugging[indexOf(orientation)], priority) != priority) {
        tellPeer(ViewChange::Layout);
        tellSuperviewOfPriorities(*this);
    }
}

NSLayoutPriority NSView::contentCompressionResistancePriorityForOrientation(
    NSLayoutConstraintOrientation orientation) const {
    return m_resistance[indexOf(orientation)];
}

void NSView::setContentCompressionResistancePriority_forOrientation(NSLayoutPriority priority,
                                                                    NSLayoutConstraintOrientation orientation) {
    if (std::exchange(m_resistance[indexOf(orientation)], priority) != priority) {
        tellPeer(ViewChange::Layout);
        tellSuperviewOfPriorities(*this);
    }
}

void NSView::addConstraint(NSLayoutConstraint* constraint) {
    if (constraint && std::find(m_constraints.begin(), m_constraints.end(), constraint) == m_constraints.end()) {
        m_constraints.push_back(Ref<NSLayoutConstraint>(constraint));
        constraintChanged(*constraint);
    }
}

void NSView::addConstraints(NSArray* constraints) {
    if (!constraints) {
        return;
    }
    for (const id& constraint : constraints->elements()) {
        addConstraint(cast<NSLayoutConstraint>(constraint));
    }
}

void NSView::removeConstraint(NSLayoutConstraint* constraint) {
    const Ref<NSLayoutConstraint> kept(constraint);
    if (std::erase(m_constraints, constraint) != 0) {
        constraintChanged(*constraint);
    }
}

Ref<NSArray> NSView::constraints() const {
    return NSArray::fromElements(std::vector<id>(m_constraints.begin(), m_constraints.end()));
}

// The constraint may well speak of a view that lies in this one.
void NSView::constraintChanged(NSLayoutConstraint& constraint) {
    tellPeer(ViewChange::Layout);
    const Ref<NSView> limited = constraint.firstItem();
    if (limited && limited != this) {
        limited->tellPeer(ViewChange::Layout);
    }
}

void NSView::setTranslatesAutoresizingMaskIntoConstraints(bool translates) {
    m_translatesAutoresizingMask = translates;
    tellPeer(ViewChange::Layout);
}

void NSView::resizeSubviewsWithOldSize(NSSize oldSize) {
    const NSSize size = m_frame.size;
    const auto subviews = m_subviews;
    for (const Ref<NSView>& subview : subviews) {
        const NSUInteger mask = subview->autoresizingMask();
        // One may have been taken out when another was told.
        if (mask == NSViewNotSizable || subview->m_superview != this) {
            continue;
        }
        NSRect frame = subview->frame();
        stretch(frame.origin.x, frame.size.width, size.width - oldSize.width, mask);
        stretch(frame.origin.y, frame.size.height, size.height - oldSize.height, mask / NSViewMinYMargin);
        send<void>(subview, "setFrame:"_sel, frame);
    }
}

} // namespace zr
