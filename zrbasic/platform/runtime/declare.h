#pragma once

#include <zrbasic/platform/runtime/class.h>
#include <zrbasic/platform/runtime/class_builder.h>
#include <zrbasic/platform/runtime/message.h>
#include <zrbasic/platform/runtime/property_slot.h>
#include <zrbasic/platform/runtime/protocol.h>

// How a class says what it is. Everything that a name can do while the program runs (messages, key-value access,
// property lists, observation) follows from these lines:
//
//     class Quote : public NSObject {
//         ZR_OBJECT(Quote, NSObject)
//       public:
//         ZR_PROPERTY(Copied<NSString>, symbol, setSymbol)   // copied when set
//         ZR_PROPERTY(Ref<NSNumber>, price, setPrice)        // kept
//         ZR_PROPERTY(Weak<NSObject>, owner, setOwner)       // watched
//         ZR_PROPERTY(double, change, setChange)             // a plain value
//         ZR_READONLY(Ref<NSDate>, receivedAt)               // set inside the class: m_receivedAt = ...
//
//         void refresh(NSNumber* seconds);
//         ZR_METHOD(refresh, "refresh:")                     // answered as a message too
//     };
//
// The accessors are ordinary C++ members. They touch the variable directly as long as the class is as declared, and
// run the object's own implementation once the object was switched to another class or an accessor was replaced.
// The property is named by its getter; a getter `isHidden` with a setter `setHidden` makes the property `hidden`.
//
// The macros leave the class body in `public:` (ZR_OBJECT and ZR_DECLARE_CLASS: in `private:`).

