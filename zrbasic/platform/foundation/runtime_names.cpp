#include <zrbasic/platform/foundation/runtime_names.h>

namespace zr {

Ref<NSString> NSStringFromClass(const Class* ofClass) {
    return ofClass ? NSString::fromUtf8(ofClass->name()) : nullptr;
}

Class* NSClassFromString(NSString* name) {
    return name ? objc_getClass(name->utf8()) : nullptr;
}

Ref<NSString> NSStringFromSelector(SEL selector) {
    return selector ? NSString::fromUtf8(selector.name()) : nullptr;
}

SEL NSSelectorFromString(NSString* name) {
    return name ? sel_registerName(name->utf8()) : SEL();
}

Ref<NSString> NSStringFromProtocol(const Protocol* protocol) {
    return protocol ? NSString::fromUtf8(protocol->name()) : nullptr;
}

Protocol* NSProtocolFromString(NSString* name) {
    return name ? objc_getProtocol(name->utf8()) : nullptr;
}

} // namespace zr
