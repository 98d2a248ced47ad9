#include <zrbasic/ui/split_view.h>

#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

Ref<NSSplitViewItem> itemFor(NSViewController* controller) {
    return NSSplitViewItem::splitViewItemWithViewController(controller);
}

id itemOfClass(Class* kind, NSViewController* controller, double thickness) {
    const id item = send<id>(class_createInstance(kind), "init"_sel);
    detail::setUpSplitViewItem(cast<NSSplitViewItem>(item), controller, thickness);
    return item;
}

} // namespace

ZR_GROUP(NSSplitViewController, ZRXHelper) {
    is.method<&addViewController>("addViewController:");
    is.method<&addViewController_minThickness>("addViewController:minThickness:");
    is.method<&addViewController_maxThickness>("addViewController:maxThickness:");
    is.method<&addViewController_minThickness_maxThickness>("addViewController:minThickness:maxThickness:");
    is.method<&addViewController_thickness>("addViewController:thickness:");
}

ZR_GROUP(NSSplitViewItem, ZRXHelper) {
    is.receivingClassMethod<&itemOfClass>("itemWithViewController:thickness:");
    is.method<&thickness>("thickness");
    is.method<&setThickness>("setThickness:");
    is.method<&setMiniThickness_andMaxThickness>("setMiniThickness:andMaxThickness:");
}

void addViewController(NSSplitViewController* self, NSViewController* controller) {
    send<void>(self, "addSplitViewItem:"_sel, itemFor(controller));
}

void addViewController_minThickness(NSSplitViewController* self, NSViewController* controller, double minimum) {
    const Ref<NSSplitViewItem> item = itemFor(controller);
    item->setMinimumThickness(minimum);
    send<void>(self, "addSplitViewItem:"_sel, item);
}

void addViewController_maxThickness(NSSplitViewController* self, NSViewController* controller, double maximum) {
    const Ref<NSSplitViewItem> item = itemFor(controller);
    item->setMaximumThickness(maximum);
    send<void>(self, "addSplitViewItem:"_sel, item);
}

void addViewController_minThickness_maxThickness(NSSplitViewController* self, NSViewController* controller,
                                                 double minimum, double maximum) {
    const Ref<NSSplitViewItem> item = itemFor(controller);
    item->setMinimumThickness(minimum);
    item->setMaximumThickness(maximum);
    send<void>(self, "addSplitViewItem:"_sel, item);
}

void addViewController_thickness(NSSplitViewController* self, NSViewController* controller, double thickness) {
    send<void>(self, "addViewController:minThickness:maxThickness:"_sel, controller, thickness, thickness);
}

double thickness(NSSplitViewItem*) {
    return 0;
}

void setThickness(NSSplitViewItem* self, double thickness) {
    send<void>(self, "setMinimumThickness:"_sel, thickness);
    send<void>(self, "setMaximumThickness:"_sel, thickness);
}

void setMiniThickness_andMaxThickness(NSSplitViewItem* self, double minimum, double maximum) {
    send<void>(self, "setMinimumThickness:"_sel, minimum);
    send<void>(self, "setMaximumThickness:"_sel, maximum);
}

void detail::setUpSplitViewItem(NSSplitViewItem* item, NSViewController* controller, double thickness) {
    send<void>(item, "setViewController:"_sel, controller);
    setThickness(item, thickness);
}

} // namespace zr
