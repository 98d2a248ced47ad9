#include <zrbasic/ui/menu_item.h>

namespace zr {

ZR_GROUP(NSMenuItem, ZRXHelper) {
    is.classMethod<&itemWithTitle_action>("itemWithTitle:action:");
    is.classMethod<&itemWithTitle_action_keyEquivalent>("itemWithTitle:action:keyEquivalent:");
}

Ref<NSMenuItem> itemWithTitle_action(NSString* title, SEL action) {
    return itemWithTitle_action_keyEquivalent(title, action, nullptr);
}

Ref<NSMenuItem> itemWithTitle_action_keyEquivalent(NSString* title, SEL action, NSString* keyEquivalent) {
    const Ref<NSString> none = ""_ns;
    return make<NSMenuItem>(&NSMenuItem::initWithTitle_action_keyEquivalent, title, action,
                            keyEquivalent ? keyEquivalent : none.get());
}

} // namespace zr
