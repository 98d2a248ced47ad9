#pragma once

#include <zrbasic/platform/runtime/association.h>
#include <zrbasic/platform/runtime/object.h>

#include <mutex>
#include <vector>

namespace zr::detail {

/// What only some objects have; made when first needed, gone with the object.
struct ObjectExtras {
    struct Association {
        const void* key;
        objc_AssociationPolicy policy;
        NSObject* value;
    };

    ~ObjectExtras();

    SpinLock lock;
    /// Held values are retained by hand, because the assign policy holds none.
    std::vector<Association> associations;
    std::atomic<std::recursive_mutex*> mutex{nullptr};
    /// Who watches the object through key-value observing; set at most once.
    std::atomic<NSObject*> observationInfo{nullptr};
};

/// The object's extras; null when it has none yet.
inline ObjectExtras* extrasOf(const NSObject* object) {
    return headerOf(object)->extras.load(std::memory_order_acquire);
}

ObjectExtras& ensureExtras(const NSObject* object);

} // namespace zr::detail
