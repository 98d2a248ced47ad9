#include <zrbasic/platform/foundation/hidden_class.h>

#include <zrbasic/platform/runtime/message.h>

#include <mutex>

namespace zr::detail {

Class* ensureSubclass(Class* parent, const std::string& name) {
    // Allocating and registering are two steps, between which two threads could make the class twice.
    static auto* const mutex = new std::mutex;
    const std::lock_guard lock(*mutex);
    std::string candidate = name;
    for (int number = 2;; ++number) {
        if (Class* const known = objc_getClass(candidate)) {
            if (known->parent() == parent) {
                return known;
            }
        } else {
            Class* const made = objc_allocateClassPair(parent, candidate);
            objc_registerClassPair(made);
            return made;
        }
        // Two compiled classes may share one name; each needs a subclass of its own.
        candidate = name + '_' + std::to_string(number);
    }
}

Class* classBehind(NSObject* self, const Class* hiding) {
    Class* const parent = hiding->parent();
    const bool hides = lookUp(parent, "class"_sel) != lookUp(NSObject::classObject(), "class"_sel);
    return hides ? sendSuper<Class*>(self, parent, "class"_sel) : parent;
}

} // namespace zr::detail
