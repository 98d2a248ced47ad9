#pragma once

#include <zrbasic/platform/appkit/menu_item.h>

namespace zr {

// NSMenuItem(ZRXHelper)
//
// Menu items in one line. Both give a plain item, the command key held down with its key equivalent and nobody as its
// target. Main thread only.

/// Without a key equivalent. A null title is empty; the empty selector sends nothing.
[[nodiscard]] ZR_EXPORT Ref<NSMenuItem> itemWithTitle_action(NSString* title, SEL action);
/// A null `keyEquivalent` is the empty one, which no key stands for.
[[nodiscard]] ZR_EXPORT Ref<NSMenuItem> itemWithTitle_action_keyEquivalent(NSString* title, SEL action,
                                                                           NSString* keyEquivalent);

} // namespace zr