/// Declares a class and its parent, and the protocols that it adopts: `ZR_OBJECT(Desk, NSObject, QuoteListener)`.
/// Stands first in the class body. NSObject must be the first base.
#define ZR_OBJECT(Name, Parent, ...)                                                                            \
  public:                                                                                                       \
    using Super = Parent;                                                                                       \
    [[nodiscard]] static ::zr::Class* classObject() {                                                           \
        static ::zr::Class* const record = ::zr::detail::declaredClass<Name __VA_OPT__(, ) __VA_ARGS__>(#Name); \
        return record;                                                                                          \
    }                                                                                                           \
    [[nodiscard]] ::zr::Class* nativeClass() const override {                                                   \
        return Name::classObject();                                                                             \
    }                                                                                                           \
    [[nodiscard]] static constexpr const char* zrClassName() {                                                  \
        return #Name;                                                                                           \
    }                                                                                                           \
                                                                                                                \
  private:                                                                                                      \
    using ZrSelf [[maybe_unused]] = Name;                                                                       \
    friend struct ::zr::detail::Declaration;                                                                    \
    static ::zr::detail::Position<0> zrPosition(::zr::detail::Rank<0>);

#define ZR_DETAIL_ENTRY(name)                                                                                       \
  private:                                                                                                          \
    enum { zrPositionOf_##name = decltype(zrPosition(::zr::detail::Rank<ZR_DETAIL_MOST_ENTRIES>()))::value };       \
    static ::zr::detail::Position<zrPositionOf_##name + 1> zrPosition(::zr::detail::Rank<zrPositionOf_##name + 1>); \
    static void zrDescribe(::zr::detail::Position<zrPositionOf_##name>, ::zr::ClassBuilder& is)

#define ZR_DETAIL_GETTER(Type, getter)                                                             \
  protected:                                                                                       \
    ::zr::detail::Slot<Type> m_##getter;                                                           \
                                                                                                   \
  public:                                                                                          \
    [[nodiscard]] ::zr::detail::Slot<Type>::Get getter() const {                                   \
        if (!this->isa()->isDirect()) [[unlikely]] {                                               \
            return ::zr::send<::zr::detail::Slot<Type>::Get>(const_cast<ZrSelf*>(this),            \
                                                             ::zr::detail::selectorOf<#getter>()); \
        }                                                                                          \
        return m_##getter.get();                                                                   \
    }

/// A property that can be read and set. `Type` is a number type, `Ref<T>`, `Copied<T>`, `Weak<T>`, or any value type.
#define ZR_PROPERTY(Type, getter, setter)                                           \
    ZR_DETAIL_ENTRY(getter) {                                                       \
        is.property<ZrSelf, &ZrSelf::m_##getter>(#getter, #setter);                 \
    }                                                                               \
    ZR_DETAIL_GETTER(Type, getter)                                                  \
    void setter(::zr::detail::Slot<Type>::Set value) {                              \
        if (!this->isa()->isDirect()) [[unlikely]] {                                \
            ::zr::send<void>(this, ::zr::detail::selectorOf<#setter ":">(), value); \
            return;                                                                 \
        }                                                                           \
        m_##getter.set(value);                                                      \
    }

/// A property that only its own class sets, through the variable `m_getter`.
#define ZR_READONLY(Type, getter)                              \
    ZR_DETAIL_ENTRY(getter) {                                  \
        is.property<ZrSelf, &ZrSelf::m_##getter>(#getter, ""); \
    }                                                          \
    ZR_DETAIL_GETTER(Type, getter)

/// Lets a member answer the message `selector`.
#define ZR_METHOD(member, selector)           \
    ZR_DETAIL_ENTRY(member) {                 \
        is.method<&ZrSelf::member>(selector); \
    }                                         \
                                              \
  public:

/// Lets a static member answer the message `selector` sent to the class.
#define ZR_CLASS_METHOD(member, selector)          \
    ZR_DETAIL_ENTRY(member) {                      \
        is.classMethod<&ZrSelf::member>(selector); \
    }                                              \
                                                   \
  public:

/// Declares a class whose operations are listed in its source file, by `ZR_DEFINE_CLASS`.
#define ZR_DECLARE_CLASS(Name, Parent)                         \
  public:                                                      \
    using Super = Parent;                                      \
    [[nodiscard]] static ::zr::Class* classObject();           \
    [[nodiscard]] ::zr::Class* nativeClass() const override;   \
    [[nodiscard]] static constexpr const char* zrClassName() { \
        return #Name;                                          \
    }                                                          \
                                                               \
  private:                                                     \
    friend struct ::zr::detail::Declaration;                   \
    static void zrDescribeAll(::zr::ClassBuilder& is);

/// Opens the list of a class's operations: `ZR_DEFINE_CLASS(NSDate) { is.method<&NSDate::compare>("compare:"); }`.
/// Protocols that the class adopts follow its name.
#define ZR_DEFINE_CLASS(Name, ...)                                                                             \
    ::zr::Class* Name::classObject() {                                                                         \
        static ::zr::Class* const record = ::zr::detail::definedClass<Name __VA_OPT__(, ) __VA_ARGS__>(#Name); \
        return record;                                                                                         \
    }                                                                                                          \
    ::zr::Class* Name::nativeClass() const {                                                                   \
        return Name::classObject();                                                                            \
    }                                                                                                          \
    void Name::zrDescribeAll([[maybe_unused]] ::zr::ClassBuilder& is)

/// Opens the list of the operations that a group adds to a class: `ZR_GROUP(NSString, ZRXHelper) { is.method<...> }`.
/// They are there from the moment the library is loaded. Stands in a source file, at namespace scope.
#define ZR_GROUP(ClassName, GroupName)                                                                     \
    static void zrGroup_##ClassName##_##GroupName(::zr::ClassBuilder& is);                                 \
    static ::zr::detail::Group zrGroupEntry_##ClassName##_##GroupName(&ClassName::classObject,             \
                                                                      &zrGroup_##ClassName##_##GroupName); \
    static void zrGroup_##ClassName##_##GroupName([[maybe_unused]] ::zr::ClassBuilder& is)

/// Makes an abstract C++ class a protocol that the runtime knows by name.
#define ZR_PROTOCOL(Name)                                                            \
  public:                                                                            \
    [[nodiscard]] static ::zr::Protocol* protocolObject() {                          \
        static ::zr::Protocol* const record = ::zr::detail::registerProtocol(#Name); \
        return record;                                                               \
    }                                                                                \
    virtual ~Name() = default;                                                       \
                                                                                     \
  private:                                                                           \
    using ZrSelf [[maybe_unused]] = Name;                                            \
    friend struct ::zr::detail::Declaration;                                         \
    static ::zr::detail::Position<0> zrPosition(::zr::detail::Rank<0>);

/// A required operation of a protocol: every adopter answers it as a message.
#define ZR_PROTOCOL_METHOD(member, selector)  \
    ZR_DETAIL_ENTRY(member) {                 \
        is.method<&ZrSelf::member>(selector); \
    }                                         \
                                              \
  public:
