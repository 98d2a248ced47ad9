#pragma once

#include <zrbasic/platform/runtime/message.h>

namespace zr::detail {

/// Calls a target back: sends it `argument`, or nothing when the operation's name has no room for one. A null target
/// and the null selector do nothing.
inline void sendCallback(NSObject* target, SEL selector, NSObject* argument) {
    if (!selector) {
        return;
    }
    if (selector.name().find(':') == std::string_view::npos) {
        send<>(target, selector);
    } else {
        send<>(target, selector, argument);
    }
}

} // namespace zr::detail
