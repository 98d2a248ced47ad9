#include <zrbasic/platform/appkit/key_view_order_p.h>

#include <zrbasic/platform/appkit/text_view.h>

#include <algorithm>
#include <utility>

namespace zr {
namespace {

/// What comes first for a reader, in coordinates with the origin at the lower left.
bool isReadBefore(const std::pair<NSRect, Ref<NSView>>& one, const std::pair<NSRect, Ref<NSView>>& other) {
    if (NSMaxY(one.first) != NSMaxY(other.first)) {
        return NSMaxY(one.first) > NSMaxY(other.first);
    }
    return NSMinX(one.first) < NSMinX(other.first);
}

void collect(NSView* view, std::vector<std::pair<NSRect, Ref<NSView>>>& found) {
    if (view->isHidden()) {
        return;
    }
    // A field editor stands for the control that it lies in.
    const auto* const text = cast<NSText>(view);
    if (view->canBecomeKeyView() && !(text && text->isFieldEditor())) {
        found.emplace_back(view->convertRect_toView(view->bounds(), nullptr), Ref<NSView>(view));
    }
    const Ref<NSArray> subviews = view->subviews();
    for (const id& subview : subviews->elements()) {
        collect(static_cast<NSView*>(subview.get()), found);
    }
}

} // namespace

Ref<NSView> nextKeyViewFrom(NSView* root, NSView* from, bool isForwards) {
    // A ring of views that cannot take the keyboard must end as well.
    Ref<NSView> wanted(from);
    for (int steps = 0; wanted && steps < 1000; ++steps) {
        wanted = isForwards ? wanted->nextKeyView() : wanted->previousKeyView();
        if (wanted && wanted->canBecomeKeyView()) {
            return wanted;
        }
    }
    std::vector<std::pair<NSRect, Ref<NSView>>> order;
    if (root) {
        collect(root, order);
    }
    if (order.empty()) {
        return nullptr;
    }
    std::stable_sort(order.begin(), order.end(), isReadBefore);
    const auto here = std::find_if(order.begin(), order.end(), [from](const auto& one) { return one.second == from; });
    if (here == order.end()) {
        return isForwards ? order.front().second : order.back().second;
    }
    if (isForwards) {
        return std::next(here) == order.end() ? order.front().second : std::next(here)->second;
    }
    return here == order.begin() ? order.back().second : std::prev(here)->second;
}

} // namespace zr
