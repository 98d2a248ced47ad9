#include <zrbasic/platform/appkit/collection_view.h>

#include <zrbasic/platform/appkit/clip_view.h>
#include <zrbasic/platform/appkit/control_look_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

constexpr NSInteger mostItems = 10'000;

constexpr char16_t upArrow = 0xF700;
constexpr char16_t downArrow = 0xF701;
constexpr char16_t leftArrow = 0xF702;
constexpr char16_t rightArrow = 0xF703;
constexpr char16_t homeKey = 0xF729;
constexpr char16_t endKey = 0xF72B;

double atLeast(double least, double value) {
    return value > least ? value : least;
}

/// Those of `indexes` that are not in `others`.
Ref<NSIndexSet> without(NSIndexSet* indexes, NSIndexSet* others) {
    const Ref<NSMutableIndexSet> rest = make<NSMutableIndexSet>();
    indexes->enumerateIndexesUsingBlock([&](NSUInteger index, bool&) {
        if (!others->containsIndex(index)) {
            rest->addIndex(index);
        }
    });
    return rest;
}

} // namespace

ZR_DEFINE_CLASS(NSCollectionViewItem) {
    is.method<&NSCollectionViewItem::isSelected>("isSelected");
    is.method<&NSCollectionViewItem::setSelected>("setSelected:");
    is.method<&NSCollectionViewItem::collectionView>("collectionView");
}

NSCollectionViewItem::NSCollectionViewItem() = default;
NSCollectionViewItem::~NSCollectionViewItem() = default;

void NSCollectionViewItem::setSelected(bool selected) {
    m_isSelected = selected;
}

Ref<NSCollectionView> NSCollectionViewItem::collectionView() const {
    return m_collectionView.lock();
}

ZR_DEFINE_CLASS(NSCollectionView) {
    is.method<&NSCollectionView::dataSource>("dataSource");
    is.method<&NSCollectionView::setDataSource>("setDataSource:");
    is.method<&NSCollectionView::delegate>("delegate");
    is.method<&NSCollectionView::setDelegate>("setDelegate:");
    is.method<&NSCollectionView::content>("content");
    is.method<&NSCollectionView::setContent>("setContent:");
    is.method<&NSCollectionView::newItemForRepresentedObject>("newItemForRepresentedObject:");
    is.method<&NSCollectionView::reloadData>("reloadData");
    is.method<&NSCollectionView::itemAtIndex>("itemAtIndex:");
    is.method<&NSCollectionView::frameForItemAtIndex>("frameForItemAtIndex:");
    is.method<&NSCollectionView::itemSize>("itemSize");
    is.method<&NSCollectionView::setItemSize>("setItemSize:");
    is.method<&NSCollectionView::maxNumberOfColumns>("maxNumberOfColumns");
    is.method<&NSCollectionView::setMaxNumberOfColumns>("setMaxNumberOfColumns:");
    is.method<&NSCollectionView::backgroundColors>("backgroundColors");
    is.method<&NSCollectionView::setBackgroundColors>("setBackgroundColors:");
    is.method<&NSCollectionView::isSelectable>("isSelectable");
    is.method<&NSCollectionView::setSelectable>("setSelectable:");
    is.method<&NSCollectionView::allowsMultipleSelection>("allowsMultipleSelection");
    is.method<&NSCollectionView::setAllowsMultipleSelection>("setAllowsMultipleSelection:");
    is.method<&NSCollectionView::allowsEmptySelection>("allowsEmptySelection");
    is.method<&NSCollectionView::setAllowsEmptySelection>("setAllowsEmptySelection:");
    is.method<&NSCollectionView::selectionIndexes>("selectionIndexes");
    is.method<&NSCollectionView::setSelectionIndexes>("setSelectionIndexes:");
    is.method<&NSCollectionView::resizeWithOldSuperviewSize>("resizeWithOldSuperviewSize:");
}

NSCollectionView::NSCollectionView() : m_content(NSArray::fromElements({})), m_selection(NSIndexSet::indexSet()) {}

NSCollectionView::~NSCollectionView() = default;

// Items

void NSCollectionView::setDataSource(NSObject* source) {
    m_dataSource = Weak<NSObject>(source);
    send<void>(this, "reloadData"_sel);
}

void NSCollectionView::setContent(NSArray* content) {
    m_content = content ? Ref<NSArray>(cast<NSArray>(content->copy())) : NSArray::fromElements({});
    send<void>(this, "reloadData"_sel);
}

Ref<NSCollectionViewItem> NSCollectionView::newItemForRepresentedObject(NSObject* object) {
    const Ref<NSCollectionViewItem> item = make<NSCollectionViewItem>();
    item->setRepresentedObject(object);
    return item;
}

