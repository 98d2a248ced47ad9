#include <zrbasic/collections/set_sequence.h>

#include <zrbasic/platform/foundation/capacity_p.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_set.h>

#include <utility>
#include <vector>

namespace zr {

namespace {

Ref<NSSet> setWithObject(Class* setClass, NSObject* object) {
    return send<Ref<NSSet>>(class_createInstance(setClass), "initWithSet:"_sel,
                            object ? NSSet::setWithObject(object) : nullptr);
}

} // namespace

ZR_GROUP(NSSet, ZRXHelper) {
    is.receivingClassMethod<&setWithObject>("zr_setWithObject:");
    is.method<&zr_setByAddingObject>("zr_setByAddingObject:");
    is.method<&zr_setByAddingObjectsFromSet>("zr_setByAddingObjectsFromSet:");
    is.method<&zr_setByAddingObjectsFromArray>("zr_setByAddingObjectsFromArray:");
    is.method<static_cast<Ref<NSMutableArray> (*)(NSSet*, ElementTransform)>(&zr_map)>("zr_map:");
    is.method<static_cast<id (*)(NSSet*, ElementPredicate)>(&zr_exists)>("zr_exists:");
    is.method<static_cast<Ref<NSMutableArray> (*)(NSSet*, ElementPredicate)>(&zr_filter)>("zr_filter:");
}

ZR_GROUP(NSMutableSet, ZRXHelper) {
    is.method<static_cast<void (*)(NSMutableSet*, NSObject*)>(&zr_addObject)>("zr_addObject:");
    is.method<&zr_removeObject>("zr_removeObject:");
    is.method<&zr_containsObject>("zr_containsObject:");
    is.method<&zr_addObjectsFromArray>("zr_addObjectsFromArray:");
}

Ref<NSSet> zr_setByAddingObject(NSSet* self, NSObject* object) {
    return self && object ? self->setByAddingObject(object) : Ref<NSSet>(self);
}

Ref<NSSet> zr_setByAddingObjectsFromSet(NSSet* self, NSSet* other) {
    return self && other ? self->setByAddingObjectsFromSet(other) : Ref<NSSet>(self);
}

Ref<NSSet> zr_setByAddingObjectsFromArray(NSSet* self, NSArray* objects) {
    return self && objects ? self->setByAddingObjectsFromArray(objects) : Ref<NSSet>(self);
}

Ref<NSMutableArray> zr_map(NSSet* self, ElementTransform transform) {
    if (!self) {
        return {};
    }
    std::vector<id> results;
    if (transform) {
        results.reserve(detail::roomFor(self->count()));
        for (const id& member : self) {
            if (id result = transform(member)) {
                results.push_back(std::move(result));
            }
        }
    }
    return NSMutableArray::fromElements(std::move(results));
}

id zr_exists(NSSet* self, ElementPredicate predicate) {
    if (predicate) {
        for (const id& member : self) {
            if (predicate(member)) {
                return member;
            }
        }
    }
    return {};
}

Ref<NSMutableArray> zr_filter(NSSet* self, ElementPredicate predicate) {
    if (!predicate) {
        return zr_map(self, nullptr);
    }
    return zr_map(self, [predicate](NSObject* member) { return id(predicate(member) ? member : nullptr); });
}

void zr_addObject(NSMutableSet* self, NSObject* object) {
    if (self && object) {
        self->addObject(object);
    }
}

void zr_removeObject(NSMutableSet* self, NSObject* object) {
    if (self) {
        self->removeObject(object);
    }
}

bool zr_containsObject(NSMutableSet* self, NSObject* object) {
    return self && self->containsObject(object);
}

void zr_addObjectsFromArray(NSMutableSet* self, NSArray* objects) {
    if (self) {
        self->addObjectsFromArray(objects);
    }
}

} // namespace zr
