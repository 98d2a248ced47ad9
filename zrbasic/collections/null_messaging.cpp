#include <zrbasic/collections/null_messaging.h>

#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/number.h>

namespace zr {

ZR_GROUP(NSNull, NullSafe) {
    is.method<&methodSignatureForSelector>("methodSignatureForSelector:");
    is.method<&forwardInvocation>("forwardInvocation:");
}

Ref<NSMethodSignature> methodSignatureForSelector(NSNull* self, SEL selector) {
    if (!self || !selector) {
        return {};
    }
    if (Ref<NSMethodSignature> own = self->NSObject::methodSignatureForSelector(selector)) {
        return own;
    }
    Class* const sources[] = {NSMutableArray::classObject(),  NSMutableDictionary::classObject(),
                              NSMutableString::classObject(), NSNumber::classObject(),
                              NSDate::classObject(),          NSData::classObject()};
    for (Class* const source : sources) {
        try {
            if (send<bool>(source, "instancesRespondToSelector:"_sel, selector)) {
                return send<Ref<NSMethodSignature>>(source, "instanceMethodSignatureForSelector:"_sel, selector);
            }
        } catch (const NSException&) {
            // This class cannot tell; the next one may.
        }
    }
    return {};
}

void forwardInvocation(NSNull* self, NSInvocation* invocation) {
    if (self && invocation) {
        invocation->invokeWithTarget(nullptr);
    }
}

} // namespace zr
