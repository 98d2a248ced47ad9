#pragma once

#include <zrbasic/platform/appkit/split_view_controller.h>

#include <concepts>

/// Shorter ways to put controllers into a split view. A null receiver does nothing. Main thread only.
namespace zr {

// NSSplitViewController(ZRXHelper)

/// Wraps the controller in an item, gives that the limits, in points, and adds it behind the others.
ZR_EXPORT void addViewController(NSSplitViewController* self, NSViewController* controller);
ZR_EXPORT void addViewController_minThickness(NSSplitViewController* self, NSViewController* controller,
                                              double minimum);
ZR_EXPORT void addViewController_maxThickness(NSSplitViewController* self, NSViewController* controller,
                                              double maximum);
ZR_EXPORT void addViewController_minThickness_maxThickness(NSSplitViewController* self, NSViewController* controller,
                                                           double minimum, double maximum);
/// A thickness that cannot be changed by moving the lines.
ZR_EXPORT void addViewController_thickness(NSSplitViewController* self, NSViewController* controller, double thickness);

// NSSplitViewItem(ZRXHelper)

/// Always 0: the thickness can be set and not be read. Ask the item for its minimum and maximum.
[[nodiscard]] ZR_EXPORT double thickness(NSSplitViewItem* self);
/// Makes it both the minimum and the maximum.
ZR_EXPORT void setThickness(NSSplitViewItem* self, double thickness);
/// The shortened "Mini" is part of the name.
ZR_EXPORT void setMiniThickness_andMaxThickness(NSSplitViewItem* self, double minimum, double maximum);

namespace detail {

ZR_EXPORT void setUpSplitViewItem(NSSplitViewItem* item, NSViewController* controller, double thickness);

} // namespace detail

/// A new item of the class `T` with a thickness that cannot be changed by moving the lines. Never null.
template <std::derived_from<NSSplitViewItem> T = NSSplitViewItem>
[[nodiscard]] Ref<T> itemWithViewController_thickness(NSViewController* controller, double thickness) {
    Ref<T> item = make<T>();
    detail::setUpSplitViewItem(item, controller, thickness);
    return item;
}

} // namespace zr
