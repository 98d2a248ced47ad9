#pragma once

#include <zrbasic/platform/runtime/class.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/property_slot.h>
#include <zrbasic/platform/runtime/protocol.h>

#include <utility>

/// The most properties and listed methods that one declaration may hold.
#define ZR_DETAIL_MOST_ENTRIES 256

namespace zr {

class ClassBuilder;

namespace detail {

// A declaration numbers its entries while the compiler reads it: every entry asks which overload of `zrPosition` is
// the best so far and adds a better one. Afterwards the entries can be walked in the order they were written in.
template <int N>
struct Rank : Rank<N - 1> {};
template <>
struct Rank<0> {};
template <int N>
struct Position {
    static constexpr int value = N;
};

template <FixedText Name>
[[nodiscard]] SEL selectorOf() {
    static const SEL selector = sel_registerName(std::string_view(Name.data, sizeof(Name.data) - 1));
    return selector;
}

/// An argument as the member wants it; an object of another kind than declared arrives as null.
template <class P>
decltype(auto) fromArgument(Argument<P> argument) {
    using Plain = std::remove_cvref_t<P>;
    if constexpr (isRef<Plain>) {
        return Plain(cast<typename Plain::Element>(argument));
    } else if constexpr (ObjectPointer<Plain>) {
        return cast<std::remove_cv_t<std::remove_pointer_t<Plain>>>(argument);
    } else if constexpr (std::is_reference_v<Argument<P>>) {
        return static_cast<P>(argument);
    } else {
        return static_cast<Plain>(argument);
    }
}

[[noreturn]] ZR_EXPORT void raiseForeignReceiver(NSObject* self, SEL selector);

/// The C++ receiver of a message: checked, because a method may be added to any class at run time.
template <class C>
C& receiver(NSObject* self, SEL selector) {
    C* object = nullptr;
    if constexpr (std::is_base_of_v<NSObject, C>) {
        object = cast<C>(self);
    } else {
        object = protocolCast<C>(self);
    }
    if (!object) [[unlikely]] {
        raiseForeignReceiver(self, selector);
    }
    return *object;
}

/// Turns a C++ function into an implementation: `member` wants a receiver of its class, `group` is a function whose
/// first parameter is the receiver, `plain` ignores the receiver.
template <auto Function, class Type = decltype(Function)>
struct Adapter;

template <auto Function, class R, class C, class... A>
struct Adapter<Function, R (C::*)(A...)> {
    static Result<R> member(NSObject* self, SEL selector, Argument<A>... arguments) {
        return static_cast<Result<R>>((receiver<C>(self, selector).*Function)(fromArgument<A>(arguments)...));
    }
};

template <auto Function, class R, class C, class... A>
struct Adapter<Function, R (C::*)(A...) const> {
    static Result<R> member(NSObject* self, SEL selector, Argument<A>... arguments) {
        return static_cast<Result<R>>((receiver<C>(self, selector).*Function)(fromArgument<A>(arguments)...));
    }
};

template <auto Function, class R, class... A>
struct Adapter<Function, R (*)(A...)> {
    static Result<R> plain(NSObject*, SEL, Argument<A>... arguments) {
        return static_cast<Result<R>>(Function(fromArgument<A>(arguments)...));
    }
};

template <auto Function, class Type = decltype(Function)>
struct GroupAdapter;

template <auto Function, class R, class Receiver, class... A>
struct GroupAdapter<Function, R (*)(Receiver, A...)> {
    static Result<R> member(NSObject* self, SEL, Argument<A>... arguments) {
        return static_cast<Result<R>>(Function(fromArgument<Receiver>(self), fromArgument<A>(arguments)...));
    }
};

} // namespace detail

/// Fills a class record: what `is` stands for in a class definition or group.
class ZR_EXPORT ClassBuilder {
  public:
    explicit ClassBuilder(Class* subject) : m_class(subject) {}

    /// An instance operation: a member function, or a function whose first parameter is the receiver.
    template <auto Function>
    ClassBuilder& method(std::string_view selector) {
        if constexpr (std::is_member_function_pointer_v<decltype(Function)>) {
            addMethod(selector, imp(&detail::Adapter<Function>::member));
        } else {
            addMethod(selector, imp(&detail::GroupAdapter<Function>::member));
        }
        return *this;
    }

    /// A class operation: a static member or function that does not ask which class received it.
    template <auto Function>
    ClassBuilder& classMethod(std::string_view selector) {
        addClassMethod(selector, imp(&detail::Adapter<Function>::plain));
        return *this;
    }

    /// A class operation whose first parameter is the receiving class.
    template <auto Function>
    ClassBuilder& receivingClassMethod(std::string_view selector) {
        addClassMethod(selector, imp(&detail::GroupAdapter<Function>::member));
        return *this;
    }

    template <class Self, auto Variable>
    ClassBuilder& property(const char* getter, const char* setter);

    void addMethod(std::string_view selector, IMP implementation);
    void addClassMethod(std::string_view selector, IMP implementation);
    void adopt(Protocol* protocol, void* (*cast)(NSObject*));

