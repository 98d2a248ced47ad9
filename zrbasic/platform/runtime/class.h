#pragma once

#include <zrbasic/platform/runtime/object.h>
#include <zrbasic/platform/runtime/property.h>
#include <zrbasic/platform/runtime/signature.h>

#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <unordered_map>
#include <vector>

namespace zr {

namespace detail {
class Runtime;
struct NativeClass;
} // namespace detail

/// One operation of one class: its name, its implementation, its types.
struct MethodRecord {
    SEL name;
    IMP implementation;
    std::string types;
    Class* owner;
};

/// Borrowed from its class, for ever: classes and their methods are never freed.
using Method = MethodRecord*;

/// A class record: name, parent, operations, properties and adopted protocols. Itself an object whose own class, the
/// metaclass, holds the class-level operations.
///
/// Records are made once and live as long as the process. All functions on them are safe from any thread.
class ZR_EXPORT Class final : public NSObject {
  public:
    ~Class() override;
    [[nodiscard]] Class* nativeClass() const override;

    [[nodiscard]] const std::string& name() const { return m_name; }
    /// The parent; null for the root.
    [[nodiscard]] Class* parent() const { return m_parent; }
    /// Whether this is the class of a class.
    [[nodiscard]] bool isMetaclass() const { return m_isMetaclass; }
    /// Whether this is `other` or descends from it.
    [[nodiscard]] bool descendsFrom(const Class* other) const {
        return m_depth >= other->m_depth && m_ancestors[other->m_depth] == other;
    }
    /// The nearest class, this one or an ancestor, that was compiled rather than made at run time.
    [[nodiscard]] Class* nativeAncestor() const { return m_native; }
    /// Whether nothing was added, replaced or exchanged since the class was declared, so that accessors may go
    /// straight to their variables.
    [[nodiscard]] bool isDirect() const { return m_direct.load(std::memory_order_relaxed); }

    [[nodiscard]] bool respondsToSelector(SEL selector) const override;
    [[nodiscard]] Ref<NSString> description() const override;
    [[nodiscard]] id copy() const override;

  private:
    friend class detail::Runtime;
    struct Adoption {
        Protocol* protocol;
        void* (*cast)(NSObject*);
    };

    Class(std::string_view name, Class* parent, Class* metaclass, bool isMetaclass);

