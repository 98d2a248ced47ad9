#include "specimen.h"

#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/appkit/window.h>

namespace controls {
namespace {

using namespace zr;

/// As large as it needs to be, but no narrower than its neighbours.
Ref<NSButton> sized(Ref<NSButton> button, double width = 0) {
    button->sizeToFit();
    const NSSize size = button->frame().size;
    button->setFrameSize(NSMakeSize(std::max(size.width, width), size.height));
    return button;
}

Ref<NSButton> push(const char* title) {
    return sized(NSButton::buttonWithTitle_target_action(NSString::fromUtf8(title), nullptr, {}), 96);
}

Ref<NSButton> check(const char* title, NSInteger state) {
    Ref<NSButton> button = NSButton::checkboxWithTitle_target_action(NSString::fromUtf8(title), nullptr, {});
    button->setAllowsMixedState(state == NSControlStateValueMixed);
    button->setState(state);
    return sized(std::move(button));
}

Ref<NSButton> radio(const char* title, NSInteger state) {
    Ref<NSButton> button = NSButton::radioButtonWithTitle_target_action(NSString::fromUtf8(title), nullptr, {});
    button->setState(state);
    return sized(std::move(button));
}

/// Of how prices are rounded; of what else a desk can do, for one that pulls down.
Ref<NSPopUpButton> popUp(bool pullsDown) {
    auto button = make<NSPopUpButton>(&NSPopUpButton::initWithFrame_pullsDown, NSZeroRect, pullsDown);
    const Ref<NSArray> titles = pullsDown ? NSArray::arrayWithObjects({"Desk"_ns, "Cancel all orders"_ns, "Flatten"_ns})
                                          : NSArray::arrayWithObjects({"Half to even"_ns, "Down"_ns, "Up"_ns});
    button->addItemsWithTitles(titles);
    button->sizeToFit();
    return button;
}

} // namespace

Section buttons() {
    Section section{"Buttons", {}};
    auto& specimens = section.specimens;
    specimens.push_back({"button/push", "push button", push("Cancel"), {}});

    const Ref<NSButton> standard = push("Send order");
    standard->setKeyEquivalent("\r"_ns);
    specimens.push_back({"button/default", "default", standard, {}});

    const Ref<NSButton> pressed = push("Cancel");
    specimens.push_back({"button/pressed", "pressed", pressed, [pressed] { pressed->highlight(true); }});

    const Ref<NSButton> disabled = push("Cancel");
    disabled->setEnabled(false);
    specimens.push_back({"button/disabled", "disabled", disabled, {}});

    specimens.push_back({"button/check-off", "check box", check("Good till cancelled", NSControlStateValueOff), {}});
    specimens.push_back(
        {"button/check-on", "check box, checked", check("Good till cancelled", NSControlStateValueOn), {}});
    specimens.push_back(
        {"button/check-mixed", "check box, mixed", check("All accounts", NSControlStateValueMixed), {}});
    specimens.push_back({"button/radio-off", "radio button", radio("Limit", NSControlStateValueOff), {}});
    specimens.push_back({"button/radio-on", "radio button, chosen", radio("Market", NSControlStateValueOn), {}});

    const Ref<NSButton> off = check("Reduce only", NSControlStateValueOn);
    off->setEnabled(false);
    specimens.push_back({"button/check-disabled", "check box, disabled", off, {}});

    specimens.push_back({"button/pop-up", "pop-up button", popUp(false), {}});

    const Ref<NSPopUpButton> focused = popUp(false);
    focused->selectItemAtIndex(1);
    specimens.push_back({"button/pop-up-focused", "with the keyboard", focused,
                         [focused] { focused->window()->makeFirstResponder(focused); }, true});

    const Ref<NSPopUpButton> unusable = popUp(false);
    unusable->setEnabled(false);
    specimens.push_back({"button/pop-up-disabled", "pop-up button, disabled", unusable, {}});

    specimens.push_back({"button/pull-down", "pull-down", popUp(true), {}});
    return section;
}

} // namespace controls
