#pragma once

#include <zrbasic/platform/appkit/application.h>

namespace zr {

class NSString;
class NSWindow;

// NSApplication(ZRXHelper)
//
// What the whole application looks like, and its windows by name. A null receiver gives the zero result. Main thread
// only, `saftyRunModalForWindow` aside.

/// Whether the user defaults hold a string for "AppleInterfaceStyle", for this application or for all. Any string
/// counts, the empty one and "Light" too.
[[nodiscard]] ZR_EXPORT bool isDarkMode(NSApplication* self);
/// Whether the shared application, which may be another than the receiver, is presented in full screen.
[[nodiscard]] ZR_EXPORT bool isInFullScreenMode(NSApplication* self);
/// Whether one of the receiver's windows, shown or not, is a modal panel.
[[nodiscard]] ZR_EXPORT bool isContainsModalWindow(NSApplication* self);

/// The first of the receiver's windows, in the order of their making, whose identifier contains `identifier`, letter
/// case included: "quote" finds the window "quoteDetail". Null when there is none, and for null and "".
[[nodiscard]] ZR_EXPORT Ref<NSWindow> windowWithIdentifier(NSApplication* self, NSString* identifier);
/// Whether there is such a window.
[[nodiscard]] ZR_EXPORT bool containsWindowWithIdentifier(NSApplication* self, NSString* identifier);

/// Runs a modal session for `window` on a later pass of the main loop, also when that is inside another session, and
/// returns at once. The window is kept until then; null does nothing. From any thread.
ZR_EXPORT void saftyRunModalForWindow(NSApplication* self, NSWindow* window);
/// Runs the session now; null does nothing.
ZR_EXPORT void _saftyRunModalForWindow(NSApplication* self, NSWindow* window);

} // namespace zr
