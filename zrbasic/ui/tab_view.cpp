#include <zrbasic/ui/tab_view.h>

#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

id itemOfClass(Class* kind, NSView* view) {
    const id item = send<id>(class_createInstance(kind), "init"_sel);
    send<void>(item, "setView:"_sel, view);
    return item;
}

id itemOfClassWithIdentifier(Class* kind, NSView* view, NSObject* identifier) {
    const id item = itemOfClass(kind, view);
    send<void>(item, "setIdentifier:"_sel, identifier);
    return item;
}

} // namespace

ZR_GROUP(NSTabView, ZRXHelper) {
    is.method<&isValidIndex>("isValidIndex:");
    is.method<static_cast<void (*)(NSTabView*, NSInteger)>(&zr_selectTabViewItemAtIndex)>(
        "zr_selectTabViewItemAtIndex:");
    is.method<static_cast<void (*)(NSTabView*, NSObject*)>(&zr_selectTabViewItemWithIdentifier)>(
        "zr_selectTabViewItemWithIdentifier:");
    is.method<static_cast<Ref<NSTabViewItem> (*)(NSTabView*, NSObject*)>(&zr_tabViewItemWithIdentifier)>(
        "zr_tabViewItemWithIdentifier:");
}

ZR_GROUP(NSTabViewController, ZRXHelper) {
    is.method<static_cast<void (*)(NSTabViewController*, NSInteger)>(&zr_selectTabViewItemAtIndex)>(
        "zr_selectTabViewItemAtIndex:");
    is.method<static_cast<void (*)(NSTabViewController*, NSObject*)>(&zr_selectTabViewItemWithIdentifier)>(
        "zr_selectTabViewItemWithIdentifier:");
    is.method<static_cast<Ref<NSTabViewItem> (*)(NSTabViewController*, NSObject*)>(&zr_tabViewItemWithIdentifier)>(
        "zr_tabViewItemWithIdentifier:");
}

ZR_GROUP(NSTabViewItem, ZRXHelper) {
    is.receivingClassMethod<&itemOfClass>("itemWithView:");
    is.receivingClassMethod<&itemOfClassWithIdentifier>("itemWithView:identifier:");
    is.classMethod<&itemWithViewController_identifier>("itemWithViewController:identifier:");
}

bool isValidIndex(NSTabView* self, NSInteger index) {
    if (!self) {
        return false;
    }
    // As a number without a sign, so that what is below 0 is too large as well.
    const auto position = static_cast<NSUInteger>(index);
    const auto count = static_cast<NSUInteger>(send<NSInteger>(self, "numberOfTabViewItems"_sel));
    return position < NSNotFound && position < count;
}

void zr_selectTabViewItemAtIndex(NSTabView* self, NSInteger index) {
    // The test is the wrong way round, and callers rely on a valid index leaving the selection as it is.
    if (!send<bool>(self, "isValidIndex:"_sel, index)) {
        send<void>(self, "selectTabViewItemAtIndex:"_sel, index);
    }
}

void zr_selectTabViewItemWithIdentifier(NSTabView* self, NSObject* identifier) {
    if (identifier) {
        const auto index = send<NSInteger>(self, "indexOfTabViewItemWithIdentifier:"_sel, identifier);
        send<void>(self, "zr_selectTabViewItemAtIndex:"_sel, index);
    }
}

Ref<NSTabViewItem> zr_tabViewItemWithIdentifier(NSTabView* self, NSObject* identifier) {
    if (!identifier) {
        return nullptr;
    }
    const auto index = send<NSInteger>(self, "indexOfTabViewItemWithIdentifier:"_sel, identifier);
    if (!send<bool>(self, "isValidIndex:"_sel, index)) {
        return nullptr;
    }
    return send<Ref<NSTabViewItem>>(self, "tabViewItemAtIndex:"_sel, index);
}

void zr_selectTabViewItemAtIndex(NSTabViewController* self, NSInteger index) {
    send<void>(send<id>(self, "tabView"_sel), "zr_selectTabViewItemAtIndex:"_sel, index);
}

void zr_selectTabViewItemWithIdentifier(NSTabViewController* self, NSObject* identifier) {
    send<void>(send<id>(self, "tabView"_sel), "zr_selectTabViewItemWithIdentifier:"_sel, identifier);
}

Ref<NSTabViewItem> zr_tabViewItemWithIdentifier(NSTabViewController* self, NSObject* identifier) {
    return send<Ref<NSTabViewItem>>(send<id>(self, "tabView"_sel), "zr_tabViewItemWithIdentifier:"_sel, identifier);
}

Ref<NSTabViewItem> itemWithViewController_identifier(NSViewController* controller, NSObject* identifier) {
    const Ref<NSTabViewItem> item = NSTabViewItem::tabViewItemWithViewController(controller);
    send<void>(item, "setIdentifier:"_sel, identifier);
    return item;
}

} // namespace zr
