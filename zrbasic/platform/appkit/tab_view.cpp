#include <zrbasic/platform/appkit/tab_view.h>

#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace zr {
namespace {

constexpr double barHeight = 26;
/// To both sides of a label.
constexpr double margin = 12;
/// Under the selected tab.
constexpr double markHeight = 2;

constexpr NSUInteger countedModifiers =
    NSEventModifierFlagShift | NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;

Ref<NSAttributedString> labelToDraw(NSTabViewItem& item, bool isSelected) {
    const auto style = make<NSMutableParagraphStyle>();
    style->setAlignment(NSTextAlignmentCenter);
    style->setLineBreakMode(NSLineBreakByTruncatingTail);
    return make<NSAttributedString>(
        &NSAttributedString::initWithString_attributes, item.label().get(),
        dictionary({{NSFontAttributeName(), NSFont::systemFontOfSize(NSFont::systemFontSize())},
                    {NSForegroundColorAttributeName(), isSelected ? look::accentText() : look::text(true)},
                    {NSParagraphStyleAttributeName(), style->copy()}})
            .get());
}

double naturalWidth(NSTabViewItem& item) {
    return std::ceil(currentToolkit().naturalSizeOfText(labelToDraw(item, false), 0).width) + 2 * margin;
}

} // namespace

ZR_DEFINE_CLASS(NSTabView) {
    is.method<&NSTabView::tabViewItems>("tabViewItems");
    is.method<&NSTabView::numberOfTabViewItems>("numberOfTabViewItems");
    is.method<&NSTabView::tabViewItemAtIndex>("tabViewItemAtIndex:");
    is.method<&NSTabView::indexOfTabViewItem>("indexOfTabViewItem:");
    is.method<&NSTabView::indexOfTabViewItemWithIdentifier>("indexOfTabViewItemWithIdentifier:");
    is.method<&NSTabView::addTabViewItem>("addTabViewItem:");
    is.method<&NSTabView::insertTabViewItem_atIndex>("insertTabViewItem:atIndex:");
    is.method<&NSTabView::removeTabViewItem>("removeTabViewItem:");
    is.method<&NSTabView::selectedTabViewItem>("selectedTabViewItem");
    is.method<&NSTabView::selectTabViewItem>("selectTabViewItem:");
    is.method<&NSTabView::selectTabViewItemAtIndex>("selectTabViewItemAtIndex:");
    is.method<&NSTabView::selectTabViewItemWithIdentifier>("selectTabViewItemWithIdentifier:");
    is.method<&NSTabView::selectFirstTabViewItem>("selectFirstTabViewItem:");
    is.method<&NSTabView::selectLastTabViewItem>("selectLastTabViewItem:");
    is.method<&NSTabView::selectNextTabViewItem>("selectNextTabViewItem:");
    is.method<&NSTabView::selectPreviousTabViewItem>("selectPreviousTabViewItem:");
    is.method<&NSTabView::delegate>("delegate");
    is.method<&NSTabView::setDelegate>("setDelegate:");
    is.method<&NSTabView::contentRect>("contentRect");
    is.method<&NSTabView::tabViewItemAtPoint>("tabViewItemAtPoint:");
}

NSTabView::NSTabView() = default;
NSTabView::~NSTabView() = default;

Ref<NSArray> NSTabView::tabViewItems() const {
    return NSArray::fromElements(std::vector<id>(m_items.begin(), m_items.end()));
}

Ref<NSTabViewItem> NSTabView::tabViewItemAtIndex(NSInteger index) const {
    if (index < 0 || index >= numberOfTabViewItems()) {
        NSException::raise(NSRangeException, "-[NSTabView tabViewItemAtIndex:]: index " + std::to_string(index) +
                                                 " beyond " + std::to_string(m_items.size()) + " items");
    }
    return m_items[static_cast<std::size_t>(index)];
}