void NSCollectionView::reloadData() {
    const Ref<NSCollectionView> self(this);
    std::vector<Ref<NSCollectionViewItem>> items;
    if (const id source = dataSource()) {
        const SEL count = "collectionView:numberOfItemsInSection:"_sel;
        const SEL item = "collectionView:itemForRepresentedObjectAtIndex:"_sel;
        const NSInteger wanted =
            source->respondsToSelector(count) && source->respondsToSelector(item)
                ? std::clamp(send<NSInteger>(source, count, this, NSInteger{0}), NSInteger{0}, mostItems)
                : 0;
        for (NSInteger i = 0; i < wanted; ++i) {
            const id made = send<id>(source, item, this, static_cast<NSUInteger>(i));
            items.emplace_back(cast<NSCollectionViewItem>(made));
        }
    } else {
        const Ref<NSArray> content = m_content;
        const NSUInteger wanted = std::min(content->count(), static_cast<NSUInteger>(mostItems));
        for (NSUInteger i = 0; i < wanted; ++i) {
            items.push_back(
                send<Ref<NSCollectionViewItem>>(this, "newItemForRepresentedObject:"_sel, content->objectAtIndex(i)));
        }
    }
    replaceItems(std::move(items));
}

void NSCollectionView::replaceItems(std::vector<Ref<NSCollectionViewItem>> items) {
    // The same item twice, or one that another collection shows, has its view only in the last place.
    const std::vector<Ref<NSCollectionViewItem>> previous = std::exchange(m_items, std::move(items));
    for (const Ref<NSCollectionViewItem>& item : previous) {
        if (item && item->collectionView() == this) {
            item->m_collectionView = nullptr;
            if (item->view()->superview() == this) {
                item->view()->removeFromSuperview();
            }
        }
    }
    const std::vector<Ref<NSCollectionViewItem>> present = m_items;
    for (const Ref<NSCollectionViewItem>& item : present) {
        if (item) {
            item->m_collectionView = Weak<NSCollectionView>(this);
            addSubview(item->view());
        }
    }
    layOut();
    const Ref<NSIndexSet> selection = std::exchange(m_selection, NSIndexSet::indexSet());
    m_anchor = m_current = NSNotFound;
    select(selection, false);
}

Ref<NSCollectionViewItem> NSCollectionView::itemAtIndex(NSUInteger index) const {
    return index < m_items.size() ? m_items[index] : nullptr;
}

// Layout

NSUInteger NSCollectionView::columns() const {
    const double fit =
        std::floor((bounds().size.width + m_itemSpacing.width) / (m_itemSize.width + m_itemSpacing.width));
    const auto room = fit > 1 ? static_cast<NSUInteger>(std::min(fit, double(mostItems))) : NSUInteger{1};
    return m_maxNumberOfColumns == 0 ? room : std::min(room, m_maxNumberOfColumns);
}

double NSCollectionView::neededHeight() const {
    const NSUInteger rows = (m_items.size() + columns() - 1) / columns();
    return rows == 0 ? 0 : double(rows) * (m_itemSize.height + m_itemSpacing.height) - m_itemSpacing.height;
}

NSRect NSCollectionView::frameForItemAtIndex(NSUInteger index) const {
    if (index >= m_items.size()) {
        return NSZeroRect;
    }
    const auto row = double(index / columns());
    const auto column = double(index % columns());
    return NSMakeRect(column * (m_itemSize.width + m_itemSpacing.width),
                      row * (m_itemSize.height + m_itemSpacing.height),
                      m_maxNumberOfColumns == 1 ? bounds().size.width : m_itemSize.width, m_itemSize.height);
}

NSUInteger NSCollectionView::indexOfItemAtPoint(NSPoint point) const {
    const double row = std::floor(point.y / (m_itemSize.height + m_itemSpacing.height));
    const double column =
        m_maxNumberOfColumns == 1 ? 0 : std::floor(point.x / (m_itemSize.width + m_itemSpacing.width));
    if (!(row >= 0 && row < double(m_items.size()) && column >= 0 && column < double(columns()))) {
        return NSNotFound;
    }
    const NSUInteger index = static_cast<NSUInteger>(row) * columns() + static_cast<NSUInteger>(column);
    return index < m_items.size() && NSMouseInRect(point, frameForItemAtIndex(index), true) ? index : NSNotFound;
}

NSSize NSCollectionView::placeInClip() const {
    const Ref<NSView> outside = superview();
    return {outside->bounds().size.width, std::max(outside->bounds().size.height, neededHeight())};
}

void NSCollectionView::layOut() {
    // Another width may bring or take a scroller of the view around, which comes back here.
    if (std::exchange(m_isLayingOut, true)) {
        return;
    }
    const Ref<NSCollectionView> self(this);
    {
        const struct Ending {
            bool& flag;
            ~Ending() { flag = false; }
        } ending{m_isLayingOut};
        placeAll();
    }
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

void NSCollectionView::placeAll() {
    if (cast<NSClipView>(superview())) {
        // The width first, as the height depends on it; a scroller that comes for the height narrows it once more.
        for (int pass = 0; pass < 3 && frame().size != placeInClip(); ++pass) {
            NSView::setFrameSize({placeInClip().width, frame().size.height});
            NSView::setFrameSize(placeInClip());
        }
    }
    const std::vector<Ref<NSCollectionViewItem>> items = m_items;
    for (NSUInteger i = 0; i < items.size(); ++i) {
        if (items[i]) {
            send<void>(items[i]->view(), "setFrame:"_sel, frameForItemAtIndex(i));
        }
    }
}

void NSCollectionView::setItemSize(NSSize size) {
    m_itemSize = {atLeast(1, size.width), atLeast(1, size.height)};
    layOut();
}

void NSCollectionView::setItemSpacing(NSSize spacing) {
    m_itemSpacing = {atLeast(0, spacing.width), atLeast(0, spacing.height)};
    layOut();
}

void NSCollectionView::setMaxNumberOfColumns(NSUInteger columns) {
    m_maxNumberOfColumns = columns;
    layOut();
}

void NSCollectionView::setFrameSize(NSSize size) {
    const bool isOther = frame().size != size;
    NSView::setFrameSize(size);
    if (isOther) {
        layOut();
    }
}

void NSCollectionView::viewDidMoveToSuperview() {
    NSView::viewDidMoveToSuperview();
    layOut();
}

void NSCollectionView::resizeWithOldSuperviewSize(NSSize) {
    layOut();
}

// Look

Ref<NSArray> NSCollectionView::backgroundColors() const {
    return m_backgroundColors ? m_backgroundColors : array({look::paper()});
}

void NSCollectionView::setBackgroundColors(NSArray* colors) {
    m_backgroundColors = colors ? Ref<NSArray>(cast<NSArray>(colors->copy())) : NSArray::fromElements({});
    send<void>(this, "setNeedsDisplay:"_sel, true);
}

bool NSCollectionView::isFlipped() const {
    return true;
}

void NSCollectionView::drawRect(NSRect dirtyRect) {
    const Ref<NSArray> colors = backgroundColors();
    const NSUInteger count = colors->count();
    const auto fill = [&colors](NSUInteger index, NSRect rect) {
        if (const Ref<NSColor> color = cast<NSColor>(colors->objectAtIndex(index))) {
            setFill(color);
            NSRectFillUsingOperation(rect, NSCompositingOperationSourceOver);
        }
    };
    if (count == 1) {
        fill(0, dirtyRect);
    } else if (count > 1) {
        const double height = m_itemSize.height + m_itemSpacing.height;
        const double top = std::max(dirtyRect.origin.y, 0.0);
        const double bottom = std::min(NSMaxY(dirtyRect), bounds().size.height);
        const double first = std::floor(top / height);
        const double last = std::min(std::ceil(bottom / height), first + mostItems);
        for (double row = first; row < last; ++row) {
            fill(static_cast<NSUInteger>(std::fmod(row, double(count))),
                 NSMakeRect(0, row * height, bounds().size.width, height));
        }
    }
}

// Selection

void NSCollectionView::setSelectable(bool selectable) {
    m_isSelectable = selectable;
}

void NSCollectionView::setAllowsMultipleSelection(bool allows) {
    m_allowsMultipleSelection = allows;
    select(m_selection, false);
}

void NSCollectionView::setAllowsEmptySelection(bool allows) {
    m_allowsEmptySelection = allows;
}

void NSCollectionView::setSelectionIndexes(NSIndexSet* indexes) {
    select(indexes ? Ref<NSIndexSet>(indexes) : NSIndexSet::indexSet(), false);
}

void NSCollectionView::select(Ref<NSIndexSet> indexes, bool isByUser) {
    const Ref<NSCollectionView> self(this);
    const Ref<NSMutableIndexSet> wanted = make<NSMutableIndexSet>();
    for (NSUInteger index = indexes->firstIndex(); index < m_items.size();
         index = indexes->indexGreaterThanIndex(index)) {
        wanted->addIndex(index);
        if (!m_allowsMultipleSelection) {
            break;
        }
    }
    const Ref<NSIndexSet> previous = std::exchange(m_selection, Ref<NSIndexSet>(cast<NSIndexSet>(wanted->copy())));
    const Ref<NSIndexSet> present = m_selection;
    const std::vector<Ref<NSCollectionViewItem>> items = m_items;
    for (NSUInteger i = 0; i < items.size(); ++i) {
        if (items[i] && items[i]->isSelected() != present->containsIndex(i)) {
            send<void>(items[i], "setSelected:"_sel, present->containsIndex(i));
        }
    }
    const id delegate = this->delegate();
    if (!isByUser || !delegate) {
        return;
    }
    const auto tell = [&](SEL operation, NSIndexSet* changed) {
        if (changed->count() > 0 && delegate->respondsToSelector(operation)) {
            send<void>(delegate, operation, this, changed);
        }
    };
    tell("collectionView:didDeselectItemsAtIndexes:"_sel, without(previous, present));
    tell("collectionView:didSelectItemsAtIndexes:"_sel, without(present, previous));
}

bool NSCollectionView::acceptsFirstResponder() const {
    return m_isSelectable;
}

void NSCollectionView::extendTo(NSUInteger index) {
    if (m_anchor >= m_items.size()) {
        m_anchor = m_selection->firstIndex() < m_items.size() ? m_selection->firstIndex() : index;
    }
    m_current = index;
    const NSUInteger first = std::min(m_anchor, index);
    select(NSIndexSet::indexSetWithIndexesInRange({first, std::max(m_anchor, index) - first + 1}), true);
}

void NSCollectionView::mouseDown(NSEvent* event) {
    if (!event || !m_isSelectable) {
        NSView::mouseDown(event);
        return;
    }
    const Ref<NSCollectionView> self(this);
    // What is clicked in an item comes here without giving this view the keyboard.
    if (const Ref<NSWindow> window = this->window()) {
        window->makeFirstResponder(this);
    }
    const NSUInteger index = indexOfItemAtPoint(convertPoint_fromView(event->locationInWindow(), nullptr));
    if (index == NSNotFound) {
        if (m_allowsEmptySelection) {
            select(NSIndexSet::indexSet(), true);
        }
        return;
    }
    const NSUInteger keys = event->modifierFlags();
    if (m_allowsMultipleSelection && (keys & NSEventModifierFlagShift) != 0) {
        extendTo(index);
        return;
    }
    m_anchor = m_current = index;
    if ((keys & NSEventModifierFlagCommand) == 0) {
        select(NSIndexSet::indexSetWithIndex(index), true);
        return;
    }
    if (m_selection->containsIndex(index)) {
        if (m_allowsEmptySelection || m_selection->count() > 1) {
            select(without(m_selection, NSIndexSet::indexSetWithIndex(index)), true);
        }
        return;
    }
    const Ref<NSMutableIndexSet> wanted = make<NSMutableIndexSet>();
    if (m_allowsMultipleSelection) {
        wanted->addIndexes(m_selection);
    }
    wanted->addIndex(index);
    select(wanted, true);
}

void NSCollectionView::keyDown(NSEvent* event) {
    const Ref<NSString> typed = event ? event->characters() : nullptr;
    if (!typed || typed->length() != 1 || !m_isSelectable || m_items.empty()) {
        NSView::keyDown(event);
        return;
    }
    const auto last = static_cast<NSInteger>(m_items.size()) - 1;
    const auto across = static_cast<NSInteger>(columns());
    const NSUInteger known = m_current < m_items.size() ? m_current : m_selection->firstIndex();
    const bool hasCurrent = known < m_items.size();
    const auto from = static_cast<NSInteger>(hasCurrent ? known : 0);
    NSInteger to = from;
    switch (typed->characterAtIndex(0)) {
        case leftArrow:
            to = from - 1;
            break;
        case rightArrow:
            to = from + 1;
            break;
        case upArrow:
            to = from - across;
            break;
        case downArrow:
            to = from + across;
            break;
        case homeKey:
            to = 0;
            break;
        case endKey:
            to = last;
            break;
        default:
            NSView::keyDown(event);
            return;
    }
    // Beyond the first row or the last one there is nothing to go to.
    if (!hasCurrent) {
        to = typed->characterAtIndex(0) == endKey ? last : 0;
    } else if (to < 0 || to > last) {
        return;
    }
    const Ref<NSCollectionView> self(this);
    const auto index = static_cast<NSUInteger>(to);
    if (m_allowsMultipleSelection && (event->modifierFlags() & NSEventModifierFlagShift) != 0) {
        extendTo(index);
    } else {
        m_anchor = m_current = index;
        select(NSIndexSet::indexSetWithIndex(index), true);
    }
    scrollRectToVisible(this, frameForItemAtIndex(index));
}

} // namespace zr
