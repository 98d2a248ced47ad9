#include <zrbasic/platform/appkit/menu.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zr {
namespace {

constexpr NSUInteger countedModifiers =
    NSEventModifierFlagCommand | NSEventModifierFlagOption | NSEventModifierFlagControl;

/// Whether it stands for a key that types nothing, such as an arrow key.
bool isFunctionKey(NSString* key) {
    const auto code = key->length() == 1 ? key->characterAtIndex(0) : 0;
    return code >= 0xF700 && code <= 0xF8FF;
}

bool standsFor(NSEvent* event, NSMenuItem* item) {
    const Ref<NSString> key = item->keyEquivalent();
    const Ref<NSString> typed = event->characters();
    if (!typed || key->length() == 0 || typed->length() == 0) {
        return false;
    }
    const NSUInteger mask = item->keyEquivalentModifierMask();
    const NSUInteger held = event->modifierFlags();
    if ((held & countedModifiers) != (mask & countedModifiers)) {
        return false;
    }
    const Ref<NSString> lower = key->lowercaseString();
    const bool isLetter = !lower->isEqual(key->uppercaseString());
    if (!isLetter) {
        // Shift is part of how a sign is typed, but not of an arrow.
        const bool isShiftRight = !isFunctionKey(key) || ((held ^ mask) & NSEventModifierFlagShift) == 0;
        return isShiftRight && typed->isEqual(key);
    }
    // Whether caps lock is on makes no difference.
    const bool wantsShift = !key->isEqual(lower) || (mask & NSEventModifierFlagShift) != 0;
    return typed->lowercaseString()->isEqual(lower) && wantsShift == ((held & NSEventModifierFlagShift) != 0);
}

/// Whom the item's action would go to.
id receiverOf(const NSMenuItem& item) {
    if (!item.action()) {
        return {};
    }
    const id target = item.target();
    return target ? target : NSApplication::sharedApplication()->targetForAction(item.action());
}

void validate(const Ref<NSMenuItem>& item) {
    const id receiver = item->isSeparatorItem() ? id() : receiverOf(*item);
    if (receiver && receiver->respondsToSelector("validateMenuItem:"_sel)) {
        item->setEnabled(send<bool>(receiver, "validateMenuItem:"_sel, item.get()));
    }
}

} // namespace

ZR_DEFINE_CLASS(NSMenu) {
    is.method<&NSMenu::initWithTitle>("initWithTitle:");
    is.method<&NSMenu::title>("title");
    is.method<&NSMenu::setTitle>("setTitle:");
    is.method<&NSMenu::addItem>("addItem:");
    is.method<&NSMenu::insertItem_atIndex>("insertItem:atIndex:");
    is.method<&NSMenu::addItemWithTitle_action_keyEquivalent>("addItemWithTitle:action:keyEquivalent:");
    is.method<&NSMenu::removeItem>("removeItem:");
    is.method<&NSMenu::removeAllItems>("removeAllItems");
    is.method<&NSMenu::itemArray>("itemArray");
    is.method<&NSMenu::numberOfItems>("numberOfItems");
    is.method<&NSMenu::itemAtIndex>("itemAtIndex:");
    is.method<&NSMenu::itemWithTitle>("itemWithTitle:");
    is.method<&NSMenu::itemWithTag>("itemWithTag:");
    is.method<&NSMenu::indexOfItem>("indexOfItem:");
    is.method<&NSMenu::supermenu>("supermenu");
    is.method<&NSMenu::performActionForItemAtIndex>("performActionForItemAtIndex:");
    is.method<&NSMenu::performKeyEquivalent>("performKeyEquivalent:");
    is.classMethod<&NSMenu::popUpContextMenu_withEvent_forView>("popUpContextMenu:withEvent:forView:");
    is.method<&NSMenu::popUpMenuPositioningItem_atLocation_inView>("popUpMenuPositioningItem:atLocation:inView:");
    is.method<&NSMenu::update>("update");
    is.method<&NSMenu::delegate>("delegate");
    is.method<&NSMenu::setDelegate>("setDelegate:");
    is.method<&NSMenu::minimumWidth>("minimumWidth");
    is.method<&NSMenu::setMinimumWidth>("setMinimumWidth:");
}

NSMenu::NSMenu() : m_title(""_ns) {}

NSMenu::~NSMenu() = default;

id NSMenu::initWithTitle(NSString* title) {
    setTitle(title);
    return id(this);
}

void NSMenu::setTitle(NSString* title) {
    m_title = title ? Ref<NSString>(cast<NSString>(title->copy())) : ""_ns;
}

void NSMenu::addItem(NSMenuItem* item) {
    insertItem_atIndex(item, numberOfItems());
}

void NSMenu::insertItem_atIndex(NSMenuItem* item, NSInteger index) {
    if (!item) {
        return;
    }
    if (index < 0 || index > numberOfItems()) {
        NSException::raise(NSRangeException, "there is no such place in the menu");
    }
    if (item->menu()) {
        NSException::raise(NSInvalidArgumentException, "the item lies in a menu already");
    }
    // It would keep itself, and never end when it is searched.
    for (Ref<NSMenu> around(this); around; around = around->supermenu()) {
        if (around == item->submenu()) {
            NSException::raise(NSInvalidArgumentException, "the menu opens beside the item");
        }
    }
    m_items.insert(m_items.begin() + index, Ref<NSMenuItem>(item));
    item->m_menu = Weak<NSMenu>(this);
    changed();
}