    std::string m_name;
    Class* m_parent;
    Class* m_native;
    std::uint32_t m_depth;
    bool m_isMetaclass;
    std::atomic<bool> m_direct{true};
    std::unique_ptr<const Class*[]> m_ancestors;
    NSObject* (*m_create)() = nullptr;
    const std::type_info* m_type = nullptr;
    std::unordered_map<SEL, std::unique_ptr<MethodRecord>> m_methods;
    std::vector<std::unique_ptr<PropertyRecord>> m_properties;
    std::vector<Adoption> m_adoptions;
    std::vector<Class*> m_children;
};

/// `object` as a `T` when its class is `T` or descends from it; null otherwise, and for null.
template <class T>
[[nodiscard]] T* cast(const NSObject* object) {
    if (!object) {
        return nullptr;
    }
    if constexpr (std::is_same_v<T, NSObject>) {
        return const_cast<NSObject*>(object);
    } else if constexpr (std::is_same_v<T, Class>) {
        return object->isa()->isMetaclass() ? static_cast<Class*>(const_cast<NSObject*>(object)) : nullptr;
    } else {
        return object->isa()->descendsFrom(T::classObject()) ? static_cast<T*>(const_cast<NSObject*>(object)) : nullptr;
    }
}

/// The same for an object that only a temporary holds: the result holds it from now on.
template <class T, class U>
[[nodiscard]] Ref<T> cast(Ref<U>&& object) {
    T* const wanted = cast<T>(object.get());
    if (!wanted) {
        return nullptr;
    }
    (void)object.leak();
    return Ref<T>(adopt, wanted);
}

/// A fresh object that no initialiser has run on yet.
template <class T>
[[nodiscard]] Ref<T> alloc() {
    static_assert(alignof(T) <= alignof(std::max_align_t), "objects are allocated with ordinary alignment");
    Class* const ownClass = T::classObject();
    Ref<T> object(adopt, new T);
    object->NSObject::m_isa.store(ownClass, std::memory_order_relaxed);
    return object;
}

/// A new object, set up by `init`. Null only when `init` gives null.
template <class T>
[[nodiscard]] Ref<T> make() {
    Ref<T> fresh = alloc<T>();
    const id ready = fresh->init();
    return ready.get() == fresh.get() ? fresh : Ref<T>(cast<T>(ready));
}

/// A new object, set up by the given initialiser: `make<ZRInputFormatter>(&ZRInputFormatter::initWithMaxLength, 5)`.
/// The initialiser may be an inherited one.
template <class T, class R, class Base, class... Parameters, class... Arguments>
requires std::is_base_of_v<Base, T>
[[nodiscard]] Ref<T> make(R (Base::*initialiser)(Parameters...), Arguments&&... arguments) {
    Ref<T> fresh = alloc<T>();
    const id ready = (fresh.get()->*initialiser)(std::forward<Arguments>(arguments)...);
    return ready.get() == fresh.get() ? fresh : Ref<T>(cast<T>(ready));
}

/// The actual class of `object`; null for null. The class of a class is its metaclass.
[[nodiscard]] ZR_EXPORT Class* object_getClass(const NSObject* object);
/// Switches one object to another class and gives back the old one. The new class must be built on what the object
/// was compiled as; anything else raises `NSInvalidArgumentException`. Null does nothing.
Class* object_setClass(NSObject* object, Class* newClass);
/// The name of the object's actual class; "nil" for null.
[[nodiscard]] ZR_EXPORT const char* object_getClassName(const NSObject* object);

/// The class of that name; null when there is none. Compiled classes are known from their first use on.
[[nodiscard]] ZR_EXPORT Class* objc_getClass(std::string_view name);
/// A new class under `parent`, not yet found by name; null when the name is taken or empty, or `parent` is null.
[[nodiscard]] ZR_EXPORT Class* objc_allocateClassPair(Class* parent, std::string_view name);
/// Makes an allocated class known by its name; null does nothing. When another class took the name meanwhile, the
/// class stays usable but unknown.
ZR_EXPORT void objc_registerClassPair(Class* pair);
/// A fresh instance of any class, on which no initialiser has run; null for null and for classes that only serve as
/// ancestors.
[[nodiscard]] ZR_EXPORT id class_createInstance(Class* ofClass);

/// The class's name; "nil" for null.
[[nodiscard]] ZR_EXPORT const char* class_getName(const Class* ofClass);
[[nodiscard]] ZR_EXPORT Class* class_getSuperclass(const Class* ofClass);
[[nodiscard]] ZR_EXPORT bool class_isMetaClass(const Class* ofClass);

/// The operation in the class or the nearest ancestor that has it; null when there is none, and for null arguments.
[[nodiscard]] ZR_EXPORT Method class_getInstanceMethod(const Class* ofClass, SEL selector);
[[nodiscard]] ZR_EXPORT Method class_getClassMethod(const Class* ofClass, SEL selector);
[[nodiscard]] ZR_EXPORT IMP class_getMethodImplementation(const Class* ofClass, SEL selector);
[[nodiscard]] ZR_EXPORT bool class_respondsToSelector(const Class* ofClass, SEL selector);
/// Adds an operation to this very class. False, and nothing changed, when the class itself has it already or an
/// argument is null; overriding an inherited operation is fine. Without `types` the implementation's own are taken.
ZR_EXPORT bool class_addMethod(Class* toClass, SEL selector, IMP implementation, const char* types = nullptr);
/// Adds or replaces in this very class; gives back the old implementation, null when it added.
ZR_EXPORT IMP class_replaceMethod(Class* inClass, SEL selector, IMP implementation, const char* types = nullptr);
/// The class's own operations, in no particular order.
[[nodiscard]] ZR_EXPORT std::vector<Method> class_copyMethodList(const Class* ofClass);

[[nodiscard]] ZR_EXPORT SEL method_getName(Method method);
[[nodiscard]] ZR_EXPORT IMP method_getImplementation(Method method);
[[nodiscard]] ZR_EXPORT const char* method_getTypeEncoding(Method method);
ZR_EXPORT IMP method_setImplementation(Method method, IMP implementation);
/// Swaps two implementations where they are defined, for the defining classes and all that descend from them. Does
/// nothing when either is null.
ZR_EXPORT void method_exchangeImplementations(Method first, Method second);

/// The class's own properties in declaration order; empty for null.
[[nodiscard]] ZR_EXPORT std::vector<Property> class_copyPropertyList(const Class* ofClass);
/// The property of that name in the class or the nearest ancestor that declares it; null when there is none.
[[nodiscard]] ZR_EXPORT Property class_getProperty(const Class* ofClass, std::string_view name);
/// Declares a property at run time; accessors are added as methods. False when the class itself has one of that name.
ZR_EXPORT bool class_addProperty(Class* toClass, std::string_view name, std::vector<PropertyAttribute> attributes);

/// Whether this very class adopts the protocol.
[[nodiscard]] ZR_EXPORT bool class_conformsToProtocol(const Class* ofClass, const Protocol* protocol);
/// Lets a class adopt a protocol at run time; false when it already does or an argument is null.
ZR_EXPORT bool class_addProtocol(Class* toClass, Protocol* protocol);

} // namespace zr
