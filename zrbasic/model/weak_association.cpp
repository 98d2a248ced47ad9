#include <zrbasic/model/weak_association.h>

#include <zrbasic/platform/runtime/association.h>

namespace zr {

_ZRWeakAssociation::~_ZRWeakAssociation() = default;

Ref<_ZRWeakAssociation> _ZRWeakAssociation::associationWithWeakObject(NSObject* object) {
    if (!object) {
        return {};
    }
    auto association = make<_ZRWeakAssociation>();
    association->setObject(object);
    return association;
}

void setWeakObject_withKey(NSObject* self, NSObject* object, const void* key) {
    objc_setAssociatedObject(self, key, _ZRWeakAssociation::associationWithWeakObject(object),
                             OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

id weakObjectWithKey(NSObject* self, const void* key) {
    const id attached = objc_getAssociatedObject(self, key);
    const auto* const association = cast<_ZRWeakAssociation>(attached);
    return association ? association->object() : id();
}

ZR_GROUP(NSObject, ZRAssociation) {
    is.method<&setWeakObject_withKey>("setWeakObject:withKey:");
    is.method<&weakObjectWithKey>("weakObjectWithKey:");
}

} // namespace zr
