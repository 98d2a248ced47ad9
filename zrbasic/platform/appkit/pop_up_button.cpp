#include <zrbasic/platform/appkit/pop_up_button.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/pop_up_button_cell.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace zr {
namespace {

constexpr NSUInteger countedModifiers =
    NSEventModifierFlagCommand | NSEventModifierFlagOption | NSEventModifierFlagControl;

/// The up and down arrow keys.
bool isVerticalArrow(NSEvent* event) {
    const Ref<NSString> key = event->characters();
    const bool isPlain = (event->modifierFlags() & countedModifiers) == 0;
    return isPlain && key && (key->isEqual("\uF700"_ns) || key->isEqual("\uF701"_ns));
}

} // namespace

ZR_DEFINE_CLASS(NSPopUpButton) {
    is.classMethod<&NSPopUpButton::cellClass>("cellClass");
    is.method<&NSPopUpButton::initWithFrame_pullsDown>("initWithFrame:pullsDown:");
    is.method<&NSPopUpButton::pullsDown>("pullsDown");
    is.method<&NSPopUpButton::setPullsDown>("setPullsDown:");
    is.method<&NSPopUpButton::menu>("menu");
    is.method<&NSPopUpButton::setMenu>("setMenu:");
    is.method<&NSPopUpButton::addItemWithTitle>("addItemWithTitle:");
    is.method<&NSPopUpButton::addItemsWithTitles>("addItemsWithTitles:");
    is.method<&NSPopUpButton::insertItemWithTitle_atIndex>("insertItemWithTitle:atIndex:");
    is.method<&NSPopUpButton::removeItemWithTitle>("removeItemWithTitle:");
    is.method<&NSPopUpButton::removeItemAtIndex>("removeItemAtIndex:");
    is.method<&NSPopUpButton::removeAllItems>("removeAllItems");
    is.method<&NSPopUpButton::numberOfItems>("numberOfItems");
    is.method<&NSPopUpButton::itemArray>("itemArray");
    is.method<&NSPopUpButton::itemAtIndex>("itemAtIndex:");
    is.method<&NSPopUpButton::itemTitles>("itemTitles");
    is.method<&NSPopUpButton::itemTitleAtIndex>("itemTitleAtIndex:");
    is.method<&NSPopUpButton::itemWithTitle>("itemWithTitle:");
    is.method<&NSPopUpButton::lastItem>("lastItem");
    is.method<&NSPopUpButton::indexOfItem>("indexOfItem:");
    is.method<&NSPopUpButton::indexOfItemWithTitle>("indexOfItemWithTitle:");
    is.method<&NSPopUpButton::indexOfItemWithTag>("indexOfItemWithTag:");
    is.method<&NSPopUpButton::selectItem>("selectItem:");
    is.method<&NSPopUpButton::selectItemAtIndex>("selectItemAtIndex:");
    is.method<&NSPopUpButton::selectItemWithTitle>("selectItemWithTitle:");
    is.method<&NSPopUpButton::selectItemWithTag>("selectItemWithTag:");
    is.method<&NSPopUpButton::selectedItem>("selectedItem");
    is.method<&NSPopUpButton::indexOfSelectedItem>("indexOfSelectedItem");
    is.method<&NSPopUpButton::selectedTag>("selectedTag");
    is.method<&NSPopUpButton::titleOfSelectedItem>("titleOfSelectedItem");
    is.method<&NSPopUpButton::setTitle>("setTitle:");
}

NSPopUpButton::NSPopUpButton() : m_items(make<NSMenu>()) {
    m_items->m_popUpButton = Weak<NSPopUpButton>(this);
}

NSPopUpButton::~NSPopUpButton() = default;

Class* NSPopUpButton::cellClass() {
    return NSPopUpButtonCell::classObject();
}

id NSPopUpButton::initWithFrame(NSRect frame) {
    return initWithFrame_pullsDown(frame, false);
}

id NSPopUpButton::initWithFrame_pullsDown(NSRect frame, bool pullsDown) {
    const id button = NSButton::initWithFrame(frame);
    setPullsDown(pullsDown);
    return button;
}

void NSPopUpButton::setPullsDown(bool pullsDown) {
    m_pullsDown = pullsDown;
    m_selectedItem = nullptr;
    m_selectsNothing = false;
    showSelection();
}

void NSPopUpButton::setMenu(NSMenu* menu) {
    const Ref<NSMenu> fresh = menu ? Ref<NSMenu>(menu) : make<NSMenu>();
    if (fresh == m_items) {
        return;
    }
    if (fresh->m_popUpButton.lock()) {
        NSException::raise(NSInvalidArgumentException, "the menu belongs to another button");
    }
    const Ref<NSMenu> before = std::exchange(m_items, fresh);
    before->m_popUpButton = nullptr;
    fresh->m_popUpButton = Weak<NSPopUpButton>(this);
    m_selectedItem = nullptr;
    m_selectsNothing = false;
    showSelection();
}

