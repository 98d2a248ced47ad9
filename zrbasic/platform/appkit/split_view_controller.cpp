#include <zrbasic/platform/appkit/split_view_controller.h>

#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <string>

namespace zr {

ZR_DEFINE_CLASS(NSSplitViewItem) {
    is.classMethod<&NSSplitViewItem::splitViewItemWithViewController>("splitViewItemWithViewController:");
    is.method<&NSSplitViewItem::viewController>("viewController");
    is.method<&NSSplitViewItem::setViewController>("setViewController:");
    is.method<&NSSplitViewItem::minimumThickness>("minimumThickness");
    is.method<&NSSplitViewItem::setMinimumThickness>("setMinimumThickness:");
    is.method<&NSSplitViewItem::maximumThickness>("maximumThickness");
    is.method<&NSSplitViewItem::setMaximumThickness>("setMaximumThickness:");
    is.method<&NSSplitViewItem::isCollapsed>("isCollapsed");
    is.method<&NSSplitViewItem::setCollapsed>("setCollapsed:");
}

NSSplitViewItem::NSSplitViewItem() = default;
NSSplitViewItem::~NSSplitViewItem() = default;

Ref<NSSplitViewItem> NSSplitViewItem::splitViewItemWithViewController(NSViewController* controller) {
    Ref<NSSplitViewItem> item = make<NSSplitViewItem>();
    item->setViewController(controller);
    return item;
}

void NSSplitViewItem::setViewController(NSViewController* controller) {
    if (m_viewController == controller) {
        return;
    }
    const Ref<NSViewController> before = m_viewController;
    m_viewController = Ref<NSViewController>(controller);
    const Ref<NSSplitViewController> owner = m_owner.lock();
    if (!owner) {
        return;
    }
    if (before && before->isViewLoaded()) {
        owner->takeOut(before->view());
    }
    owner->arrange();
}

void NSSplitViewItem::setMinimumThickness(double thickness) {
    m_minimumThickness = thickness;
    if (const Ref<NSSplitViewController> owner = m_owner.lock()) {
        owner->arrange();
    }
}

void NSSplitViewItem::setMaximumThickness(double thickness) {
    m_maximumThickness = thickness;
    if (const Ref<NSSplitViewController> owner = m_owner.lock()) {
        owner->arrange();
    }
}

void NSSplitViewItem::setCollapsed(bool collapsed) {
    m_isCollapsed = collapsed;
    const Ref<NSSplitViewController> owner = m_owner.lock();
    const Ref<NSView> view = owner ? owner->placedView(*this) : nullptr;
    if (view) {
        send<void>(view, "setHidden:"_sel, collapsed);
    }
}

ZR_DEFINE_CLASS(NSSplitViewController) {
    is.method<&NSSplitViewController::splitView>("splitView");
    is.method<&NSSplitViewController::splitViewItems>("splitViewItems");
    is.method<&NSSplitViewController::addSplitViewItem>("addSplitViewItem:");
    is.method<&NSSplitViewController::insertSplitViewItem_atIndex>("insertSplitViewItem:atIndex:");
    is.method<&NSSplitViewController::removeSplitViewItem>("removeSplitViewItem:");
    is.method<&NSSplitViewController::splitViewItemForViewController>("splitViewItemForViewController:");
}

NSSplitViewController::NSSplitViewController() = default;
NSSplitViewController::~NSSplitViewController() = default;

Ref<NSSplitView> NSSplitViewController::splitView() {
    if (!m_splitView) {
        m_splitView = make<NSSplitView>();
        m_splitView->setVertical(true);
    }
    return m_splitView;
}

void NSSplitViewController::loadView() {
    setView(splitView());
    arrange();
}

Ref<NSArray> NSSplitViewController::splitViewItems() const {
    return NSArray::fromElements(std::vector<id>(m_items.begin(), m_items.end()));
}

void NSSplitViewController::addSplitViewItem(NSSplitViewItem* item) {
    send<void>(this, "insertSplitViewItem:atIndex:"_sel, item, static_cast<NSInteger>(m_items.size()));
}

void NSSplitViewController::insertSplitViewItem_atIndex(NSSplitViewItem* item, NSInteger index) {
    if (index < 0 || index > static_cast<NSInteger>(m_items.size())) {
        NSException::raise(NSRangeException, "-[NSSplitViewController insertSplitViewItem:atIndex:]: index " +
                                                 std::to_string(index) + " beyond " + std::to_string(m_items.size()) +
                                                 " items");
    }
    if (!item || item->m_owner.lock() == this) {
        return;
    }
    const Ref<NSSplitViewItem> kept(item);
    if (const Ref<NSSplitViewController> before = item->m_owner.lock()) {
        send<void>(before, "removeSplitViewItem:"_sel, item);
    }
    m_items.insert(m_items.begin() + index, kept);
    item->m_owner = Weak<NSSplitViewController>(this);
    arrange();
}

void NSSplitViewController::removeSplitViewItem(NSSplitViewItem* item) {
    const auto found = std::find(m_items.begin(), m_items.end(), item);
    if (!item || found == m_items.end()) {
        return;
    }
    const Ref<NSSplitViewItem> kept(item);
    m_items.erase(found);
    item->m_owner = nullptr;
    const Ref<NSViewController> controller = item->viewController();
    if (controller && controller->isViewLoaded()) {
        takeOut(controller->view());
    }
}

void NSSplitViewController::takeOut(NSView* view) {
    if (m_splitView && view->superview() == m_splitView) {
        const Ref<NSView> kept(view);
        view->removeFromSuperview();
        m_splitView->setThicknessLimits({}, view);
    }
}

Ref<NSView> NSSplitViewController::placedView(const NSSplitViewItem& item) {
    const Ref<NSViewController> controller = item.viewController();
    if (!isViewLoaded() || !controller || !controller->isViewLoaded()) {
        return nullptr;
    }
    Ref<NSView> view = controller->view();
    return view->superview() == m_splitView ? view : nullptr;
}

Ref<NSSplitViewItem> NSSplitViewController::splitViewItemForViewController(NSViewController* controller) const {
    for (const Ref<NSSplitViewItem>& item : m_items) {
        if (controller && item->viewController() == controller) {
            return item;
        }
    }
    return nullptr;
}

void NSSplitViewController::arrange() {
    if (!isViewLoaded()) {
        return;
    }
    const Ref<NSSplitView> split = splitView();
    // A copy, because a controller that makes its view may run anybody's code.
    const std::vector<Ref<NSSplitViewItem>> items = m_items;
    Ref<NSView> before;
    for (const Ref<NSSplitViewItem>& item : items) {
        const Ref<NSViewController> controller = item->viewController();
        const Ref<NSView> view = controller ? send<Ref<NSView>>(controller, "view"_sel) : nullptr;
        if (!view || item->m_owner.lock() != this) {
            continue;
        }
        split->setThicknessLimits({item->m_minimumThickness, item->m_maximumThickness}, view);
        if (view->superview() != split) {
            if (item->m_isCollapsed) {
                send<void>(view, "setHidden:"_sel, true);
            }
            split->addSubview_positioned_relativeTo(view, before ? NSWindowAbove : NSWindowBelow, before);
        }
        before = view;
    }
}

} // namespace zr
