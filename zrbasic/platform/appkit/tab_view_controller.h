#pragma once

#include <zrbasic/platform/appkit/tab_view.h>

namespace zr {

/// Shows the views of other controllers behind the tabs of a tab view, which is its view.
///
/// The items are those of the tab view; the operations here only reach through. Main thread only.
class ZR_EXPORT NSTabViewController : public NSViewController {
    ZR_DECLARE_CLASS(NSTabViewController, NSViewController)
  public:
    NSTabViewController();
    ~NSTabViewController() override;

    /// Made when it is first asked for. Never null.
    [[nodiscard]] Ref<NSTabView> tabView();
    /// The tab view becomes the view.
    void loadView() override;

    /// As those of the tab view: see tab_view.h.
    [[nodiscard]] Ref<NSArray> tabViewItems();
    virtual void addTabViewItem(NSTabViewItem* item);
    virtual void insertTabViewItem_atIndex(NSTabViewItem* item, NSInteger index);
    virtual void removeTabViewItem(NSTabViewItem* item);
    /// Null when there is none.
    [[nodiscard]] Ref<NSTabViewItem> tabViewItemForViewController(NSViewController* controller);
    /// -1 when nothing is selected.
    [[nodiscard]] NSInteger selectedTabViewItemIndex();
    /// Raises `NSRangeException` for an index of none.
    void setSelectedTabViewItemIndex(NSInteger index);

  private:
    Ref<NSTabView> m_tabView;
};

} // namespace zr
