#include <zrbasic/ui/workspace.h>

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

namespace detail {

void openURLString(NSString* text) {
    const Ref<NSURL> url = text ? NSURL::URLWithString(text) : nullptr;
    send<void>(NSWorkspace::classObject(), "zr_openURL:"_sel, url);
}

void openAddress(NSURL* url) {
    send<bool>(NSWorkspace::sharedWorkspace(), "openURL:"_sel, url);
}

} // namespace detail

ZR_GROUP(NSWorkspace, ZRXHelper) {
    is.classMethod<&detail::openURLString>("zr_openURLString:");
    is.classMethod<&detail::openAddress>("zr_openURL:");
}

} // namespace zr
