#include <zrbasic/platform/qt/tracking_p.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/event_translation_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace zr::qt {
namespace {

bool has(const NSTrackingArea& area, NSTrackingAreaOptions option) {
    return (area.options() & option) != 0;
}

bool isActive(const NSTrackingArea& area, NSView& view) {
    const Ref<NSWindow> window = view.window();
    return has(area, NSTrackingActiveAlways) ||
           (has(area, NSTrackingActiveInActiveApp) && NSApplication::sharedApplication()->isActive()) ||
           (has(area, NSTrackingActiveInKeyWindow) && window && window->isKeyWindow()) ||
           (has(area, NSTrackingActiveWhenFirstResponder) && window && window->firstResponder() == &view);
}

void tell(SEL operation, NSEventType type, NSTrackingArea& area, QWidget& topLevel, QPointF point) {
    const id owner = area.owner();
    if (!owner || !owner->respondsToSelector(operation)) {
        return;
    }
    const Ref<NSEvent> event = trackingEvent(type, area, topLevel, point);
    duringEvent([&] { send<void>(owner, operation, event.get()); });
}

Ref<NSView> outermost(Ref<NSView> view) {
    while (Ref<NSView> above = view ? view->superview() : nullptr) {
        view = std::move(above);
    }
    return view;
}

QWidget* widgetAt(QWidget& topLevel, QPointF point) {
    QWidget* const child = topLevel.childAt(point.toPoint());
    return child ? child : topLevel.rect().contains(point.toPoint()) ? &topLevel : nullptr;
}

} // namespace

void PointerTracker::collect(NSView& view, NSRect visible, NSPoint point, std::vector<Inside>& found) const {
    // A conversion would make something of an extent below nothing.
    if (view.isHidden() || NSIsEmptyRect(view.bounds())) {
        return;
    }
    const NSRect shown = NSIntersectionRect(visible, view.convertRect_toView(view.bounds(), nullptr));
    if (!NSMouseInRect(point, shown, false)) {
        return;
    }
    const Ref<NSArray> areas = view.trackingAreas();
    for (const id& element : areas->elements()) {
        auto* const area = static_cast<NSTrackingArea*>(element.get());
        const bool isAll = has(*area, NSTrackingInVisibleRect);
        if (!isAll && NSIsEmptyRect(area->rect())) {
            continue;
        }
        const NSRect rect = isAll ? shown : NSIntersectionRect(shown, view.convertRect_toView(area->rect(), nullptr));
        if (NSMouseInRect(point, rect, false) && isActive(*area, view)) {
            found.push_back({Ref<NSTrackingArea>(area), Weak<NSView>(&view)});
        }
    }
    const Ref<NSArray> subviews = view.subviews();
    for (const id& element : subviews->elements()) {
        collect(*static_cast<NSView*>(element.get()), shown, point, found);
    }
}

void PointerTracker::pointerAt(QWidget& topLevel, QPointF point, bool isDragging, bool isMove) {
    if (m_topLevel != &topLevel) {
        pointerLeft();
    }
    m_topLevel = &topLevel;
    m_point = point;
    std::vector<Inside> found;
    constexpr double far = std::numeric_limits<float>::max();
    // Views may lie in Qt's widgets that lie in views again.
    for (ViewWidget* widget = ViewWidget::around(widgetAt(topLevel, point)); widget;) {
        const Ref<NSView> view = outermost(widget->view());
        if (!view) {
            break;
        }
        collect(*view, {{-far, -far}, {2 * far, 2 * far}}, windowPoint(topLevel, point), found);
        ViewWidget* root = widget;
        while (root && root->view() != view) {
            root = ViewWidget::around(root->isWindow() ? nullptr : root->parentWidget());
        }
        widget = root && !root->isWindow() ? ViewWidget::around(root->parentWidget()) : nullptr;
    }
    const auto isIn = [](const std::vector<Inside>& areas, const Inside& one) {
        return std::any_of(areas.begin(), areas.end(), [&](const Inside& other) { return other.area == one.area; });
    };
    // While a button is down an area that does not ask for more keeps what it knows.
    const auto isFrozen = [isDragging](const Inside& one) {
        return isDragging && !has(*one.area, NSTrackingEnabledDuringMouseDrag);
    };
    std::vector<Inside> left;
    std::vector<Inside> entered;
    std::vector<Inside> inside;
    for (const Inside& one : m_inside) {
        (isIn(found, one) || isFrozen(one) ? inside : left).push_back(one);
    }
    for (const Inside& one : found) {
        if (!isIn(m_inside, one) && !isFrozen(one)) {
            entered.push_back(one);
            inside.push_back(one);
        }
    }
    // Before anybody is told, who may do anything.
    m_inside = inside;
    for (auto one = left.rbegin(); one != left.rend(); ++one) {
        leave(*one);
    }
    const QPointer<QWidget> kept(&topLevel);
    for (const Inside& one : entered) {
        if (kept && has(*one.area, NSTrackingMouseEnteredAndExited)) {
            tell("mouseEntered:"_sel, NSEventTypeMouseEntered, *one.area, topLevel, point);
        }
        if (kept && has(*one.area, NSTrackingCursorUpdate)) {
            tell("cursorUpdate:"_sel, NSEventTypeCursorUpdate, *one.area, topLevel, point);
        }
    }
    for (const Inside& one : inside) {
        if (kept && isMove && !isDragging && has(*one.area, NSTrackingMouseMoved)) {
            tell("mouseMoved:"_sel, NSEventTypeMouseMoved, *one.area, topLevel, point);
        }
    }
    if (!kept || isDragging) {
        return;
    }
    for (ViewWidget* widget = ViewWidget::around(widgetAt(topLevel, point)); widget;) {
        widget->showCursorAt(widget->mapFrom(&topLevel, point));
        widget = widget->isWindow() ? nullptr : ViewWidget::around(widget->parentWidget());
    }
}

void PointerTracker::leave(const Inside& one) {
    const Ref<NSView> view = one.view.lock();
    if (!view || !m_topLevel || !has(*one.area, NSTrackingMouseEnteredAndExited)) {
        return;
    }
    // One that was taken away has nothing to tell any more.
    const Ref<NSArray> areas = view->trackingAreas();
    const std::span<const id> present = areas->elements();
    if (std::find(present.begin(), present.end(), one.area) != present.end()) {
        tell("mouseExited:"_sel, NSEventTypeMouseExited, *one.area, *m_topLevel, m_point);
    }
}

void PointerTracker::pointerLeft() {
    const std::vector<Inside> left = std::exchange(m_inside, {});
    for (auto one = left.rbegin(); one != left.rend(); ++one) {
        leave(*one);
    }
    m_topLevel.clear();
}

void PointerTracker::reconsider(bool isDragging) {
    if (m_topLevel && !m_topLevel->isWindow()) {
        // It has been put into another window, where the pointer is somewhere else.
        pointerLeft();
    } else if (m_topLevel) {
        pointerAt(*m_topLevel, m_point, isDragging, false);
    }
}

} // namespace zr::qt
