#pragma once

#include <zrbasic/platform/runtime/object.h>

#include <mutex>

namespace zr {

/// Holds an object's own lock while it stands: `const Synchronized lock(object);`.
///
/// Every object has one lock; the same thread may take it again. A null object locks nothing. The object is kept
/// alive meanwhile. The lock is given back on every way out, exceptions included.
class [[nodiscard]] ZR_EXPORT Synchronized {
  public:
    explicit Synchronized(const NSObject* object);
    ~Synchronized();
    Synchronized(const Synchronized&) = delete;
    Synchronized& operator=(const Synchronized&) = delete;

  private:
    id m_object;
    std::recursive_mutex* m_mutex = nullptr;
};

} // namespace zr
