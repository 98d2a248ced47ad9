#include <zrbasic/platform/foundation/string.h>

#include <cstdio>

// The root's descriptions live here, with the strings that they are made of.

namespace zr {

Ref<NSString> NSObject::description() const {
    char address[32];
    std::snprintf(address, sizeof address, "%p", static_cast<const void*>(this));
    return NSString::fromUtf8('<' + class_()->name() + ": " + address + '>');
}

Ref<NSString> NSObject::debugDescription() const {
    return description();
}

Ref<NSString> Class::description() const {
    return NSString::fromUtf8(name());
}

Ref<NSString> Protocol::description() const {
    return NSString::fromUtf8("<Protocol: " + name() + '>');
}

ZR_GROUP(NSObject, NSDescription) {
    is.method<&NSObject::description>("description");
    is.method<&NSObject::debugDescription>("debugDescription");
}

} // namespace zr
