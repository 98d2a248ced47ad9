#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/threading.h>

#include <atomic>
#include <cassert>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>
#include <utility>

namespace zr {

class NSObject;

namespace detail {

struct ObjectExtras;

/// The counts of an object. They stand in front of it in memory, apart from it, so that they outlive it: the memory
/// stays until the last weak reference has let go, while the object itself ends with its last strong one.
struct ObjectHeader {
    std::atomic<std::uint32_t> strong{1};
    /// All strong references together hold one of these.
    std::atomic<std::uint32_t> weak{1};
    std::atomic<ObjectExtras*> extras{nullptr};
};
static_assert(sizeof(ObjectHeader) == 16);

inline ObjectHeader* headerOf(const NSObject* object) {
    return reinterpret_cast<ObjectHeader*>(const_cast<char*>(reinterpret_cast<const char*>(object)) -
                                           sizeof(ObjectHeader));
}

/// Ends the object's life: its own variables first, then what others attached to it.
ZR_EXPORT void destroyObject(NSObject* object) noexcept;
ZR_EXPORT void freeObjectMemory(ObjectHeader* header) noexcept;

inline void retain(const NSObject* object) {
    std::atomic<std::uint32_t>& strong = headerOf(object)->strong;
    assert(strong.load(std::memory_order_relaxed) != 0 && "an object must not be retained while it is destroyed");
    if (isSingleThreaded()) {
        strong.store(strong.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    } else {
        strong.fetch_add(1, std::memory_order_relaxed);
    }
}

inline void release(NSObject* object) {
    std::atomic<std::uint32_t>& strong = headerOf(object)->strong;
    if (isSingleThreaded()) {
        const std::uint32_t left = strong.load(std::memory_order_relaxed) - 1;
        strong.store(left, std::memory_order_relaxed);
        if (left == 0) {
            destroyObject(object);
        }
    } else if (strong.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        destroyObject(object);
    }
}

/// Takes a strong reference unless the object's end has begun.
inline bool tryRetain(const NSObject* object) {
    std::atomic<std::uint32_t>& strong = headerOf(object)->strong;
    std::uint32_t count = strong.load(std::memory_order_relaxed);
    if (isSingleThreaded()) {
        if (count == 0) {
            return false;
        }
        strong.store(count + 1, std::memory_order_relaxed);
        return true;
    }
    while (count != 0) {
        if (strong.compare_exchange_weak(count, count + 1, std::memory_order_acquire, std::memory_order_relaxed)) {
            return true;
        }
    }
    return false;
}

inline void retainWeakly(const NSObject* object) {
    headerOf(object)->weak.fetch_add(1, std::memory_order_relaxed);
}

inline void releaseWeakly(const NSObject* object) {
    ObjectHeader* const header = headerOf(object);
    if (header->weak.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        freeObjectMemory(header);
    }
}

} // namespace detail

struct AdoptTag {};
/// Says that a reference takes over a count that already exists.
inline constexpr AdoptTag adopt;

/// A strong reference to an object, or null.
///
/// Becomes a plain pointer by itself wherever one is borrowed; the other way round it is written out, except when a
/// borrowed pointer is to be kept. `T` may be incomplete until the reference is made from, or used as, a pointer.
/// Counting is safe from any thread; one reference variable is not shared between threads without a lock.
template <class T>
class Ref {
  public:
    using Element = T;

    constexpr Ref() = default;
    constexpr Ref(std::nullptr_t) {}

    /// Keeps a borrowed object.
    Ref(T* object) : m_object(object) {
        if (m_object) {
            detail::retain(m_object);
        }
    }

    /// Takes over the count that a new object is born with.
    Ref(AdoptTag, T* object) : m_object(object) {}

    Ref(const Ref& other) : m_object(other.m_object) {
        if (m_object) {
            detail::retain(m_object);
        }
    }

    Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    template <class U>
    requires(!std::is_same_v<U, T> && std::is_convertible_v<U*, T*>) Ref(const Ref<U>& other)
        : Ref(static_cast<T*>(other.get())) {}

    template <class U>
    requires(!std::is_same_v<U, T> && std::is_convertible_v<U*, T*>) Ref(Ref<U>&& other)
    noexcept : m_object(other.leak()) {}

    ~Ref() {
        if (m_object) {
            detail::release(m_object);
        }
    }

    // The new value stands before the old one is let go, so that whatever the release triggers sees it.
    Ref& operator=(const Ref& other) {
        Ref(other).swap(*this);
        return *this;
    }

    Ref& operator=(Ref&& other) noexcept {
        Ref(std::move(other)).swap(*this);
        return *this;
    }

    void swap(Ref& other) noexcept { std::swap(m_object, other.m_object); }

    [[nodiscard]] T* get() const { return static_cast<T*>(m_object); }
    operator T*() const { return get(); }
    T* operator->() const { return get(); }
    T& operator*() const { return *get(); }
    explicit operator bool() const { return m_object != nullptr; }

    /// Gives the count away; whoever takes it must adopt it.
    [[nodiscard]] T* leak() { return static_cast<T*>(std::exchange(m_object, nullptr)); }

    friend bool operator==(const Ref& a, const Ref& b) { return a.m_object == b.m_object; }
    friend bool operator==(const Ref& a, std::nullptr_t) { return a.m_object == nullptr; }
    template <class U>
    friend bool operator==(const Ref& a, U* b) {
        return a.get() == b;
    }

  private:
    NSObject* m_object = nullptr;
};

template <class T, class U>
requires(!std::is_same_v<T, U>) bool operator==(const Ref<T>& a, const Ref<U>& b) {
    return a.get() == b.get();
}

/// Any object: the type of values whose class is known only while the program runs.
using id = Ref<NSObject>;

/// A reference that does not keep its object alive and reads null from the moment the object's end begins.
///
/// Reading takes a strong reference, so what was read stays. Safe against the object's end on any thread; one weak
/// variable is not written and read by two threads without a lock.
template <class T>
class Weak {
  public:
    constexpr Weak() = default;
    constexpr Weak(std::nullptr_t) {}

    Weak(T* object) : m_object(object) {
        if (m_object) {
            detail::retainWeakly(m_object);
        }
    }

    template <class U>
    requires(std::is_convertible_v<U*, T*>) Weak(const Ref<U>& object) : Weak(static_cast<T*>(object.get())) {}

    Weak(const Weak& other) : m_object(other.m_object) {
        if (m_object) {
            detail::retainWeakly(m_object);
        }
    }

    Weak(Weak&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    ~Weak() {
        if (m_object) {
            detail::releaseWeakly(m_object);
        }
    }

    Weak& operator=(Weak other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }

    /// The object, kept alive by the result; null when there is none or its end has begun.
    [[nodiscard]] Ref<T> lock() const {
        if (m_object && detail::tryRetain(m_object)) {
            return Ref<T>(adopt, static_cast<T*>(m_object));
        }
        return {};
    }

    /// Whether it was made from `object`, which may be at its end by now; no reference is taken.
    [[nodiscard]] bool refersTo(const NSObject* object) const { return m_object == object; }

    /// Whether `lock` would give null now.
    [[nodiscard]] bool expired() const {
        return !m_object || detail::headerOf(m_object)->strong.load(std::memory_order_relaxed) == 0;
    }

  private:
    NSObject* m_object = nullptr;
};

} // namespace zr

template <class T>
struct std::hash<zr::Ref<T>> {
    std::size_t operator()(const zr::Ref<T>& reference) const noexcept {
        return std::hash<const void*>()(reference.get());
    }
};