Ref<NSMenuItem> NSMenu::addItemWithTitle_action_keyEquivalent(NSString* title, SEL action, NSString* keyEquivalent) {
    const Ref<NSMenuItem> item =
        make<NSMenuItem>(&NSMenuItem::initWithTitle_action_keyEquivalent, title, action, keyEquivalent);
    addItem(item);
    return item;
}

void NSMenu::removeItem(NSMenuItem* item) {
    const auto found = std::find(m_items.begin(), m_items.end(), item);
    if (item && found != m_items.end()) {
        const Ref<NSMenuItem> kept = std::move(*found);
        m_items.erase(found);
        kept->m_menu = nullptr;
        changed();
    }
}

void NSMenu::removeAllItems() {
    for (const Ref<NSMenuItem>& item : std::exchange(m_items, {})) {
        item->m_menu = nullptr;
    }
    changed();
}

Ref<NSArray> NSMenu::itemArray() const {
    return NSArray::fromElements(std::vector<id>(m_items.begin(), m_items.end()));
}

Ref<NSMenuItem> NSMenu::itemAtIndex(NSInteger index) const {
    return index >= 0 && index < numberOfItems() ? m_items[static_cast<std::size_t>(index)] : nullptr;
}

Ref<NSMenuItem> NSMenu::itemWithTitle(NSString* title) const {
    const auto found = std::find_if(m_items.begin(), m_items.end(), [&](const Ref<NSMenuItem>& item) {
        return title && !item->isSeparatorItem() && item->title()->isEqual(title);
    });
    return found != m_items.end() ? *found : nullptr;
}

Ref<NSMenuItem> NSMenu::itemWithTag(NSInteger tag) const {
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [&](const Ref<NSMenuItem>& item) { return item->tag() == tag; });
    return found != m_items.end() ? *found : nullptr;
}

NSInteger NSMenu::indexOfItem(NSMenuItem* item) const {
    const auto found = std::find(m_items.begin(), m_items.end(), item);
    return found != m_items.end() ? found - m_items.begin() : -1;
}

Ref<NSMenu> NSMenu::supermenu() const {
    return m_supermenuItem ? m_supermenuItem->menu() : nullptr;
}

void NSMenu::performActionForItemAtIndex(NSInteger index) {
    const Ref<NSMenuItem> item = itemAtIndex(index);
    if (item && item->isEnabled()) {
        choose(item);
    }
}

bool NSMenu::performKeyEquivalent(NSEvent* event) {
    if (!event) {
        return false;
    }
    // A submenu's own operation may do anything, even change this menu.
    const std::vector<Ref<NSMenuItem>> items = m_items;
    for (const Ref<NSMenuItem>& item : items) {
        if (!item->isEnabled() || item->isHidden()) {
            continue;
        }
        const Ref<NSMenu> submenu = item->submenu();
        if (submenu ? send<bool>(submenu, "performKeyEquivalent:"_sel, event) : standsFor(event, item)) {
            if (!submenu) {
                choose(item);
            }
            return true;
        }
    }
    return false;
}

void NSMenu::choose(const Ref<NSMenuItem>& item) {
    const Ref<NSMenu> self(this);
    if (const Ref<NSPopUpButton> button = m_popUpButton.lock()) {
        button->itemWasChosen(item);
        return;
    }
    const id target = item->target();
    send<bool>(NSApplication::sharedApplication(), "sendAction:to:from:"_sel, item->action(), target.get(), item.get());
}

void NSMenu::changed() {
    if (const Ref<NSPopUpButton> button = m_popUpButton.lock()) {
        button->itemsChanged();
    }
}

void NSMenu::setMinimumWidth(double width) {
    m_minimumWidth = std::isfinite(width) ? std::max(width, 0.0) : 0;
}

void NSMenu::update() {
    const Ref<NSMenu> self(this);
    const id delegate = this->delegate();
    if (delegate && delegate->respondsToSelector("menuNeedsUpdate:"_sel)) {
        send<void>(delegate, "menuNeedsUpdate:"_sel, this);
    }
    // Whoever is asked may do anything, even change this menu.
    const std::vector<Ref<NSMenuItem>> items = m_items;
    for (const Ref<NSMenuItem>& item : items) {
        validate(item);
    }
}

void NSMenu::updateTree() {
    send<void>(this, "update"_sel);
    const std::vector<Ref<NSMenuItem>> items = m_items;
    for (const Ref<NSMenuItem>& item : items) {
        if (const Ref<NSMenu> submenu = item->submenu()) {
            submenu->updateTree();
        }
    }
}

bool NSMenu::popUpMenuPositioningItem_atLocation_inView(NSMenuItem* item, NSPoint location, NSView* view) {
    const Ref<NSMenu> self(this);
    const Ref<NSMenuItem> keptItem(item);
    const Ref<NSView> keptView(view);
    updateTree();
    NSMenuItem* const at = indexOfItem(item) >= 0 ? item : nullptr;
    return currentToolkit().popUpMenu(*this, at, location, view);
}

void NSMenu::popUpContextMenu_withEvent_forView(NSMenu* menu, NSEvent* event, NSView* view) {
    if (menu && event && view) {
        const NSPoint location = view->convertPoint_fromView(event->locationInWindow(), nullptr);
        send<bool>(menu, "popUpMenuPositioningItem:atLocation:inView:"_sel, nullptr, location, view);
    }
}

} // namespace zr
