#include <zrbasic/platform/appkit/menu_item.h>

#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/menu.h>

#include <algorithm>

namespace zr {
namespace {

Ref<NSString> copyOf(NSString* text) {
    return text ? Ref<NSString>(cast<NSString>(text->copy())) : ""_ns;
}

} // namespace

ZR_DEFINE_CLASS(NSMenuItem) {
    is.classMethod<&NSMenuItem::separatorItem>("separatorItem");
    is.method<&NSMenuItem::initWithTitle_action_keyEquivalent>("initWithTitle:action:keyEquivalent:");
    is.method<&NSMenuItem::title>("title");
    is.method<&NSMenuItem::setTitle>("setTitle:");
    is.method<&NSMenuItem::action>("action");
    is.method<&NSMenuItem::setAction>("setAction:");
    is.method<&NSMenuItem::target>("target");
    is.method<&NSMenuItem::setTarget>("setTarget:");
    is.method<&NSMenuItem::keyEquivalent>("keyEquivalent");
    is.method<&NSMenuItem::setKeyEquivalent>("setKeyEquivalent:");
    is.method<&NSMenuItem::keyEquivalentModifierMask>("keyEquivalentModifierMask");
    is.method<&NSMenuItem::setKeyEquivalentModifierMask>("setKeyEquivalentModifierMask:");
    is.method<&NSMenuItem::isEnabled>("isEnabled");
    is.method<&NSMenuItem::setEnabled>("setEnabled:");
    is.method<&NSMenuItem::isHidden>("isHidden");
    is.method<&NSMenuItem::setHidden>("setHidden:");
    is.method<&NSMenuItem::state>("state");
    is.method<&NSMenuItem::setState>("setState:");
    is.method<&NSMenuItem::tag>("tag");
    is.method<&NSMenuItem::setTag>("setTag:");
    is.method<&NSMenuItem::representedObject>("representedObject");
    is.method<&NSMenuItem::setRepresentedObject>("setRepresentedObject:");
    is.method<&NSMenuItem::isSeparatorItem>("isSeparatorItem");
    is.method<&NSMenuItem::submenu>("submenu");
    is.method<&NSMenuItem::setSubmenu>("setSubmenu:");
    is.method<&NSMenuItem::hasSubmenu>("hasSubmenu");
    is.method<&NSMenuItem::menu>("menu");
}

NSMenuItem::NSMenuItem()
    : m_title(""_ns), m_keyEquivalent(""_ns), m_keyEquivalentModifierMask(NSEventModifierFlagCommand) {}

NSMenuItem::~NSMenuItem() {
    if (m_submenu) {
        m_submenu->m_supermenuItem = nullptr;
    }
}

Ref<NSMenuItem> NSMenuItem::separatorItem() {
    Ref<NSMenuItem> item = make<NSMenuItem>();
    item->m_isSeparator = true;
    item->m_isEnabled = false;
    return item;
}

id NSMenuItem::initWithTitle_action_keyEquivalent(NSString* title, SEL action, NSString* keyEquivalent) {
    m_title = copyOf(title);
    m_action = action;
    m_keyEquivalent = copyOf(keyEquivalent);
    return id(this);
}

void NSMenuItem::setTitle(NSString* title) {
    m_title = copyOf(title);
    if (const Ref<NSMenu> menu = this->menu()) {
        menu->changed();
    }
}

void NSMenuItem::setKeyEquivalent(NSString* keyEquivalent) {
    m_keyEquivalent = copyOf(keyEquivalent);
}

void NSMenuItem::setState(NSInteger state) {
    m_state = std::clamp(state, NSInteger{-1}, NSInteger{1});
}

Ref<NSMenu> NSMenuItem::submenu() const {
    return m_submenu;
}

void NSMenuItem::setSubmenu(NSMenu* submenu) {
    if (submenu == m_submenu) {
        return;
    }
    if (submenu && submenu->m_supermenuItem) {
        NSException::raise(NSInvalidArgumentException, "the menu opens beside another item");
    }
    // A menu inside of itself would keep itself, and never end when it is searched.
    for (Ref<NSMenu> around = menu(); around; around = around->supermenu()) {
        if (around == submenu) {
            NSException::raise(NSInvalidArgumentException, "the item lies in the menu");
        }
    }
    if (m_submenu) {
        m_submenu->m_supermenuItem = nullptr;
    }
    m_submenu = Ref<NSMenu>(submenu);
    if (submenu) {
        submenu->m_supermenuItem = this;
    }
}

Ref<NSMenu> NSMenuItem::menu() const {
    return m_menu.lock();
}

} // namespace zr
