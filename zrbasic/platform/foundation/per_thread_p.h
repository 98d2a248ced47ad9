#pragma once

#include <memory>

namespace zr::detail {

/// One `T` for each thread that asks for it, gone with the thread.
///
/// Only a pointer lies in thread storage, where it is reached without a call. Destructors that run while the thread
/// ends, after its `T` is gone, get null.
template <class T>
class PerThread {
  public:
    /// Null when the thread has not asked for one yet.
    [[nodiscard]] static T* find() { return s_instance; }
    /// Null only when the thread is ending.
    [[nodiscard]] static T* ensure() { return s_instance ? s_instance : make(); }

  private:
    [[gnu::noinline]] static T* make() {
        static thread_local bool isOver = false;
        struct Owner {
            std::unique_ptr<T> instance = std::make_unique<T>();
            ~Owner() {
                s_instance = nullptr;
                isOver = true;
            }
        };
        if (isOver) {
            return nullptr;
        }
        static thread_local Owner owner;
        s_instance = owner.instance.get();
        return s_instance;
    }

#if defined(__linux__)
    [[gnu::tls_model("initial-exec")]]
#endif
    static inline constinit thread_local T* s_instance = nullptr;
};

} // namespace zr::detail
