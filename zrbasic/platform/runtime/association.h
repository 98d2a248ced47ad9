#pragma once

#include <zrbasic/platform/runtime/object.h>

namespace zr {

/// How an attached value is held.
enum objc_AssociationPolicy : NSUInteger {
    /// Not held at all: whoever attaches it sees to its lifetime.
    OBJC_ASSOCIATION_ASSIGN = 0,
    OBJC_ASSOCIATION_RETAIN_NONATOMIC = 1,
    OBJC_ASSOCIATION_COPY_NONATOMIC = 3,
    OBJC_ASSOCIATION_RETAIN = 01401,
    OBJC_ASSOCIATION_COPY = 01403,
};

/// Attaches `value` to `object` under `key`, whose address alone counts, in place of what was there. A null value
/// removes the entry; a null object does nothing. Copying happens now. Attached values are let go after the object's
/// own variables when it ends. Safe from any thread, whatever the policy.
ZR_EXPORT void objc_setAssociatedObject(NSObject* object, const void* key, NSObject* value,
                                        objc_AssociationPolicy policy);

/// The value attached under `key`; null when there is none, and for a null object.
[[nodiscard]] ZR_EXPORT id objc_getAssociatedObject(const NSObject* object, const void* key);

/// Lets go of everything attached.
ZR_EXPORT void objc_removeAssociatedObjects(NSObject* object);

} // namespace zr
