#include <zrbasic/platform/appkit/tab_view_item.h>

#include <zrbasic/platform/appkit/tab_view.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_DEFINE_CLASS(NSTabViewItem) {
    is.method<&NSTabViewItem::initWithIdentifier>("initWithIdentifier:");
    is.classMethod<&NSTabViewItem::tabViewItemWithViewController>("tabViewItemWithViewController:");
    is.method<&NSTabViewItem::identifier>("identifier");
    is.method<&NSTabViewItem::setIdentifier>("setIdentifier:");
    is.method<&NSTabViewItem::label>("label");
    is.method<&NSTabViewItem::setLabel>("setLabel:");
    is.method<&NSTabViewItem::view>("view");
    is.method<&NSTabViewItem::setView>("setView:");
    is.method<&NSTabViewItem::viewController>("viewController");
    is.method<&NSTabViewItem::setViewController>("setViewController:");
    is.method<&NSTabViewItem::tabView>("tabView");
}

NSTabViewItem::NSTabViewItem() : m_label(""_ns) {}
NSTabViewItem::~NSTabViewItem() = default;

id NSTabViewItem::initWithIdentifier(NSObject* identifier) {
    setIdentifier(identifier);
    return id(this);
}

Ref<NSTabViewItem> NSTabViewItem::tabViewItemWithViewController(NSViewController* controller) {
    Ref<NSTabViewItem> item = make<NSTabViewItem>();
    item->setViewController(controller);
    if (controller) {
        item->setLabel(controller->title());
    }
    return item;
}

void NSTabViewItem::setLabel(NSString* label) {
    m_label = label ? Ref<NSString>(cast<NSString>(label->copy())) : ""_ns;
    if (const Ref<NSTabView> tabs = tabView()) {
        send<void>(tabs, "setNeedsDisplay:"_sel, true);
    }
}

Ref<NSView> NSTabViewItem::view() {
    return m_viewController ? send<Ref<NSView>>(m_viewController, "view"_sel) : m_view;
}

void NSTabViewItem::setView(NSView* view) {
    m_view = Ref<NSView>(view);
    if (const Ref<NSTabView> tabs = tabView()) {
        tabs->showSelection();
    }
}

void NSTabViewItem::setViewController(NSViewController* controller) {
    m_viewController = Ref<NSViewController>(controller);
    if (const Ref<NSTabView> tabs = tabView()) {
        tabs->showSelection();
    }
}

Ref<NSTabView> NSTabViewItem::tabView() const {
    return m_tabView.lock();
}

} // namespace zr
