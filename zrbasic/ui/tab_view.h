#pragma once

#include <zrbasic/platform/appkit/tab_view_controller.h>
#include <zrbasic/platform/runtime/message.h>

#include <concepts>

/// Finding and making the items of tab views. A null receiver does nothing and gives null or false. Main thread only.
namespace zr {

// NSTabView(ZRXHelper)

/// Whether there is an item at that index: never for one below 0, nor for `NSNotFound`.
[[nodiscard]] ZR_EXPORT bool isValidIndex(NSTabView* self, NSInteger index);
/// Hands an index that is *not* valid on to `selectTabViewItemAtIndex:`, which raises `NSRangeException`; a valid one
/// does nothing at all. To select an item, use `selectTabViewItemAtIndex` itself.
ZR_EXPORT void zr_selectTabViewItemAtIndex(NSTabView* self, NSInteger index);
/// Does that with the index of the first item with an equal identifier: a known identifier selects nothing, and one
/// that no item has raises `NSRangeException`. Null does nothing.
ZR_EXPORT void zr_selectTabViewItemWithIdentifier(NSTabView* self, NSObject* identifier);
/// The first item with an equal identifier; null when there is none, and for null.
[[nodiscard]] ZR_EXPORT Ref<NSTabViewItem> zr_tabViewItemWithIdentifier(NSTabView* self, NSObject* identifier);

// NSTabViewController(ZRXHelper): the same operations of its tab view

ZR_EXPORT void zr_selectTabViewItemAtIndex(NSTabViewController* self, NSInteger index);
ZR_EXPORT void zr_selectTabViewItemWithIdentifier(NSTabViewController* self, NSObject* identifier);
[[nodiscard]] ZR_EXPORT Ref<NSTabViewItem> zr_tabViewItemWithIdentifier(NSTabViewController* self,
                                                                        NSObject* identifier);

// NSTabViewItem(ZRXHelper)

/// A new item of the class `T` that shows the view; null shows nothing. Never null.
template <std::derived_from<NSTabViewItem> T = NSTabViewItem>
[[nodiscard]] Ref<T> itemWithView(NSView* view) {
    Ref<T> item = make<T>();
    send<void>(item, "setView:"_sel, view);
    return item;
}
/// The same, known by `identifier`, which may be null.
template <std::derived_from<NSTabViewItem> T = NSTabViewItem>
[[nodiscard]] Ref<T> itemWithView_identifier(NSView* view, NSObject* identifier) {
    Ref<T> item = itemWithView<T>(view);
    send<void>(item, "setIdentifier:"_sel, identifier);
    return item;
}
/// A plain item that shows the controller's view with the controller's title as its label, known by `identifier`. Never
/// null.
[[nodiscard]] ZR_EXPORT Ref<NSTabViewItem> itemWithViewController_identifier(NSViewController* controller,
                                                                             NSObject* identifier);

} // namespace zr
