#pragma once

#include <zrbasic/platform/appkit/tab_view_item.h>

#include <vector>

namespace zr {

/// Shows one of several views, chosen by the tabs above it.
///
/// The first item that is added is selected, and some item is as long as there are any. The selected item's view is
/// the subview, as large as the content rectangle; the others are in no view. A click on a tab selects its item, and so
/// do the arrow keys to the left and right of the selected one.
///
/// The delegate, which is not kept, may answer `tabView:shouldSelectTabViewItem:` with false to refuse, and is told by
/// `tabView:willSelectTabViewItem:`, `tabView:didSelectTabViewItem:`, and `tabViewDidChangeNumberOfTabViewItems:`.
/// Main thread only.
class ZR_EXPORT NSTabView : public NSView {
    ZR_DECLARE_CLASS(NSTabView, NSView)
  public:
    NSTabView();
    ~NSTabView() override;

    /// From the leftmost on; a list of the moment. Never null.
    [[nodiscard]] Ref<NSArray> tabViewItems() const;
    [[nodiscard]] NSInteger numberOfTabViewItems() const { return static_cast<NSInteger>(m_items.size()); }
    /// Raises `NSRangeException` for an index of none.
    [[nodiscard]] Ref<NSTabViewItem> tabViewItemAtIndex(NSInteger index) const;
    /// `NSNotFound` for null and for one that is not here.
    [[nodiscard]] NSInteger indexOfTabViewItem(NSTabViewItem* item) const;
    /// Of the first item with an equal identifier; `NSNotFound` when there is none, and for null.
    [[nodiscard]] NSInteger indexOfTabViewItemWithIdentifier(NSObject* identifier) const;

    /// Puts it behind the others. An item that is in another tab view leaves that. Null, and one that is here, do
    /// nothing.
    virtual void addTabViewItem(NSTabViewItem* item);
    /// Raises `NSRangeException` for an index beyond the items.
    virtual void insertTabViewItem_atIndex(NSTabViewItem* item, NSInteger index);
    /// In place of a selected one, the one behind it is selected, or the one before it where it was the last. Null, and
    /// one that is not here, do nothing.
    virtual void removeTabViewItem(NSTabViewItem* item);

    /// Null when there are no items.
    [[nodiscard]] Ref<NSTabViewItem> selectedTabViewItem() const { return m_selected; }
    /// Null, one that is not here, and the selected one do nothing.
    virtual void selectTabViewItem(NSTabViewItem* item);
    /// Raises `NSRangeException` for an index of none.
    virtual void selectTabViewItemAtIndex(NSInteger index);
    /// Raises `NSRangeException` when there is none with that identifier.
    virtual void selectTabViewItemWithIdentifier(NSObject* identifier);
    /// At the ends, and without items, these do nothing. The sender does not matter.
    void selectFirstTabViewItem(NSObject* sender);
    void selectLastTabViewItem(NSObject* sender);
    void selectNextTabViewItem(NSObject* sender);
    void selectPreviousTabViewItem(NSObject* sender);

    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

    /// Where the selected view lies: the bounds below the tabs. Its height is never below 0.
    [[nodiscard]] NSRect contentRect() const;
    /// Of the tab; the zero rectangle for an index of none. All tabs are equally narrowed where they do not fit.
    [[nodiscard]] NSRect rectOfTabAtIndex(NSInteger index) const;
    /// Null when the point, in the receiver's coordinates, is over no tab.
    [[nodiscard]] Ref<NSTabViewItem> tabViewItemAtPoint(NSPoint point) const;

    void setFrameSize(NSSize size) override;
    void setBoundsOrigin(NSPoint origin) override;
    /// Whether there are items.
    [[nodiscard]] bool acceptsFirstResponder() const override;
    bool becomeFirstResponder() override;
    bool resignFirstResponder() override;
    void mouseDown(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    void keyDown(NSEvent* event) override;
    void drawRect(NSRect dirtyRect) override;

  private:
    friend class NSTabViewItem;

    void setSelected(NSTabViewItem* item, bool asks);
    /// Puts the selected item's view into the content rectangle and takes out the one before.
    void showSelection();
    void selectBeside(NSInteger step);
    void tellOfNumber();

    std::vector<Ref<NSTabViewItem>> m_items;
    Ref<NSTabViewItem> m_selected;
    Ref<NSView> m_shown;
    /// Whose tab the mouse was pressed on.
    Ref<NSTabViewItem> m_pressed;
    Weak<NSObject> m_delegate;
};

} // namespace zr