NSInteger NSTabView::indexOfTabViewItem(NSTabViewItem* item) const {
    const auto found = std::find(m_items.begin(), m_items.end(), item);
    return item && found != m_items.end() ? found - m_items.begin() : static_cast<NSInteger>(NSNotFound);
}

NSInteger NSTabView::indexOfTabViewItemWithIdentifier(NSObject* identifier) const {
    // A copy, because an identifier may compare itself as it likes.
    const std::vector<Ref<NSTabViewItem>> items = m_items;
    for (std::size_t i = 0; identifier && i < items.size(); ++i) {
        const id known = items[i]->identifier();
        if (known && (known == identifier || known->isEqual(identifier))) {
            return static_cast<NSInteger>(i);
        }
    }
    return static_cast<NSInteger>(NSNotFound);
}

void NSTabView::addTabViewItem(NSTabViewItem* item) {
    send<void>(this, "insertTabViewItem:atIndex:"_sel, item, numberOfTabViewItems());
}

void NSTabView::insertTabViewItem_atIndex(NSTabViewItem* item, NSInteger index) {
    if (index < 0 || index > numberOfTabViewItems()) {
        NSException::raise(NSRangeException, "-[NSTabView insertTabViewItem:atIndex:]: index " + std::to_string(index) +
                                                 " beyond " + std::to_string(m_items.size()) + " items");
    }
    if (!item || item->m_tabView.lock() == this) {
        return;
    }
    const Ref<NSTabView> self(this);
    const Ref<NSTabViewItem> kept(item);
    if (const Ref<NSTabView> before = item->tabView()) {
        send<void>(before, "removeTabViewItem:"_sel, item);
    }
    // Whoever was told may have changed the items here.
    m_items.insert(m_items.begin() + std::min(index, numberOfTabViewItems()), kept);
    item->m_tabView = Weak<NSTabView>(this);
    send<void>(this, "setNeedsDisplay:"_sel, true);
    tellOfNumber();
    if (!m_selected && item->m_tabView.lock() == this) {
        setSelected(item, false);
    }
}

void NSTabView::removeTabViewItem(NSTabViewItem* item) {
    const NSInteger index = indexOfTabViewItem(item);
    if (index == static_cast<NSInteger>(NSNotFound)) {
        return;
    }
    const Ref<NSTabView> self(this);
    const Ref<NSTabViewItem> kept(item);
    m_items.erase(m_items.begin() + index);
    item->m_tabView = nullptr;
    if (m_pressed == item) {
        m_pressed = nullptr;
    }
    if (m_selected == item) {
        const NSInteger next = std::min(index, numberOfTabViewItems() - 1);
        setSelected(next < 0 ? nullptr : m_items[static_cast<std::size_t>(next)].get(), false);
    }
    send<void>(this, "setNeedsDisplay:"_sel, true);
    tellOfNumber();
}

void NSTabView::tellOfNumber() {
    const id told = delegate();
    const SEL operation = "tabViewDidChangeNumberOfTabViewItems:"_sel;
    if (told && told->respondsToSelector(operation)) {
        send<void>(told, operation, this);
    }
}

void NSTabView::selectTabViewItem(NSTabViewItem* item) {
    if (indexOfTabViewItem(item) != static_cast<NSInteger>(NSNotFound)) {
        setSelected(item, true);
    }
}

void NSTabView::selectTabViewItemAtIndex(NSInteger index) {
    if (index < 0 || index >= numberOfTabViewItems()) {
        NSException::raise(NSRangeException, "-[NSTabView selectTabViewItemAtIndex:]: index " + std::to_string(index) +
                                                 " beyond " + std::to_string(m_items.size()) + " items");
    }
    send<void>(this, "selectTabViewItem:"_sel, m_items[static_cast<std::size_t>(index)]);
}

void NSTabView::selectTabViewItemWithIdentifier(NSObject* identifier) {
    send<void>(this, "selectTabViewItemAtIndex:"_sel, indexOfTabViewItemWithIdentifier(identifier));
}

