#pragma once

#include <zrbasic/platform/foundation/enumerator.h>

namespace zr::detail {

/// A guarded enumerator over a collection; the walk starts when the first object is asked for.
template <class Collection>
[[nodiscard]] Ref<NSEnumerator> enumeratorOver(const Collection* collection) {
    return makeEnumerator([collection = Ref<Collection>(const_cast<Collection*>(collection)),
                           iterator = CollectionIterator<Collection>(), isStarted = false]() mutable -> id {
        if (!isStarted) {
            iterator = CollectionIterator<Collection>(collection);
            isStarted = true;
        } else if (iterator != std::default_sentinel) {
            ++iterator;
        }
        return *iterator;
    });
}

} // namespace zr::detail
