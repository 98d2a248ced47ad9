#include <zrbasic/platform/appkit/split_view.h>

#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/appkit/delegate_telling_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/split_layout_p.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

/// How far beside a line it can still be caught.
constexpr double reach = 2;

/// Beyond any screen; larger numbers would only spoil the sums.
constexpr double largest = 1e9;

double numberOr(double number, double otherwise) {
    return std::isfinite(number) && number >= 0 ? std::min(number, largest) : otherwise;
}

} // namespace

struct NSSplitView::Share {
    Ref<NSView> view;
    SplitShare layout;
};

Ref<NSString> NSSplitViewDidResizeSubviewsNotification() {
    return "NSSplitViewDidResizeSubviewsNotification"_ns;
}

ZR_DEFINE_CLASS(NSSplitView) {
    is.method<&NSSplitView::isVertical>("isVertical");
    is.method<&NSSplitView::setVertical>("setVertical:");
    is.method<&NSSplitView::dividerThickness>("dividerThickness");
    is.method<&NSSplitView::delegate>("delegate");
    is.method<&NSSplitView::setDelegate>("setDelegate:");
    is.method<&NSSplitView::adjustSubviews>("adjustSubviews");
    is.method<&NSSplitView::isSubviewCollapsed>("isSubviewCollapsed:");
    is.method<&NSSplitView::setPosition_ofDividerAtIndex>("setPosition:ofDividerAtIndex:");
    is.method<&NSSplitView::minPossiblePositionOfDividerAtIndex>("minPossiblePositionOfDividerAtIndex:");
    is.method<&NSSplitView::maxPossiblePositionOfDividerAtIndex>("maxPossiblePositionOfDividerAtIndex:");
    is.method<&NSSplitView::subviewPrioritiesChanged>("subviewPrioritiesChanged:");
    is.method<&NSSplitView::drawDividerInRect>("drawDividerInRect:");
}

NSSplitView::NSSplitView() = default;
NSSplitView::~NSSplitView() = default;

void NSSplitView::setVertical(bool vertical) {
    if (m_isVertical == vertical) {
        return;
    }
    m_isVertical = vertical;
    for (Part& part : m_parts) {
        part.wanted = part.given = std::numeric_limits<double>::quiet_NaN();
    }
    send<void>(this, "adjustSubviews"_sel);
}

double NSSplitView::dividerThickness() const {
    return 1;
}

bool NSSplitView::isFlipped() const {
    return true;
}

std::vector<Ref<NSView>> NSSplitView::shownSubviews() const {
    std::vector<Ref<NSView>> shown;
    const Ref<NSArray> all = subviews();
    for (const id& element : all->elements()) {
        auto* const view = static_cast<NSView*>(element.get());
        if (!view->isHidden()) {
            shown.push_back(Ref<NSView>(view));
        }
    }
    return shown;
}

NSRect NSSplitView::room() const {
    const auto [origin, size] = bounds();
    return {{std::isfinite(origin.x) ? origin.x : 0, std::isfinite(origin.y) ? origin.y : 0},
            {numberOr(size.width, 0), numberOr(size.height, 0)}};
}

double NSSplitView::thicknessOf(NSView* view) const {
    const NSSize size = view->frame().size;
    return numberOr(m_isVertical ? size.width : size.height, 0);
}

double NSSplitView::startOf(NSView* view) const {
    const NSPoint origin = view->frame().origin;
    return m_isVertical ? origin.x : origin.y;
}

NSSplitView::Part& NSSplitView::partOf(NSView* view) {
    std::erase_if(m_parts, [](const Part& part) { return part.view.lock() == nullptr; });
    for (Part& part : m_parts) {
        if (part.view.lock() == view) {
            return part;
        }
    }
    return m_parts.emplace_back(Part{Weak<NSView>(view), {}});
}

std::vector<NSSplitView::Share> NSSplitView::shares() {
    const NSLayoutConstraintOrientation orientation =
        m_isVertical ? NSLayoutConstraintOrientationHorizontal : NSLayoutConstraintOrientationVertical;
    std::vector<Share> result;
    for (const Ref<NSView>& view : shownSubviews()) {
        const NSSize size = view->intrinsicContentSize();
        const double natural = numberOr(m_isVertical ? size.width : size.height, 0);
        const double thickness = thicknessOf(view);
        Part& part = partOf(view);
        if (std::isnan(part.given)) {
            part.wanted = thickness > 0 ? thickness : natural;
        } else if (thickness != part.given) {
            // Somebody else has given it another frame since.
            part.wanted = thickness;
        }
        const double minimum = part.limits.minimum;
        result.push_back({view,
                          {.wanted = part.wanted,
                           .minimum = minimum,
                           .maximum = std::max(minimum, part.limits.maximum),
                           .hugging = view->contentHuggingPriorityForOrientation(orientation),
                           .resistance = view->contentCompressionResistancePriorityForOrientation(orientation)}});
    }
    return result;
}

