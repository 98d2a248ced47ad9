#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {
class NSURL;
}

/// What the desktop around the program does for it.
namespace zr::qt {

/// Hands the address to the program that the user has for it; false, and nothing done, for one that is not strictly an
/// address with a scheme, and for null. True means no more than that somebody was asked.
bool openAddress(NSURL* url);
/// Starts the program in that file as a process that outlives this one; false when it cannot be started.
bool launchProgram(NSString* path);

/// Null when there is no text in the clipboard.
[[nodiscard]] Ref<NSString> textOfClipboard();
/// Null empties the clipboard.
void putIntoClipboard(NSString* text);

} // namespace zr::qt
