#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

/// A box that holds one object weakly.
class ZR_EXPORT _ZRWeakAssociation : public NSObject {
    ZR_OBJECT(_ZRWeakAssociation, NSObject)

  public:
    ~_ZRWeakAssociation() override;

    /// A new box for `object`; null for null.
    [[nodiscard]] static Ref<_ZRWeakAssociation> associationWithWeakObject(NSObject* object);
    ZR_CLASS_METHOD(associationWithWeakObject, "associationWithWeakObject:")

    /// Null once the object is gone.
    ZR_PROPERTY(Weak<NSObject>, object, setObject)
};

// NSObject(ZRAssociation)
//
// Objects attached to other objects without being kept alive. Attachments that are to be kept alive are made with
// `objc_setAssociatedObject`.

/// Attaches `object` to `self` under `key`, of which only the address counts, in place of what was there. A null
/// `object` removes the attachment; a null `self` does nothing. Safe from any thread.
ZR_EXPORT void setWeakObject_withKey(NSObject* self, NSObject* object, const void* key);

/// The object attached under `key`; null when there is none or it is gone. Safe from any thread.
[[nodiscard]] ZR_EXPORT id weakObjectWithKey(NSObject* self, const void* key);

} // namespace zr