void NSPopUpButton::addItemWithTitle(NSString* title) {
    const Ref<NSString> kept = title ? Ref<NSString>(title) : ""_ns;
    removeItemWithTitle(kept);
    m_items->addItemWithTitle_action_keyEquivalent(kept, {}, nullptr);
}

void NSPopUpButton::addItemsWithTitles(NSArray* titles) {
    if (!titles) {
        return;
    }
    const Ref<NSArray> kept(titles);
    for (const id& title : kept->elements()) {
        if (auto* const text = cast<NSString>(title)) {
            send<void>(this, "addItemWithTitle:"_sel, text);
        }
    }
}

void NSPopUpButton::insertItemWithTitle_atIndex(NSString* title, NSInteger index) {
    const Ref<NSString> kept = title ? Ref<NSString>(title) : ""_ns;
    const NSInteger others = numberOfItems() - (itemWithTitle(kept) ? 1 : 0);
    if (index < 0 || index > others) {
        NSException::raise(NSRangeException, "there is no such place in the menu");
    }
    removeItemWithTitle(kept);
    m_items->insertItem_atIndex(
        make<NSMenuItem>(&NSMenuItem::initWithTitle_action_keyEquivalent, kept.get(), SEL(), nullptr), index);
}

void NSPopUpButton::removeItemWithTitle(NSString* title) {
    m_items->removeItem(itemWithTitle(title));
}

void NSPopUpButton::removeItemAtIndex(NSInteger index) {
    m_items->removeItem(itemAtIndex(index));
}

void NSPopUpButton::removeAllItems() {
    m_items->removeAllItems();
}

NSInteger NSPopUpButton::numberOfItems() const {
    return m_items->numberOfItems();
}

Ref<NSArray> NSPopUpButton::itemArray() const {
    return m_items->itemArray();
}

Ref<NSMenuItem> NSPopUpButton::itemAtIndex(NSInteger index) const {
    return m_items->itemAtIndex(index);
}

Ref<NSArray> NSPopUpButton::itemTitles() const {
    std::vector<id> titles;
    for (NSInteger i = 0; i < numberOfItems(); ++i) {
        titles.push_back(itemAtIndex(i)->title());
    }
    return NSArray::fromElements(std::move(titles));
}

Ref<NSString> NSPopUpButton::itemTitleAtIndex(NSInteger index) const {
    const Ref<NSMenuItem> item = itemAtIndex(index);
    return item ? item->title() : nullptr;
}

Ref<NSMenuItem> NSPopUpButton::itemWithTitle(NSString* title) const {
    return m_items->itemWithTitle(title);
}

Ref<NSMenuItem> NSPopUpButton::lastItem() const {
    return itemAtIndex(numberOfItems() - 1);
}

NSInteger NSPopUpButton::indexOfItem(NSMenuItem* item) const {
    return m_items->indexOfItem(item);
}

NSInteger NSPopUpButton::indexOfItemWithTitle(NSString* title) const {
    return indexOfItem(itemWithTitle(title));
}

NSInteger NSPopUpButton::indexOfItemWithTag(NSInteger tag) const {
    return indexOfItem(m_items->itemWithTag(tag));
}

void NSPopUpButton::selectItem(NSMenuItem* item) {
    if (m_pullsDown) {
        return;
    }
    const bool isThere = item && indexOfItem(item) >= 0;
    m_selectedItem = isThere ? Weak<NSMenuItem>(item) : nullptr;
    m_selectsNothing = !isThere;
    showSelection();
}

void NSPopUpButton::selectItemAtIndex(NSInteger index) {
    send<void>(this, "selectItem:"_sel, itemAtIndex(index).get());
}

void NSPopUpButton::selectItemWithTitle(NSString* title) {
    send<void>(this, "selectItem:"_sel, itemWithTitle(title).get());
}

bool NSPopUpButton::selectItemWithTag(NSInteger tag) {
    const Ref<NSMenuItem> item = m_items->itemWithTag(tag);
    if (!item || m_pullsDown) {
        return false;
    }
    send<void>(this, "selectItem:"_sel, item.get());
    return true;
}

Ref<NSMenuItem> NSPopUpButton::selectedItem() const {
    if (m_pullsDown || m_selectsNothing) {
        return nullptr;
    }
    const Ref<NSMenuItem> item = m_selectedItem.lock();
    return item && indexOfItem(item) >= 0 ? item : itemAtIndex(0);
}

NSInteger NSPopUpButton::indexOfSelectedItem() const {
    return indexOfItem(selectedItem());
}

