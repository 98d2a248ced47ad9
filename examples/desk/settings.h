#pragma once

#include <zrbasic/platform/foundation/string.h>

#include <functional>

namespace desk {

/// Shows the window of the user's choices, the one that there is or else a new one, which is forgotten when it is closed.
/// `onChange` is called with the key of the user defaults, and the new value, of each choice.
void showSettings(std::function<void(zr::NSString* key, zr::NSObject* value)> onChange,
                  std::function<void()> onRestart);

} // namespace desk