void NSTabView::selectFirstTabViewItem(NSObject*) {
    if (!m_items.empty()) {
        send<void>(this, "selectTabViewItem:"_sel, m_items.front());
    }
}

void NSTabView::selectLastTabViewItem(NSObject*) {
    if (!m_items.empty()) {
        send<void>(this, "selectTabViewItem:"_sel, m_items.back());
    }
}

void NSTabView::selectNextTabViewItem(NSObject*) {
    selectBeside(1);
}

void NSTabView::selectPreviousTabViewItem(NSObject*) {
    selectBeside(-1);
}

void NSTabView::selectBeside(NSInteger step) {
    const NSInteger index = indexOfTabViewItem(m_selected);
    if (index != static_cast<NSInteger>(NSNotFound) && index + step >= 0 && index + step < numberOfTabViewItems()) {
        send<void>(this, "selectTabViewItem:"_sel, m_items[static_cast<std::size_t>(index + step)]);
    }
}

void NSTabView::setSelected(NSTabViewItem* item, bool asks) {
    if (m_selected == item) {
        return;
    }
    const Ref<NSTabView> self(this);
    const Ref<NSTabViewItem> kept(item);
    const id told = delegate();
    const auto answers = [&told](SEL operation) { return told && told->respondsToSelector(operation); };
    const SEL should = "tabView:shouldSelectTabViewItem:"_sel;
    const SEL will = "tabView:willSelectTabViewItem:"_sel;
    const SEL did = "tabView:didSelectTabViewItem:"_sel;
    if (asks && answers(should) && !send<bool>(told, should, this, item)) {
        return;
    }
    if (item && answers(will)) {
        send<void>(told, will, this, item);
    }
    // Whoever was told may have taken it out.
    if (item && item->m_tabView.lock() != this) {
        if (m_selected && m_selected->m_tabView.lock() != this) {
            setSelected(m_items.empty() ? nullptr : m_items.front().get(), false);
        }
        return;
    }
    m_selected = kept;
    showSelection();
    send<void>(this, "setNeedsDisplay:"_sel, true);
    if (item && answers(did)) {
        send<void>(told, did, this, item);
    }
}

void NSTabView::showSelection() {
    const Ref<NSTabView> self(this);
    const Ref<NSTabViewItem> selected = m_selected;
    const Ref<NSView> view = selected ? selected->view() : nullptr;
    if (selected != m_selected) {
        // Making the view has led to another selection, which has shown itself.
        return;
    }
    const Ref<NSView> before = m_shown;
    m_shown = view;
    if (before && before != view && before->superview() == this) {
        before->removeFromSuperview();
    }
    if (view && m_shown == view) {
        send<void>(view, "setFrame:"_sel, contentRect());
        if (view->superview() != this) {
            addSubview(view);
        }
    }
}

NSRect NSTabView::contentRect() const {
    const NSRect all = bounds();
    return {all.origin, {all.size.width, std::max(0.0, all.size.height - barHeight)}};
}

NSRect NSTabView::rectOfTabAtIndex(NSInteger index) const {
    if (index < 0 || index >= numberOfTabViewItems()) {
        return NSZeroRect;
    }
    const NSRect all = bounds();
    double before = 0;
    double sum = 0;
    double width = 0;
    for (NSInteger i = 0; i < numberOfTabViewItems(); ++i) {
        const double natural = naturalWidth(*m_items[static_cast<std::size_t>(i)]);
        before += i < index ? natural : 0;
        width = i == index ? natural : width;
        sum += natural;
    }
    const double scale = std::min(1.0, std::max(0.0, all.size.width) / sum);
    return {{all.origin.x + before * scale, NSMaxY(all) - barHeight}, {width * scale, barHeight}};
}

Ref<NSTabViewItem> NSTabView::tabViewItemAtPoint(NSPoint point) const {
    for (NSInteger i = 0; i < numberOfTabViewItems(); ++i) {
        if (NSMouseInRect(point, rectOfTabAtIndex(i), isFlipped())) {
            return m_items[static_cast<std::size_t>(i)];
        }
    }
    return nullptr;
}

