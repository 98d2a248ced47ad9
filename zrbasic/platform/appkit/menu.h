#pragma once

#include <zrbasic/platform/appkit/menu_item.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/geometry.h>

#include <vector>

namespace zr {

class NSEvent;
class NSPopUpButton;
class NSView;

/// Lines that a user can choose from. It keeps its items, and an item lies in one menu at a time.
///
/// Items are chosen in the menu on the screen, by their keys, or by `performActionForItemAtIndex`. What is shown is the
/// menu as it is when it opens: changes show when it opens again, but what was taken out meanwhile cannot be chosen.
/// Main thread only.
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
    /// disabled or hidden, and what lies under them, are passed over. Nobody is asked for an update before.
    ///
    /// A lower-case letter stands for its key alone, a capital one for the key with shift; other characters are taken
    /// as they were typed. Command, option and control must be held as the item says and, with a key that types no
    /// character, shift as well.
    virtual bool performKeyEquivalent(NSEvent* event);

    // On the screen

    /// Shows the menu until the user has chosen from it or has dismissed it; whether anything was chosen, which is
    /// carried out then. Events go on meanwhile, and what they raise closes the menu and passes through.
    ///
    /// The upper left corner lies at `location`, in the coordinates of `view`, which must be in a window that is shown,
    /// or of the screen for null; that of `item` instead, when it is one of the menu. The menu and its submenus are
    /// updated before. False without a toolkit, and for a menu without items to be seen.
    virtual bool popUpMenuPositioningItem_atLocation_inView(NSMenuItem* item, NSPoint location, NSView* view);
    /// Shows the menu where the event was, in the window of `view`. Null for any of them does nothing.
    static void popUpContextMenu_withEvent_forView(NSMenu* menu, NSEvent* event, NSView* view);
    /// Called before the menu is shown, not before its keys are looked for. Tells the delegate `menuNeedsUpdate:`, as
    /// far as it responds; then each item with an action is enabled as `validateMenuItem:` says, where whom the action
    /// would go to responds to that, and left alone otherwise.
    virtual void update();
    /// Not kept; null at first.
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }
    /// The least that it is wide on the screen, in points; 0 at first, and for what is negative or no finite number.
    [[nodiscard]] double minimumWidth() const { return m_minimumWidth; }
    void setMinimumWidth(double width);

  private:
    friend class NSMenuItem;
    friend class NSPopUpButton;

    void updateTree();
    void choose(const Ref<NSMenuItem>& item);
    /// Its items, or the title of one, are others.
    void changed();

    Ref<NSString> m_title;
    std::vector<Ref<NSMenuItem>> m_items;
    /// Which keeps this menu.
    NSMenuItem* m_supermenuItem = nullptr;
    Weak<NSObject> m_delegate;
    /// Which chooses, for what is chosen from its menu.
    Weak<NSPopUpButton> m_popUpButton;
    double m_minimumWidth = 0;
};

} // namespace zr
