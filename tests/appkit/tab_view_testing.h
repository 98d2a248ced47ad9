#pragma once

#include <zrbasic/platform/appkit/tab_view.h>
#include <zrbasic/platform/foundation/number.h>

#include <tests/appkit/window_testing.h>

#include <string>

namespace zr::test {

/// With that text as its identifier and its label, and a view.
inline Ref<NSTabViewItem> tab(const char* name) {
    Ref<NSTabViewItem> item = make<NSTabViewItem>(&NSTabViewItem::initWithIdentifier, NSString::fromUtf8(name).get());
    item->setLabel(NSString::fromUtf8(name));
    item->setView(make<NSView>());
    return item;
}

inline std::string nameOf(NSTabViewItem* item) {
    return item ? item->label()->utf8() : "none";
}

/// Writes down what a tab view tells and asks.
class TabDelegate : public NSObject {
    ZR_OBJECT(TabDelegate, NSObject)
  public:
    bool shouldSelect(NSTabView*, NSTabViewItem* item) {
        log += "should " + nameOf(item) + ' ';
        return allows;
    }
    ZR_METHOD(shouldSelect, "tabView:shouldSelectTabViewItem:")
    void willSelect(NSTabView*, NSTabViewItem* item) {
        log += "will " + nameOf(item) + ' ';
        if (whenItWill) {
            whenItWill(item);
        }
    }
    ZR_METHOD(willSelect, "tabView:willSelectTabViewItem:")
    void didSelect(NSTabView* tabs, NSTabViewItem* item) {
        log += "did " + nameOf(item) + (tabs->selectedTabViewItem() == item ? " " : "(not) ");
    }
    ZR_METHOD(didSelect, "tabView:didSelectTabViewItem:")
    void changedNumber(NSTabView* tabs) { log += "number " + std::to_string(tabs->numberOfTabViewItems()) + ' '; }
    ZR_METHOD(changedNumber, "tabViewDidChangeNumberOfTabViewItems:")

    std::string take() { return std::exchange(log, {}); }

    bool allows = true;
    std::string log;
    std::function<void(NSTabViewItem*)> whenItWill;
};

} // namespace zr::test
