#include <zrbasic/platform/appkit/layout_constraint.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <vector>

// What a view says about its extents.
namespace zr {
namespace {

std::size_t indexOf(NSLayoutConstraintOrientation orientation) {
    return orientation == NSLayoutConstraintOrientationVertical ? 1 : 0;
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
    m_hugging[indexOf(orientation)] = priority;
    tellPeer(ViewChange::Layout);
}

NSLayoutPriority NSView::contentCompressionResistancePriorityForOrientation(
    NSLayoutConstraintOrientation orientation) const {
    return m_resistance[indexOf(orientation)];
}

void NSView::setContentCompressionResistancePriority_forOrientation(NSLayoutPriority priority,
                                                                    NSLayoutConstraintOrientation orientation) {
    m_resistance[indexOf(orientation)] = priority;
    tellPeer(ViewChange::Layout);
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

} // namespace zr
