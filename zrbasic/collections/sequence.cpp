#include <zrbasic/collections/sequence.h>

#include <zrbasic/platform/foundation/capacity_p.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <utility>
#include <vector>

namespace zr {

namespace {

/// Calls `visit` with every element from index `start` on, whatever becomes of the array meanwhile.
template <class Visit>
void walkByIndex(NSArray* self, NSUInteger start, Visit&& visit) {
    // A callback may let go of the array.
    const Ref<NSArray> array(self);
    if (!cast<NSMutableArray>(self) && self->isa()->isDirect()) {
        // Nothing can be taken out of this one, so the elements need not be kept one by one.
        for (NSUInteger index = start; index < self->count(); ++index) {
            visit(self->elements()[index].get(), index);
        }
        return;
    }
    for (NSUInteger index = start; index < self->count(); ++index) {
        const id element = self->objectAtIndex(index);
        visit(element.get(), index);
    }
}

template <class Transform>
Ref<NSMutableArray> mapped(NSArray* self, Transform&& transform) {
    std::vector<id> results;
    results.reserve(detail::roomFor(self->count()));
    walkByIndex(self, 0, [&](NSObject* element, NSUInteger index) {
        if (id result = transform(element, index)) {
            results.push_back(std::move(result));
        }
    });
    return NSMutableArray::fromElements(std::move(results));
}

} // namespace

ZR_GROUP(NSArray, ZRXHelper) {
    is.method<&zr_mapI>("zr_mapI:");
    is.method<static_cast<Ref<NSMutableArray> (*)(NSArray*, ElementTransform)>(&zr_map)>("zr_map:");
    is.method<&zr_flatMap>("zr_flatMap:");
    is.method<static_cast<id (*)(NSArray*, ElementPredicate)>(&zr_exists)>("zr_exists:");
    is.method<&zr_reduce>("zr_reduce:");
    is.method<static_cast<Ref<NSMutableArray> (*)(NSArray*, IndexedPredicate)>(&zr_filter)>("zr_filter:");
    is.method<&zr_distinct>("zr_distinct");
    is.method<&zr_objectAtIndex>("zr_objectAtIndex:");
    is.method<&zr_reverse>("zr_reverse");
    is.classMethod<&detail::repeatMap>("zr_repeat:map:");
}

Ref<NSMutableArray> zr_mapI(NSArray* self, IndexedTransform transform) {
    if (!self) {
        return {};
    }
    return transform ? mapped(self, transform) : NSMutableArray::array();
}

Ref<NSMutableArray> zr_map(NSArray* self, ElementTransform transform) {
    if (!self) {
        return {};
    }
    return transform ? mapped(self, [transform](NSObject* element, NSUInteger) { return transform(element); })
                     : NSMutableArray::array();
}

Ref<NSMutableArray> zr_flatMap(NSArray* self, ElementTransform transform) {
    if (!self) {
        return {};
    }
    std::vector<id> results;
    if (transform) {
        results.reserve(detail::roomFor(self->count()));
        for (const id& element : self) {
            id result = transform(element);
            if (const auto* const several = cast<NSArray>(result)) {
                results.insert(results.end(), several->elements().begin(), several->elements().end());
            } else if (result) {
                results.push_back(std::move(result));
            }
        }
    }
    return NSMutableArray::fromElements(std::move(results));
}

id zr_exists(NSArray* self, ElementPredicate predicate) {
    if (predicate) {
        for (const id& element : self) {
            if (predicate(element)) {
                return element;
            }
        }
    }
    return {};
}

id zr_reduce(NSArray* self, ElementCombiner combiner) {
    if (!self) {
        return {};
    }
    id accumulated = self->firstObject();
    walkByIndex(self, 1, [&](NSObject* element, NSUInteger) {
        // Assigned when the call is over, because the combiner was lent the old value.
        accumulated = combiner ? combiner(accumulated, element) : id();
    });
    return accumulated;
}

Ref<NSMutableArray> zr_filter(NSArray* self, IndexedPredicate predicate) {
    if (!self) {
        return {};
    }
    std::vector<id> results;
    if (predicate) {
        results.reserve(detail::roomFor(self->count()));
        walkByIndex(self, 0, [&](NSObject* element, NSUInteger index) {
            if (predicate(element, index)) {
                results.push_back(self->objectAtIndex(index));
            }
        });
    }
    return NSMutableArray::fromElements(std::move(results));
}

Ref<NSArray> zr_distinct(NSArray* self) {
    return self ? NSSet::setWithArray(self)->allObjects() : nullptr;
}

id zr_objectAtIndex(NSArray* self, NSUInteger index) {
    return self && index < self->count() ? self->objectAtIndex(index) : id();
}

Ref<NSMutableArray> zr_reverse(NSArray* self) {
    if (!self) {
        return {};
    }
    const Synchronized lock(self);
    std::vector<id> results;
    results.reserve(self->count());
    for (NSUInteger index = self->count(); index-- > 0;) {
        results.push_back(zr_objectAtIndex(self, index));
    }
    return NSMutableArray::fromElements(std::move(results));
}

namespace detail {

Ref<NSMutableArray> repeatMap(NSUInteger count, IndexTransform transform) {
    std::vector<id> results;
    if (transform) {
        results.reserve(roomFor(count));
        for (NSUInteger index = 0; index < count; ++index) {
            if (id result = transform(index)) {
                results.push_back(std::move(result));
            }
        }
    }
    return NSMutableArray::fromElements(std::move(results));
}

} // namespace detail

} // namespace zr