NSInteger NSPopUpButton::selectedTag() const {
    const Ref<NSMenuItem> item = selectedItem();
    return item ? item->tag() : -1;
}

Ref<NSString> NSPopUpButton::titleOfSelectedItem() const {
    const Ref<NSMenuItem> item = selectedItem();
    return item ? item->title() : nullptr;
}

void NSPopUpButton::setTitle(NSString* title) {
    const Ref<NSString> kept = title ? Ref<NSString>(title) : ""_ns;
    if (m_pullsDown) {
        if (const Ref<NSMenuItem> first = itemAtIndex(0)) {
            first->setTitle(kept);
        } else {
            addItemWithTitle(kept);
        }
        return;
    }
    if (!itemWithTitle(kept)) {
        addItemWithTitle(kept);
    }
    selectItemWithTitle(kept);
}

void NSPopUpButton::setCell(NSCell* cell) {
    NSButton::setCell(cell);
    showSelection();
}

void NSPopUpButton::itemsChanged() {
    if (m_items->numberOfItems() == 0) {
        // The first one that comes is selected again.
        m_selectsNothing = false;
    }
    showSelection();
}

void NSPopUpButton::showSelection() {
    const Ref<NSMenuItem> selected = selectedItem();
    const Ref<NSMenuItem> marked = m_markedItem.lock();
    if (marked && marked != selected) {
        marked->setState(NSControlStateValueOff);
    }
    if (selected) {
        selected->setState(NSControlStateValueOn);
    }
    m_markedItem = Weak<NSMenuItem>(selected);
    // The first one is selected where no other is, and stays so when it is the first no longer.
    m_selectedItem = Weak<NSMenuItem>(selected);
    const Ref<NSMenuItem> titled = m_pullsDown ? itemAtIndex(0) : nullptr;
    const Ref<NSMenuItem> titledBefore = m_titleItem.lock();
    if (titledBefore && titledBefore != titled) {
        titledBefore->setHidden(false);
    }
    if (titled) {
        titled->setHidden(true);
    }
    m_titleItem = Weak<NSMenuItem>(titled);
    const Ref<NSMenuItem>& shown = m_pullsDown ? titled : selected;
    NSButton::setTitle(shown ? shown->title().get() : nullptr);
}

void NSPopUpButton::performClick(NSObject*) {
    if (!isEnabled() || m_isOpen) {
        return;
    }
    const Ref<NSPopUpButton> self(this);
    const Ref<NSMenu> menu = m_items;
    const NSRect area = bounds();
    const double least = menu->minimumWidth();
    m_isOpen = true;
    const auto close = [&] {
        menu->setMinimumWidth(least);
        m_isOpen = false;
        highlight(false);
    };
    highlight(true);
    menu->setMinimumWidth(std::max(least, area.size.width));
    const NSPoint location{NSMinX(area), m_pullsDown == isFlipped() ? NSMaxY(area) : NSMinY(area)};
    try {
        send<bool>(menu, "popUpMenuPositioningItem:atLocation:inView:"_sel, selectedItem().get(), location, this);
    } catch (...) {
        close();
        throw;
    }
    close();
}

void NSPopUpButton::itemWasChosen(const Ref<NSMenuItem>& item) {
    const Ref<NSPopUpButton> self(this);
    const Ref<NSMenuItem> kept = item;
    // The menu is gone by now, and the action may run for long.
    m_isOpen = false;
    highlight(false);
    send<void>(this, "selectItem:"_sel, kept.get());
    if (kept->action()) {
        const id target = kept->target();
        send<bool>(NSApplication::sharedApplication(), "sendAction:to:from:"_sel, kept->action(), target.get(),
                   kept.get());
    } else {
        send<bool>(this, "sendAction:to:"_sel, action(), target());
    }
}

void NSPopUpButton::mouseDown(NSEvent* event) {
    if (!event || !isEnabled()) {
        return;
    }
    const NSPoint point = convertPoint_fromView(event->locationInWindow(), nullptr);
    if (NSMouseInRect(point, bounds(), isFlipped())) {
        send<void>(this, "performClick:"_sel, nullptr);
    }
}

void NSPopUpButton::keyDown(NSEvent* event) {
    if (!event || !isEnabled() || !isVerticalArrow(event)) {
        NSButton::keyDown(event);
    } else if (!event->isARepeat()) {
        send<void>(this, "performClick:"_sel, nullptr);
    }
}

bool NSPopUpButton::performKeyEquivalent(NSEvent* event) {
    if (event && isEnabled() && !isHiddenOrHasHiddenAncestor() &&
        send<bool>(m_items, "performKeyEquivalent:"_sel, event)) {
        return true;
    }
    return NSButton::performKeyEquivalent(event);
}

} // namespace zr
