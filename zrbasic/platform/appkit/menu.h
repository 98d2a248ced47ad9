#pragma once

#include <zrbasic/platform/appkit/menu_item.h>
#include <zrbasic/platform/foundation/array.h>

#include <vector>

namespace zr {

class NSEvent;

/// Lines that a user can choose from. It keeps its items, and an item lies in one menu at a time.
///
/// Items are chosen by their keys or by `performActionForItemAtIndex`; no toolkit shows a menu yet. Main thread only.
class ZR_EXPORT NSMenu : public NSObject {
    ZR_DECLARE_CLASS(NSMenu, NSObject)
  public:
    NSMenu();
    ~NSMenu() override;

    /// Null is the empty title.
    virtual id initWithTitle(NSString* title);
    /// Never null. Copied when set.
    [[nodiscard]] Ref<NSString> title() const { return m_title; }
    void setTitle(NSString* title);

    /// At the end. Null does nothing; an item of another menu, and one whose submenus lead back here, raise
    /// `NSInvalidArgumentException`.
    void addItem(NSMenuItem* item);
    /// Raises `NSRangeException` for a place that is not there; the end is one.
    void insertItem_atIndex(NSMenuItem* item, NSInteger index);
    /// A new item at the end, which it returns.
    Ref<NSMenuItem> addItemWithTitle_action_keyEquivalent(NSString* title, SEL action, NSString* keyEquivalent);
    /// Null and an item that is not there do nothing.
    void removeItem(NSMenuItem* item);
    void removeAllItems();

    [[nodiscard]] Ref<NSArray> itemArray() const;
    [[nodiscard]] NSInteger numberOfItems() const { return static_cast<NSInteger>(m_items.size()); }
    /// Null for a place that is not there.
    [[nodiscard]] Ref<NSMenuItem> itemAtIndex(NSInteger index) const;
    /// The first one of exactly that title, submenus aside; null when there is none.
    [[nodiscard]] Ref<NSMenuItem> itemWithTitle(NSString* title) const;
    [[nodiscard]] Ref<NSMenuItem> itemWithTag(NSInteger tag) const;
    /// -1 when it is not there.
    [[nodiscard]] NSInteger indexOfItem(NSMenuItem* item) const;
    /// The menu beside whose item this one opens; null when there is none.
    [[nodiscard]] Ref<NSMenu> supermenu() const;

    /// Sends the item's action to its target, with the item as the argument. Nothing happens for a place that is not
    /// there, and for an item that is disabled.
    virtual void performActionForItemAtIndex(NSInteger index);
    /// Chooses the first item, submenus included, that the key press stands for; whether there was one. Items that are
    /// disabled or hidden, and what lies under them, are passed over.
    ///
    /// A lower-case letter stands for its key alone, a capital one for the key with shift; other characters are taken
    /// as they were typed. Command, option and control must be held as the item says.
    virtual bool performKeyEquivalent(NSEvent* event);

  private:
    friend class NSMenuItem;

    Ref<NSString> m_title;
    std::vector<Ref<NSMenuItem>> m_items;
    /// Which keeps this menu.
    NSMenuItem* m_supermenuItem = nullptr;
};

} // namespace zr