  private:
    /// Completes the record from the accessors' names and lists it.
    void addProperty(PropertyRecord record, const std::string& encoding, const char* storage, const char* getter,
                     const char* setter);

    Class* m_class;
};

namespace detail {

template <auto Variable>
struct VariableType;
template <class C, class S, S C::*Variable>
struct VariableType<Variable> {
    using Type = S;
};

template <class Self, auto Variable>
struct PropertyAccess {
    using SlotType = typename VariableType<Variable>::Type;
    using Get = typename SlotType::Get;
    using Set = std::conditional_t<SlotType::isObject, NSObject*, typename SlotType::Set>;

    static SlotType& slot(NSObject* self) { return static_cast<Self*>(self)->*Variable; }

    static Result<Get> get(NSObject* self, SEL selector) {
        SlotType& variable = receiver<Self>(self, selector).*Variable;
        if constexpr (SlotType::isObject) {
            return variable.getObject();
        } else {
            return variable.get();
        }
    }

    static void set(NSObject* self, SEL selector, Argument<Set> value) {
        (receiver<Self>(self, selector).*Variable).set(fromArgument<Set>(value));
    }

    static Value read(NSObject* self) {
        if constexpr (SlotType::isObject) {
            return Value(slot(self).getObject());
        } else {
            return Value(slot(self).get());
        }
    }

    static void write(NSObject* self, const Value& value) {
        if constexpr (SlotType::isObject) {
            slot(self).set(value.object());
        } else {
            slot(self).set(value.to<Get>());
        }
    }

    static id readObject(NSObject* self) { return slot(self).getObject(); }
    static void writeObject(NSObject* self, NSObject* value) { slot(self).set(value); }
};

} // namespace detail

template <class Self, auto Variable>
ClassBuilder& ClassBuilder::property(const char* getter, const char* setter) {
    using Access = detail::PropertyAccess<Self, Variable>;
    using SlotType = typename Access::SlotType;
    PropertyRecord record;
    record.read = &Access::read;
    record.write = &Access::write;
    if constexpr (SlotType::isObject) {
        record.readObject = &Access::readObject;
        record.writeObject = &Access::writeObject;
    }
    addMethod(getter, imp(&Access::get));
    if (*setter != '\0') {
        addMethod(std::string(setter) + ':', imp(&Access::set));
    }
    addProperty(std::move(record), SlotType::encoding(), SlotType::storage, getter, setter);
    return *this;
}

namespace detail {

/// What the runtime is told about a compiled class.
struct NativeClass {
    const char* name;
    Class* parent;
    const std::type_info* type;
    /// Null for classes that only serve as ancestors.
    NSObject* (*create)();
    void (*describe)(ClassBuilder& is);
};

ZR_EXPORT Class* registerNativeClass(const NativeClass& native);

/// A group's entry in the list of groups. Its constructor only links it in; the operations are added when messages
/// are first looked up, so that loading the library costs nothing.
class ZR_EXPORT Group {
  public:
    Group(Class* (*subject)(), void (*describe)(ClassBuilder& is));

  private:
    friend class Runtime;
    Class* (*m_subject)();
    void (*m_describe)(ClassBuilder& is);
    Group* m_next = nullptr;
};

/// Reads declarations; the one that may look into their private parts.
struct Declaration {
    template <class T>
    static constexpr int entries = decltype(T::zrPosition(Rank<ZR_DETAIL_MOST_ENTRIES>()))::value;

    template <class T, int... I>
    static void describeEntries(ClassBuilder& is, std::integer_sequence<int, I...>) {
        (T::zrDescribe(Position<I>(), is), ...);
    }

    template <class T, class P>
    static void adopt(ClassBuilder& is) {
        is.adopt(P::protocolObject(), [](NSObject* self) -> void* { return static_cast<P*>(static_cast<T*>(self)); });
        describeEntries<P>(is, std::make_integer_sequence<int, entries<P>>());
    }

    template <class T, class... P>
    static void declared(ClassBuilder& is) {
        (adopt<T, P>(is), ...);
        describeEntries<T>(is, std::make_integer_sequence<int, entries<T>>());
    }

    template <class T, class... P>
    static void defined(ClassBuilder& is) {
        (adopt<T, P>(is), ...);
        T::zrDescribeAll(is);
    }

    template <class T>
    static Class* enter(const char* name, void (*describe)(ClassBuilder&)) {
        static_assert(std::is_base_of_v<typename T::Super, T>, "the declared parent is not a base class");
        NSObject* (*create)() = nullptr;
        if constexpr (!std::is_abstract_v<T> && std::is_default_constructible_v<T>) {
            create = []() -> NSObject* { return new T; };
        }
        return registerNativeClass({name, T::Super::classObject(), &typeid(T), create, describe});
    }
};

template <class T, class... P>
Class* declaredClass(const char* name) {
    return Declaration::enter<T>(name, &Declaration::declared<T, P...>);
}

template <class T, class... P>
Class* definedClass(const char* name) {
    return Declaration::enter<T>(name, &Declaration::defined<T, P...>);
}

} // namespace detail

} // namespace zr