void NSTabView::setFrameSize(NSSize size) {
    NSView::setFrameSize(size);
    if (m_shown && m_shown->superview() == this) {
        send<void>(m_shown, "setFrame:"_sel, contentRect());
    }
}

void NSTabView::setBoundsOrigin(NSPoint origin) {
    NSView::setBoundsOrigin(origin);
    if (m_shown && m_shown->superview() == this) {
        send<void>(m_shown, "setFrame:"_sel, contentRect());
    }
}

bool NSTabView::acceptsFirstResponder() const {
    return !m_items.empty();
}

bool NSTabView::becomeFirstResponder() {
    setNeedsDisplay(true);
    return NSView::becomeFirstResponder();
}

bool NSTabView::resignFirstResponder() {
    setNeedsDisplay(true);
    return NSView::resignFirstResponder();
}

void NSTabView::mouseDown(NSEvent* event) {
    m_pressed = event ? tabViewItemAtPoint(convertPoint_fromView(event->locationInWindow(), nullptr)) : nullptr;
    if (!m_pressed && event) {
        NSView::mouseDown(event);
    }
}

void NSTabView::mouseUp(NSEvent* event) {
    const Ref<NSTabViewItem> pressed = std::exchange(m_pressed, nullptr);
    if (!event) {
        return;
    }
    if (!pressed) {
        NSView::mouseUp(event);
    } else if (tabViewItemAtPoint(convertPoint_fromView(event->locationInWindow(), nullptr)) == pressed) {
        send<void>(this, "selectTabViewItem:"_sel, pressed);
    }
}

void NSTabView::keyDown(NSEvent* event) {
    const Ref<NSString> key = event ? event->characters() : nullptr;
    const bool isPlain = event && (event->modifierFlags() & countedModifiers) == 0;
    const bool isLeft = key && key->isEqual(u"\xF702"_ns);
    const bool isRight = key && key->isEqual(u"\xF703"_ns);
    if (!isPlain || !(isLeft || isRight)) {
        NSView::keyDown(event);
        return;
    }
    send<void>(this, isLeft ? "selectPreviousTabViewItem:"_sel : "selectNextTabViewItem:"_sel, nullptr);
}

void NSTabView::drawRect(NSRect) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    if (!context) {
        return;
    }
    Canvas& canvas = context->canvas();
    const NSRect all = bounds();
    const auto fill = [&canvas](NSRect rect, NSColor* color) {
        canvas.fillRect(rect, color, NSCompositingOperationSourceOver);
    };
    const double bottom = NSMaxY(all) - barHeight;
    fill({{all.origin.x, bottom}, {all.size.width, barHeight}}, look::face(false, false));
    fill({{all.origin.x, bottom}, {all.size.width, look::borderWidth}}, look::border(true));
    const Ref<NSWindow> window = this->window();
    const bool hasKeys = window && window->isKeyWindow() && window->firstResponder() == this;
    const std::vector<Ref<NSTabViewItem>> items = m_items;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const NSRect tab = rectOfTabAtIndex(static_cast<NSInteger>(i));
        const bool isSelected = items[i] == m_selected;
        if (isSelected) {
            fill(tab, NSColor::controlColor());
            fill({tab.origin, {tab.size.width, markHeight}}, look::accent());
        }
        const Ref<NSAttributedString> label = labelToDraw(*items[i], isSelected);
        const double height = std::ceil(currentToolkit().naturalSizeOfText(label, 0).height);
        const double room = tab.size.width - 2 * margin;
        if (room > 0 && height > 0) {
            canvas.drawText(label, {{tab.origin.x + margin, tab.origin.y + (barHeight - height) / 2}, {room, height}},
                            true);
        }
        if (isSelected && hasKeys) {
            canvas.strokeRoundedRect(tab, look::cornerRadius, look::focusRingWidth, look::accent());
        }
    }
}

} // namespace zr
