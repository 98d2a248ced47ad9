#pragma once

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSMenu;

/// One line of a menu: what it says, the key that stands for it, and what choosing it sends. Main thread only.
class ZR_EXPORT NSMenuItem : public NSObject {
    ZR_DECLARE_CLASS(NSMenuItem, NSObject)
  public:
    NSMenuItem();
    ~NSMenuItem() override;

    /// A line that only divides others. A new one every time.
    [[nodiscard]] static Ref<NSMenuItem> separatorItem();

    /// Null texts are empty; so is the key equivalent of an item that no key stands for. The empty selector sends
    /// nothing.
    virtual id initWithTitle_action_keyEquivalent(NSString* title, SEL action, NSString* keyEquivalent);

    /// Never null: empty at first and for null. Copied when set, as is the key equivalent.
    [[nodiscard]] Ref<NSString> title() const { return m_title; }
    virtual void setTitle(NSString* title);
    [[nodiscard]] SEL action() const { return m_action; }
    void setAction(SEL action) { m_action = action; }
    /// Not kept; null, at first, sends the action along the responders of the key window.
    [[nodiscard]] id target() const { return m_target.lock(); }
    void setTarget(NSObject* target) { m_target = Weak<NSObject>(target); }

    /// One character; a capital letter stands for the key with shift. Never null.
    [[nodiscard]] Ref<NSString> keyEquivalent() const { return m_keyEquivalent; }
    void setKeyEquivalent(NSString* keyEquivalent);
    /// What is held down with it, a sum of `NSEventModifierFlags`; the command key at first.
    [[nodiscard]] NSUInteger keyEquivalentModifierMask() const { return m_keyEquivalentModifierMask; }
    void setKeyEquivalentModifierMask(NSUInteger mask) { m_keyEquivalentModifierMask = mask; }

    /// True at first.
    [[nodiscard]] bool isEnabled() const { return m_isEnabled; }
    void setEnabled(bool enabled) { m_isEnabled = enabled; }
    [[nodiscard]] bool isHidden() const { return m_isHidden; }
    void setHidden(bool hidden) { m_isHidden = hidden; }
    /// 1 for an item with a tick, 0, as at first, for one without, -1 for something between.
    [[nodiscard]] NSInteger state() const { return m_state; }
    void setState(NSInteger state);
    [[nodiscard]] NSInteger tag() const { return m_tag; }
    void setTag(NSInteger tag) { m_tag = tag; }
    /// Whatever the item is for. Kept; null at first.
    [[nodiscard]] id representedObject() const { return m_representedObject; }
    void setRepresentedObject(NSObject* object) { m_representedObject = id(object); }
    [[nodiscard]] bool isSeparatorItem() const { return m_isSeparator; }

    /// The menu that opens beside the item; null at first. Kept. A menu that opens beside another item, or that the
    /// item lies in itself, raises `NSInvalidArgumentException`.
    [[nodiscard]] Ref<NSMenu> submenu() const;
    void setSubmenu(NSMenu* submenu);
    [[nodiscard]] bool hasSubmenu() const { return m_submenu != nullptr; }
    /// The menu that it lies in; null when it lies in none.
    [[nodiscard]] Ref<NSMenu> menu() const;

  private:
    friend class NSMenu;

    Ref<NSString> m_title;
    Ref<NSString> m_keyEquivalent;
    NSUInteger m_keyEquivalentModifierMask;
    SEL m_action;
    Weak<NSObject> m_target;
    NSInteger m_state = 0;
    NSInteger m_tag = 0;
    id m_representedObject;
    Ref<NSMenu> m_submenu;
    Weak<NSMenu> m_menu;
    bool m_isEnabled = true;
    bool m_isHidden = false;
    bool m_isSeparator = false;
};

} // namespace zr
