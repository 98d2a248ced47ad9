#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>
#include <zrbasic/platform/runtime/selector.h>
#include <zrbasic/platform/runtime/types.h>

#include <cstddef>

namespace zr {

class Class;
class NSInvocation;
class NSMethodSignature;
class NSString;
class Protocol;

namespace detail {
class Runtime;
}

ZR_EXPORT Class* object_setClass(NSObject* object, Class* newClass);

/// The root of all objects.
///
/// Objects are counted, live on the heap, and are made with `make<T>()`; `Ref<T>` keeps one, `Weak<T>` watches one.
/// Every object has a class record, so that kind tests, messages by name, property lists, attachments and class
/// switching work on all of them. A class declares itself with `ZR_OBJECT` (see declare.h).
///
/// Counting, weak references, attachments and locks are safe from any thread; an object's own state is not, unless
/// its class says so.
class ZR_EXPORT NSObject {
  public:
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;

    [[nodiscard]] static Class* classObject();
    /// The class that the object was compiled as, whatever it has been switched to since. Never null.
    [[nodiscard]] virtual Class* nativeClass() const;
    /// The actual class, made at run time perhaps; what `object_getClass` answers. Never null.
    [[nodiscard]] Class* isa() const { return m_isa.load(std::memory_order_relaxed); }

    /// Sets up a fresh, zeroed object and gives it back; `make<T>()` calls it. The plain one changes nothing.
    virtual id init();

    /// The class that the object reports: a class switched to behind the scenes hides itself here.
    [[nodiscard]] Class* class_() const;
    [[nodiscard]] Class* superclass() const;
    /// Whether the reported class is `kind` or descends from it; false for null.
    [[nodiscard]] bool isKindOfClass(const Class* kind) const;
    [[nodiscard]] bool isMemberOfClass(const Class* kind) const;
    /// Whether the reported class, or an ancestor, adopts `protocol`; false for null.
    [[nodiscard]] bool conformsToProtocol(const Protocol* protocol) const;
    /// Whether the reported class has the operation, or an ancestor; a class answers for its class operations.
    [[nodiscard]] virtual bool respondsToSelector(SEL selector) const;

    /// Value equality for values, identity otherwise; false for null.
    [[nodiscard]] virtual bool isEqual(NSObject* other) const;
    /// The comparison methods' name for `isEqual`.
    [[nodiscard]] bool isEqualTo(NSObject* other) const;
    /// Equal objects have equal hashes.
    [[nodiscard]] virtual NSUInteger hash() const;

    /// The object as text, for people; "<Class: 0x...>" unless the class knows better. Never null.
    [[nodiscard]] virtual Ref<NSString> description() const;
    [[nodiscard]] virtual Ref<NSString> debugDescription() const;

    /// An equal object that will not change: an immutable value is its own copy. Raises
    /// `NSInvalidArgumentException` when the class has no notion of copying.
    [[nodiscard]] virtual id copy() const;
    /// A new object of the mutable kind; raises like `copy`.
    [[nodiscard]] virtual id mutableCopy() const;

    /// Sends the message named `selector`; null when the operation gives no object.
    id performSelector(SEL selector);
    id performSelector_withObject(SEL selector, NSObject* argument);

    /// The types of the operation named `selector`, or null when there is none.
    [[nodiscard]] virtual Ref<NSMethodSignature> methodSignatureForSelector(SEL selector) const;
    /// Another object to ask instead, for a message that this one does not understand; null for none.
    [[nodiscard]] virtual id forwardingTargetForSelector(SEL selector) const;
    /// Answers a message that has a signature but no implementation; raises as `doesNotRecognizeSelector`.
    virtual void forwardInvocation(NSInvocation* invocation);
    /// Raises `NSInvalidArgumentException`, naming the class and the operation.
    [[noreturn]] void doesNotRecognizeSelector(SEL selector) const;

    void* operator new(std::size_t size);
    void operator delete(void* memory) noexcept;

  protected:
    NSObject();
    virtual ~NSObject();

  private:
    friend void detail::destroyObject(NSObject* object) noexcept;
    friend Class* object_setClass(NSObject* object, Class* newClass);
    friend class Class;
    friend class detail::Runtime;
    template <class T>
    friend Ref<T> alloc();

    std::atomic<Class*> m_isa;
};

} // namespace zr
