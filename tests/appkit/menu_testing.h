#pragma once

#include "window_testing.h"

#include <zrbasic/platform/appkit/menu.h>

#include <functional>
#include <string>

namespace zr::test {

/// Its user chooses from menus by a function.
class MenuToolkit : public WindowToolkit {
  public:
    bool popUpMenu(NSMenu& menu, NSMenuItem* item, NSPoint at, NSView* view) override {
        ++opened;
        location = at;
        titleAtLocation = item ? item->title()->utf8() : "none";
        inView = view;
        width = menu.minimumWidth();
        titles = titlesOf(menu);
        if (whileOpen) {
            whileOpen();
        }
        if (!chooses) {
            return false;
        }
        const NSInteger index = chooses(menu);
        send<void>(&menu, "performActionForItemAtIndex:"_sel, index);
        return index >= 0;
    }

    /// Of what is seen, with a star at what is ticked and brackets around what cannot be chosen.
    static std::string titlesOf(const NSMenu& menu) {
        std::string all;
        for (NSInteger i = 0; i < menu.numberOfItems(); ++i) {
            const Ref<NSMenuItem> item = menu.itemAtIndex(i);
            if (item->isHidden()) {
                continue;
            }
            const std::string title = item->title()->utf8() + (item->state() == 1 ? "*" : "");
            all += item->isEnabled() ? title + ' ' : '(' + title + ") ";
        }
        return all;
    }

    std::function<NSInteger(NSMenu&)> chooses;
    std::function<void()> whileOpen;
    int opened = 0;
    NSPoint location;
    std::string titleAtLocation;
    NSView* inView = nullptr;
    double width = 0;
    std::string titles;
};

} // namespace zr::test
