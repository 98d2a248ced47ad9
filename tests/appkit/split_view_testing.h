#pragma once

#include <zrbasic/platform/appkit/split_view.h>

#include <tests/appkit/window_testing.h>

#include <string>
#include <vector>

namespace zr::test {

/// The thicknesses of the subviews of `split`, in order.
inline std::vector<double> thicknesses(NSSplitView* split) {
    std::vector<double> result;
    const Ref<NSArray> all = split->subviews();
    for (const id& element : all->elements()) {
        const NSSize size = cast<NSView>(element)->frame().size;
        result.push_back(split->isVertical() ? size.width : size.height);
    }
    return result;
}

inline Ref<NSView> viewOfWidth(double width) {
    return make<NSView>(&NSView::initWithFrame, NSRect{{0, 0}, {width, 50}});
}

/// As when `view` is shown rather than `other` where there is not room for both.
inline void prefer(NSView* view, NSView* other,
                   NSLayoutConstraintOrientation orientation = NSLayoutConstraintOrientationHorizontal) {
    view->setContentCompressionResistancePriority_forOrientation(NSLayoutPriorityDefaultHigh, orientation);
    view->setContentHuggingPriority_forOrientation(NSLayoutPriorityDefaultLow, orientation);
    other->setContentCompressionResistancePriority_forOrientation(NSLayoutPriorityDefaultLow, orientation);
    other->setContentHuggingPriority_forOrientation(NSLayoutPriorityDefaultHigh, orientation);
}

} // namespace zr::test
