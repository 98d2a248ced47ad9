#include <zrbasic/platform/appkit/tab_view_controller.h>

#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_DEFINE_CLASS(NSTabViewController) {
    is.method<&NSTabViewController::tabView>("tabView");
    is.method<&NSTabViewController::tabViewItems>("tabViewItems");
    is.method<&NSTabViewController::addTabViewItem>("addTabViewItem:");
    is.method<&NSTabViewController::insertTabViewItem_atIndex>("insertTabViewItem:atIndex:");
    is.method<&NSTabViewController::removeTabViewItem>("removeTabViewItem:");
    is.method<&NSTabViewController::tabViewItemForViewController>("tabViewItemForViewController:");
    is.method<&NSTabViewController::selectedTabViewItemIndex>("selectedTabViewItemIndex");
    is.method<&NSTabViewController::setSelectedTabViewItemIndex>("setSelectedTabViewItemIndex:");
}

NSTabViewController::NSTabViewController() = default;
NSTabViewController::~NSTabViewController() = default;

Ref<NSTabView> NSTabViewController::tabView() {
    if (!m_tabView) {
        m_tabView = make<NSTabView>();
    }
    return m_tabView;
}

void NSTabViewController::loadView() {
    setView(tabView());
}

Ref<NSArray> NSTabViewController::tabViewItems() {
    return tabView()->tabViewItems();
}

void NSTabViewController::addTabViewItem(NSTabViewItem* item) {
    send<void>(this, "insertTabViewItem:atIndex:"_sel, item, tabView()->numberOfTabViewItems());
}

void NSTabViewController::insertTabViewItem_atIndex(NSTabViewItem* item, NSInteger index) {
    send<void>(tabView(), "insertTabViewItem:atIndex:"_sel, item, index);
}

void NSTabViewController::removeTabViewItem(NSTabViewItem* item) {
    send<void>(tabView(), "removeTabViewItem:"_sel, item);
}

Ref<NSTabViewItem> NSTabViewController::tabViewItemForViewController(NSViewController* controller) {
    const Ref<NSArray> items = tabViewItems();
    for (const id& element : items->elements()) {
        auto* const item = static_cast<NSTabViewItem*>(element.get());
        if (controller && item->viewController() == controller) {
            return Ref<NSTabViewItem>(item);
        }
    }
    return nullptr;
}

NSInteger NSTabViewController::selectedTabViewItemIndex() {
    const Ref<NSTabView> tabs = tabView();
    const Ref<NSTabViewItem> selected = tabs->selectedTabViewItem();
    return selected ? tabs->indexOfTabViewItem(selected) : -1;
}

void NSTabViewController::setSelectedTabViewItemIndex(NSInteger index) {
    send<void>(tabView(), "selectTabViewItemAtIndex:"_sel, index);
}

} // namespace zr