bool NSSplitView::isStale() const {
    const std::vector<Ref<NSView>> shown = shownSubviews();
    return m_laidOutRoom != room() || !std::equal(shown.begin(), shown.end(), m_laidOut.begin(), m_laidOut.end());
}

// Every change of the extent and of the subviews ends with this message.
void NSSplitView::setNeedsDisplay(bool needs) {
    NSView::setNeedsDisplay(needs);
    if (needs && !m_isAdjusting && isStale()) {
        send<void>(this, "adjustSubviews"_sel);
    }
}

template <class Work>
void NSSplitView::adjusting(const Work& work) {
    if (m_isAdjusting) {
        return;
    }
    const Ref<NSSplitView> self(this);
    // What those raise who are told passes through.
    const struct Adjusting {
        bool& flag;
        ~Adjusting() { flag = false; }
    } flag{m_isAdjusting = true};
    work();
    // Whoever was told may have changed the subviews. Once more is enough for those who come to rest.
    if (isStale()) {
        layOut();
    }
}

void NSSplitView::adjustSubviews() {
    adjusting([this] { layOut(); });
}

// By now they are laid out for the new extent.
void NSSplitView::resizeSubviewsWithOldSize(NSSize) {}

void NSSplitView::subviewPrioritiesChanged(NSView*) {
    send<void>(this, "adjustSubviews"_sel);
}

void NSSplitView::layOut() {
    std::vector<Share> laidOut = shares();
    std::vector<SplitShare> layout;
    for (const Share& share : laidOut) {
        layout.push_back(share.layout);
    }
    const NSSize size = room().size;
    const double dividers = laidOut.empty() ? 0 : dividerThickness() * static_cast<double>(laidOut.size() - 1);
    distribute(layout, std::max(0.0, (m_isVertical ? size.width : size.height) - dividers));
    for (std::size_t i = 0; i < laidOut.size(); ++i) {
        laidOut[i].layout = layout[i];
    }
    place(laidOut);
}

void NSSplitView::place(const std::vector<Share>& shares) {
    const NSRect inside = room();
    m_laidOutRoom = inside;
    m_laidOut.clear();
    for (const Share& share : shares) {
        m_laidOut.push_back(share.view);
        Part& part = partOf(share.view);
        part.wanted = share.layout.wanted;
        part.given = share.layout.given;
    }
    bool hasChanged = false;
    double start = m_isVertical ? inside.origin.x : inside.origin.y;
    for (const Share& share : shares) {
        const double thickness = share.layout.given;
        const NSRect frame = m_isVertical ? NSRect{{start, inside.origin.y}, {thickness, inside.size.height}}
                                          : NSRect{{inside.origin.x, start}, {inside.size.width, thickness}};
        hasChanged = hasChanged || share.view->frame() != frame;
        send<void>(share.view, "setFrame:"_sel, frame);
        start += thickness + dividerThickness();
    }
    discardCursorRects();
    send<void>(this, "resetCursorRects"_sel);
    if (hasChanged) {
        send<void>(this, "setNeedsDisplay:"_sel, true);
        tellDelegateAndPost(this, delegate(), "splitViewDidResizeSubviews:"_sel,
                            NSSplitViewDidResizeSubviewsNotification());
    }
}

bool NSSplitView::isSubviewCollapsed(NSView* subview) const {
    return subview && subview->superview() == this && subview->isHidden();
}

void NSSplitView::setThicknessLimits(ThicknessLimits limits, NSView* subview) {
    if (!subview) {
        return;
    }
    const double unlimited = std::numeric_limits<double>::infinity();
    partOf(subview).limits = {numberOr(limits.minimum, 0), numberOr(limits.maximum, unlimited)};
    if (subview->superview() == this) {
        send<void>(this, "adjustSubviews"_sel);
    }
}

ThicknessLimits NSSplitView::thicknessLimits(NSView* subview) const {
    for (const Part& part : m_parts) {
        if (subview && part.view.lock() == subview) {
            return part.limits;
        }
    }
    return {};
}

std::pair<double, double> NSSplitView::possiblePositions(NSInteger index) {
    const std::vector<Share> all = shares();
    if (index < 0 || static_cast<std::size_t>(index) + 1 >= all.size()) {
        return {1, 0};
    }
    const Share& before = all[static_cast<std::size_t>(index)];
    const Share& behind = all[static_cast<std::size_t>(index) + 1];
    const double both = thicknessOf(before.view) + thicknessOf(behind.view);
    const double least = std::max(before.layout.minimum, both - behind.layout.maximum);
    const double most = std::min(before.layout.maximum, both - behind.layout.minimum);
    const double start = startOf(before.view);
    return {start + least, start + most};
}

