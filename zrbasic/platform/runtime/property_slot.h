#pragma once

#include <zrbasic/platform/runtime/class.h>

#include <string>

namespace zr {

/// In a property declaration: the object is copied when it is set, so that a mutable value handed in cannot change
/// behind the property's back.
template <class T>
class Copied;

namespace detail {

/// The variable behind a property, and what its accessors take and give. This one holds a plain value.
template <class T>
class Slot {
  public:
    using Get = T;
    using Set = std::conditional_t<std::is_scalar_v<T>, T, const T&>;
    static constexpr bool isObject = false;
    static constexpr const char* storage = "";

    [[nodiscard]] const T& get() const { return m_value; }
    void set(Set value) { m_value = value; }
    Slot& operator=(Set value) {
        m_value = value;
        return *this;
    }

    static std::string encoding() { return typeEncoding<T>(); }

  private:
    T m_value{};
};

/// What the object kinds share: any object may be stored, whatever its class, because key-value setting does not
/// look; the typed getter answers null for one of another kind.
template <class T>
class ObjectSlot {
  public:
    using Get = Ref<T>;
    using Set = T*;
    static constexpr bool isObject = true;

    static std::string encoding() {
        if constexpr (std::is_same_v<T, NSObject>) {
            return "@";
        } else if constexpr (std::is_same_v<T, Class>) {
            return "#";
        } else {
            // The name alone: classes may name each other, or themselves, while they are being declared.
            return std::string("@\"") + T::zrClassName() + '"';
        }
    }
};

template <class T>
class Slot<Ref<T>> : public ObjectSlot<T> {
  public:
    static constexpr const char* storage = "&";

    [[nodiscard]] Ref<T> get() const { return Ref<T>(cast<T>(m_object)); }
    [[nodiscard]] id getObject() const { return m_object; }
    void set(NSObject* object) { m_object = id(object); }
    Slot& operator=(T* object) {
        set(object);
        return *this;
    }

  private:
    id m_object;
};

template <class T>
class Slot<Copied<T>> : public ObjectSlot<T> {
  public:
    static constexpr const char* storage = "C";

    [[nodiscard]] Ref<T> get() const { return Ref<T>(cast<T>(m_object)); }
    [[nodiscard]] id getObject() const { return m_object; }
    void set(NSObject* object) { m_object = object ? object->copy() : id(); }
    Slot& operator=(T* object) {
        set(object);
        return *this;
    }

  private:
    id m_object;
};

template <class T>
class Slot<Weak<T>> : public ObjectSlot<T> {
  public:
    static constexpr const char* storage = "W";

    [[nodiscard]] Ref<T> get() const { return Ref<T>(cast<T>(m_object.lock())); }
    [[nodiscard]] id getObject() const { return m_object.lock(); }
    void set(NSObject* object) { m_object = Weak<NSObject>(object); }
    Slot& operator=(T* object) {
        set(object);
        return *this;
    }

  private:
    Weak<NSObject> m_object;
};

} // namespace detail

} // namespace zr
