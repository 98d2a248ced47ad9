#include <zrbasic/ui/application.h>

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/perform_selector.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

bool isDarkMode(NSApplication* self) {
    const id style = NSUserDefaults::standardUserDefaults()->objectForKey("AppleInterfaceStyle"_ns);
    return self && cast<NSString>(style.get());
}

bool isInFullScreenMode(NSApplication* self) {
    return self &&
           (NSApplication::sharedApplication()->presentationOptions() & NSApplicationPresentationFullScreen) != 0;
}

bool isContainsModalWindow(NSApplication* self) {
    if (self) {
        for (const id& window : self->windows()) {
            if (send<bool>(window, "isModalPanel"_sel)) {
                return true;
            }
        }
    }
    return false;
}

Ref<NSWindow> windowWithIdentifier(NSApplication* self, NSString* identifier) {
    if (self && identifier) {
        for (const id& object : self->windows()) {
            auto* const window = cast<NSWindow>(object.get());
            const Ref<NSString> known = window->identifier();
            if (known && known->containsString(identifier)) {
                return Ref<NSWindow>(window);
            }
        }
    }
    return nullptr;
}

bool containsWindowWithIdentifier(NSApplication* self, NSString* identifier) {
    return windowWithIdentifier(self, identifier) != nullptr;
}

void saftyRunModalForWindow(NSApplication* self, NSWindow* window) {
    if (window) {
        performSelectorOnMainThread_withObject_waitUntilDone_modes(self, "_saftyRunModalForWindow:"_sel, window, false,
                                                                   array({NSRunLoopCommonModes()}));
    }
}

void _saftyRunModalForWindow(NSApplication* self, NSWindow* window) {
    if (window) {
        send<NSInteger>(self, "runModalForWindow:"_sel, window);
    }
}

ZR_GROUP(NSApplication, ZRXHelper) {
    is.method<&isDarkMode>("isDarkMode");
    is.method<&isInFullScreenMode>("isInFullScreenMode");
    is.method<&isContainsModalWindow>("isContainsModalWindow");
    is.method<&windowWithIdentifier>("windowWithIdentifier:");
    is.method<&containsWindowWithIdentifier>("containsWindowWithIdentifier:");
    is.method<&saftyRunModalForWindow>("saftyRunModalForWindow:");
    is.method<&_saftyRunModalForWindow>("_saftyRunModalForWindow:");
}

} // namespace zr
