#pragma once

#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/menu.h>

namespace zr {

/// A button that opens a menu, when it is pressed and by the space, return, up and down arrow keys.
///
/// There are two kinds. One shows the chosen item: choosing from the menu, which opens over the button, selects the
/// item, and the selected one alone has a tick. A pull-down only sends: its first item is hidden and has the button's
/// title, the menu opens below with the others, and none of them is ever selected.
///
/// What was chosen sends its own action or, when it has none, the button's. The items' keys work in the window.
/// Main thread only.
class ZR_EXPORT NSPopUpButton : public NSButton {
    ZR_DECLARE_CLASS(NSPopUpButton, NSButton)
  public:
    NSPopUpButton();
    ~NSPopUpButton() override;

    [[nodiscard]] static Class* cellClass();
    /// No pull-down, with an empty menu.
    id initWithFrame(NSRect frame) override;
    virtual id initWithFrame_pullsDown(NSRect frame, bool pullsDown);

    [[nodiscard]] bool pullsDown() const { return m_pullsDown; }
    /// What was selected is forgotten.
    void setPullsDown(bool pullsDown);
    /// Never null. Kept.
    [[nodiscard]] Ref<NSMenu> menu() const { return m_items; }
    /// Selects its first item. Null is a new menu without items; one that another button has raises
    /// `NSInvalidArgumentException`.
    void setMenu(NSMenu* menu);

    // Items. Those that are named by null or by a title that is not there are none.

    /// At the end. An item of that title that is there is removed before, so that a title tells one item from the
    /// others; null is the empty title. The first item of all becomes selected.
    void addItemWithTitle(NSString* title);
    /// What is no text is skipped.
    void addItemsWithTitles(NSArray* titles);
    /// Raises `NSRangeException` for a place that is not there once an item of that title is removed; the end is one.
    void insertItemWithTitle_atIndex(NSString* title, NSInteger index);
    void removeItemWithTitle(NSString* title);
    /// When the selected item is removed, the first one becomes selected.
    void removeItemAtIndex(NSInteger index);
    void removeAllItems();

    [[nodiscard]] NSInteger numberOfItems() const;
    [[nodiscard]] Ref<NSArray> itemArray() const;
    /// Null for a place that is not there.
    [[nodiscard]] Ref<NSMenuItem> itemAtIndex(NSInteger index) const;
    [[nodiscard]] Ref<NSArray> itemTitles() const;
    [[nodiscard]] Ref<NSString> itemTitleAtIndex(NSInteger index) const;
    [[nodiscard]] Ref<NSMenuItem> itemWithTitle(NSString* title) const;
    [[nodiscard]] Ref<NSMenuItem> lastItem() const;
    /// -1 when there is none.
    [[nodiscard]] NSInteger indexOfItem(NSMenuItem* item) const;
    [[nodiscard]] NSInteger indexOfItemWithTitle(NSString* title) const;
    [[nodiscard]] NSInteger indexOfItemWithTag(NSInteger tag) const;

    // The selection: no action is sent by any of these. In a pull-down there is none.

    /// Null, as an item, a place or a title that is not there, selects nothing: the button shows no title.
    void selectItem(NSMenuItem* item);
    void selectItemAtIndex(NSInteger index);
    void selectItemWithTitle(NSString* title);
    /// Whether there was one; nothing changes otherwise.
    bool selectItemWithTag(NSInteger tag);
    [[nodiscard]] Ref<NSMenuItem> selectedItem() const;
    /// -1 for none.
    [[nodiscard]] NSInteger indexOfSelectedItem() const;
    /// -1 for none.
    [[nodiscard]] NSInteger selectedTag() const;
    /// Null when nothing is selected.
    [[nodiscard]] Ref<NSString> titleOfSelectedItem() const;
    /// Selects the item of that title, which is added when it is not there; of a pull-down, names its first item so.
    /// `title` gives what shows. Null is the empty title.
    void setTitle(NSString* title);

    /// Opens the menu and sees to what was chosen, unless the button is disabled or in no window that is shown. The
    /// action may let go of the button.
    void performClick(NSObject* sender) override;
    void mouseDown(NSEvent* event) override;
    void keyDown(NSEvent* event) override;
    /// Asks the menu as well, unless the button is disabled or hidden.
    bool performKeyEquivalent(NSEvent* event) override;
    void setCell(NSCell* cell) override;

  private:
    friend class NSMenu;

    void itemsChanged();
    void itemWasChosen(const Ref<NSMenuItem>& item);
    void showSelection();

    Ref<NSMenu> m_items;
    Weak<NSMenuItem> m_selectedItem;
    /// The one with the tick, and a pull-down's hidden one.
    Weak<NSMenuItem> m_markedItem;
    Weak<NSMenuItem> m_titleItem;
    bool m_selectsNothing = false;
    bool m_pullsDown = false;
    bool m_isOpen = false;
};

} // namespace zr