double NSSplitView::startOfDivider(NSInteger index) {
    const NSPoint origin = rectOfDividerAtIndex(index).origin;
    return m_isVertical ? origin.x : origin.y;
}

double NSSplitView::minPossiblePositionOfDividerAtIndex(NSInteger index) {
    const auto [least, most] = possiblePositions(index);
    return least > most ? startOfDivider(index) : least;
}

double NSSplitView::maxPossiblePositionOfDividerAtIndex(NSInteger index) {
    const auto [least, most] = possiblePositions(index);
    return least > most ? startOfDivider(index) : most;
}

void NSSplitView::setPosition_ofDividerAtIndex(double position, NSInteger index) {
    if (!std::isfinite(position)) {
        return;
    }
    const auto [least, most] = possiblePositions(index);
    if (least > most) {
        return;
    }
    std::vector<Share> all = shares();
    for (Share& share : all) {
        share.layout.given = share.layout.wanted = thicknessOf(share.view);
    }
    SplitShare& before = all[static_cast<std::size_t>(index)].layout;
    SplitShare& behind = all[static_cast<std::size_t>(index) + 1].layout;
    const double both = before.given + behind.given;
    before.given = std::clamp(position, least, most) - startOf(all[static_cast<std::size_t>(index)].view);
    behind.given = both - before.given;
    before.wanted = before.given;
    behind.wanted = behind.given;
    adjusting([&] { place(all); });
}

NSRect NSSplitView::rectOfDividerAtIndex(NSInteger index) {
    const std::vector<Ref<NSView>> shown = shownSubviews();
    if (index < 0 || static_cast<std::size_t>(index) + 1 >= shown.size()) {
        return NSZeroRect;
    }
    const NSRect frame = shown[static_cast<std::size_t>(index)]->frame();
    const NSRect inside = room();
    return m_isVertical ? NSRect{{NSMaxX(frame), inside.origin.y}, {dividerThickness(), inside.size.height}}
                        : NSRect{{inside.origin.x, NSMaxY(frame)}, {inside.size.width, dividerThickness()}};
}

NSRect NSSplitView::catchingRect(NSInteger index) {
    return NSInsetRect(rectOfDividerAtIndex(index), m_isVertical ? -reach : 0, m_isVertical ? 0 : -reach);
}

NSInteger NSSplitView::dividerAt(NSPoint point) {
    const auto count = static_cast<NSInteger>(shownSubviews().size());
    for (NSInteger i = 0; i + 1 < count; ++i) {
        if (NSMouseInRect(point, catchingRect(i), isFlipped())) {
            return i;
        }
    }
    return -1;
}

Ref<NSView> NSSplitView::hitTest(NSPoint point) {
    Ref<NSView> hit = NSView::hitTest(point);
    if (hit && dividerAt(convertPoint_fromView(point, superview())) >= 0) {
        return Ref<NSView>(this);
    }
    return hit;
}

void NSSplitView::resetCursorRects() {
    const Ref<NSCursor> cursor = m_isVertical ? NSCursor::resizeLeftRightCursor() : NSCursor::resizeUpDownCursor();
    const auto count = static_cast<NSInteger>(shownSubviews().size());
    for (NSInteger i = 0; i + 1 < count; ++i) {
        addCursorRect_cursor(catchingRect(i), cursor);
    }
}

void NSSplitView::mouseDown(NSEvent* event) {
    if (!event) {
        return;
    }
    const NSPoint point = convertPoint_fromView(event->locationInWindow(), nullptr);
    m_caught = dividerAt(point);
    if (m_caught < 0) {
        NSView::mouseDown(event);
        return;
    }
    m_caughtAt = (m_isVertical ? point.x : point.y) - startOfDivider(m_caught);
}

void NSSplitView::mouseDragged(NSEvent* event) {
    if (m_caught < 0 || !event) {
        return;
    }
    const NSPoint point = convertPoint_fromView(event->locationInWindow(), nullptr);
    send<void>(this, "setPosition:ofDividerAtIndex:"_sel, (m_isVertical ? point.x : point.y) - m_caughtAt, m_caught);
}

void NSSplitView::mouseUp(NSEvent* event) {
    if (std::exchange(m_caught, -1) < 0 && event) {
        NSView::mouseUp(event);
    }
}

void NSSplitView::drawDividerInRect(NSRect rect) {
    if (const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext()) {
        context->canvas().fillRect(rect, look::border(true), NSCompositingOperationSourceOver);
    }
}

void NSSplitView::drawRect(NSRect) {
    const auto count = static_cast<NSInteger>(shownSubviews().size());
    for (NSInteger i = 0; i + 1 < count; ++i) {
        send<void>(this, "drawDividerInRect:"_sel, rectOfDividerAtIndex(i));
    }
}

} // namespace zr
