#pragma once

#include <zrbasic/platform/appkit/split_view.h>
#include <zrbasic/platform/appkit/view_controller.h>

namespace zr {

class NSSplitViewController;

/// Stands for a thickness without a limit.
inline constexpr double NSSplitViewItemUnspecifiedDimension = -1;

/// A view controller's place in a split view. Main thread only.
class ZR_EXPORT NSSplitViewItem : public NSObject {
    ZR_DECLARE_CLASS(NSSplitViewItem, NSObject)
  public:
    NSSplitViewItem();
    ~NSSplitViewItem() override;

    /// Null is an item that shows nothing.
    [[nodiscard]] static Ref<NSSplitViewItem> splitViewItemWithViewController(NSViewController* controller);

    /// Kept; its view shows in the split view.
    [[nodiscard]] Ref<NSViewController> viewController() const { return m_viewController; }
    void setViewController(NSViewController* controller);
    /// In points; `NSSplitViewItemUnspecifiedDimension` at first. What is below 0 or no finite number sets no limit;
    /// of two that contradict each other the minimum holds.
    [[nodiscard]] double minimumThickness() const { return m_minimumThickness; }
    void setMinimumThickness(double thickness);
    [[nodiscard]] double maximumThickness() const { return m_maximumThickness; }
    void setMaximumThickness(double thickness);
    /// Whether its view is hidden and takes no room; false at first.
    [[nodiscard]] bool isCollapsed() const { return m_isCollapsed; }
    void setCollapsed(bool collapsed);

  private:
    friend class NSSplitViewController;

    Ref<NSViewController> m_viewController;
    double m_minimumThickness = NSSplitViewItemUnspecifiedDimension;
    double m_maximumThickness = NSSplitViewItemUnspecifiedDimension;
    bool m_isCollapsed = false;
    Weak<NSSplitViewController> m_owner;
};

/// Shows the views of other controllers side by side in a split view, which is its view.
///
///     auto desk = make<NSSplitViewController>();
///     addViewController_minThickness(desk, quotes, 200);
///     addViewController(desk, chart);
///     window->setContentView(desk->view());
///
/// The other controllers' views are made when the split view is. Main thread only.
class ZR_EXPORT NSSplitViewController : public NSViewController {
    ZR_DECLARE_CLASS(NSSplitViewController, NSViewController)
  public:
    NSSplitViewController();
    ~NSSplitViewController() override;

    /// Made when it is first asked for, with upright lines. Never null.
    [[nodiscard]] Ref<NSSplitView> splitView();
    /// The split view becomes the view.
    void loadView() override;

    /// From the first on; a list of the moment. Never null.
    [[nodiscard]] Ref<NSArray> splitViewItems() const;
    /// Puts it last. An item that is in another controller leaves that. Null, and one that is here, do nothing.
    virtual void addSplitViewItem(NSSplitViewItem* item);
    /// Raises `NSRangeException` for an index beyond the list.
    virtual void insertSplitViewItem_atIndex(NSSplitViewItem* item, NSInteger index);
    /// Null, and one that is not here, do nothing.
    virtual void removeSplitViewItem(NSSplitViewItem* item);
    /// Null when there is none.
    [[nodiscard]] Ref<NSSplitViewItem> splitViewItemForViewController(NSViewController* controller) const;

  private:
    friend class NSSplitViewItem;

    /// Puts the items' views into the split view, once that shows.
    void arrange();
    void takeOut(NSView* view);
    /// Null unless it is in the split view.
    [[nodiscard]] Ref<NSView> placedView(const NSSplitViewItem& item);

    Ref<NSSplitView> m_splitView;
    std::vector<Ref<NSSplitViewItem>> m_items;
};

} // namespace zr
