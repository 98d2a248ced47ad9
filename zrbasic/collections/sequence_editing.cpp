#include <zrbasic/collections/sequence_editing.h>

#include <zrbasic/collections/equal_objects_p.h>
#include <zrbasic/platform/foundation/mutable_array.h>

#include <algorithm>
#include <vector>

namespace zr {

namespace {

/// The elements that equal none of the unwanted ones.
std::vector<id> elementsWithout(std::span<const id> elements, std::span<const id> unwanted) {
    const detail::EqualObjects equalObjects(unwanted);
    std::vector<id> kept;
    kept.reserve(elements.size());
    std::copy_if(elements.begin(), elements.end(), std::back_inserter(kept),
                 [&](const id& element) { return !equalObjects.contains(element); });
    return kept;
}

std::vector<id> elementsOf(NSArray* array) {
    return {array->elements().begin(), array->elements().end()};
}

} // namespace

ZR_GROUP(NSArray, ZRXHelper) {
    is.method<&arrayByRemoveObjectsWhere>("arrayByRemoveObjectsWhere:");
    is.method<&zr_removeObjectsFromIndex>("zr_removeObjectsFromIndex:");
    is.method<&replaceObjectAtIndex_withObject>("replaceObjectAtIndex:withObject:");
    is.method<&zr_replaceObjectsFromIndex_withObjects>("zr_replaceObjectsFromIndex:withObjects:");
}

ZR_GROUP(NSMutableArray, ZRXHelper) {
    is.method<&removeObjectsFromIndex>("removeObjectsFromIndex:");
    is.method<&replaceObjectsFromIndex_withObjects>("replaceObjectsFromIndex:withObjects:");
    is.method<static_cast<void (*)(NSMutableArray*, NSObject*)>(&zr_addObject)>("zr_addObject:");
    is.method<&removeObjectsWhere>("removeObjectsWhere:");
}

Ref<NSMutableArray> arrayByRemoveObjectsWhere(NSArray* self, IndexedPredicate predicate) {
    if (!self) {
        return {};
    }
    std::vector<id> elements = elementsOf(self);
    std::vector<id> unwanted;
    if (predicate) {
        NSUInteger index = 0;
        for (const id& element : self) {
            if (predicate(element, index++)) {
                unwanted.push_back(element);
            }
        }
    }
    return NSMutableArray::fromElements(unwanted.empty() ? std::move(elements) : elementsWithout(elements, unwanted));
}

Ref<NSArray> zr_removeObjectsFromIndex(NSArray* self, NSUInteger index) {
    return self && self->count() > index ? self->subarrayWithRange({0, index}) : Ref<NSArray>(self);
}

Ref<NSMutableArray> replaceObjectAtIndex_withObject(NSArray* self, NSUInteger index, NSObject* object) {
    if (!self) {
        return {};
    }
    if (auto* const changeable = cast<NSMutableArray>(self)) {
        changeable->replaceObjectAtIndex_withObject(index, object);
        return changeable;
    }
    Ref<NSMutableArray> result = NSMutableArray::arrayWithArray(self);
    if (index < result->count()) {
        result->removeObjectAtIndex(index);
    }
    if (object) {
        result->insertObject_atIndex(object, index);
    }
    return result;
}

Ref<NSMutableArray> zr_replaceObjectsFromIndex_withObjects(NSArray* self, NSUInteger index, NSArray* objects) {
    if (!self) {
        return {};
    }
    Ref<NSMutableArray> result = NSMutableArray::arrayWithArray(self);
    replaceObjectsFromIndex_withObjects(result, index, objects);
    return result;
}

void removeObjectsFromIndex(NSMutableArray* self, NSUInteger index) {
    if (self && self->count() > index) {
        self->removeObjectsInRange({index, self->count() - index});
    }
}

void replaceObjectsFromIndex_withObjects(NSMutableArray* self, NSUInteger index, NSArray* objects) {
    // What is removed may have held the array itself, or be the very list that is to be added.
    const Ref<NSMutableArray> array(self);
    const Ref<NSArray> added(objects);
    if (array) {
        removeObjectsFromIndex(array, index);
        array->addObjectsFromArray(added);
    }
}

void zr_addObject(NSMutableArray* self, NSObject* object) {
    if (self && object) {
        self->addObject(object);
    }
}

void removeObjectsWhere(NSMutableArray* self, ElementPredicate predicate) {
    if (!predicate) {
        return;
    }
    // The predicate may let go of the array.
    const Ref<NSMutableArray> array(self);
    std::vector<id> unwanted;
    for (const id& element : array) {
        if (predicate(element)) {
            unwanted.push_back(element);
        }
    }
    if (!unwanted.empty()) {
        // A list of its own, because asking foreign elements may run anybody's code.
        const std::vector<id> elements = elementsOf(array);
        array->setArray(NSArray::fromElements(elementsWithout(elements, unwanted)));
    }
}

} // namespace zr
