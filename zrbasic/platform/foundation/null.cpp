#include <zrbasic/platform/foundation/null.h>

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/invocation.h>

namespace zr {

namespace {

/// Whether the method table has something else than the root's own hook for a message.
bool isTaught(const NSObject* self, SEL hook) {
    return detail::lookUp(self->isa(), hook) != class_getMethodImplementation(NSObject::classObject(), hook);
}

} // namespace

ZR_DEFINE_CLASS(NSNull) {
    is.classMethod<&NSNull::null>("null");
}

NSNull::~NSNull() = default;

NSNull* NSNull::null() {
    static NSNull* const shared = alloc<NSNull>().leak();
    return shared;
}

id NSNull::init() {
    return id(null());
}

bool NSNull::isEqual(NSObject* other) const {
    return this == other;
}

Ref<NSString> NSNull::description() const {
    return "<null>"_ns;
}

id NSNull::copy() const {
    return id(const_cast<NSNull*>(this));
}

// A group may replace the two forwarding hooks; calls from C++ see that as well as messages do.

Ref<NSMethodSignature> NSNull::methodSignatureForSelector(SEL selector) const {
    constexpr auto hook = [] { return "methodSignatureForSelector:"_sel; };
    if (isTaught(this, hook())) {
        return send<Ref<NSMethodSignature>>(const_cast<NSNull*>(this), hook(), selector);
    }
    return NSObject::methodSignatureForSelector(selector);
}

void NSNull::forwardInvocation(NSInvocation* invocation) {
    if (isTaught(this, "forwardInvocation:"_sel)) {
        send<void>(this, "forwardInvocation:"_sel, invocation);
        return;
    }
    NSObject::forwardInvocation(invocation);
}

} // namespace zr
