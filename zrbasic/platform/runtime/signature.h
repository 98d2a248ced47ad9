#pragma once

#include <zrbasic/platform/runtime/value.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <typeinfo>
#include <utility>

namespace zr {

class Class;
class NSObject;

namespace detail {

template <class T>
inline constexpr bool isRef = false;
template <class T>
inline constexpr bool isRef<Ref<T>> = true;

template <class T>
inline constexpr bool isFunction = false;
template <class R, class... A>
inline constexpr bool isFunction<std::function<R(A...)>> = true;

template <class T>
concept ObjectPointer = std::is_pointer_v<T> && std::is_convertible_v<T, const NSObject*>;

/// Maps a C++ parameter or result type to the one form in which it travels through method tables, so that an
/// implementation is always called through exactly the type it was compiled with.
template <class T, class = void>
struct CanonicalType {
    using Type = T;
};

template <class T>
requires(std::is_integral_v<T> && !std::is_same_v<T, bool>) struct CanonicalType<T> {
    using Signed =
        std::conditional_t<sizeof(T) == 1, std::int8_t,
                           std::conditional_t<sizeof(T) == 2, std::int16_t,
                                              std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>>>;
    using Type = std::conditional_t<std::is_signed_v<T>, Signed, std::make_unsigned_t<Signed>>;
};

template <class T>
requires std::is_enum_v<T>
struct CanonicalType<T> : CanonicalType<std::underlying_type_t<T>> {
};

template <ObjectPointer T>
struct CanonicalType<T> {
    using Type = NSObject*;
};

template <>
struct CanonicalType<std::nullptr_t> {
    using Type = NSObject*;
};

template <class T>
struct ResultType {
    using Type = typename CanonicalType<T>::Type;
};
template <class T>
struct ResultType<Ref<T>> {
    using Type = id;
};
template <ObjectPointer T>
struct ResultType<T> {
    using Type = id;
};
template <class T>
struct ResultType<const T&> : ResultType<T> {};

template <class T>
struct ArgumentType {
    using Type = typename CanonicalType<T>::Type;
};
template <class T>
struct ArgumentType<Ref<T>> {
    using Type = NSObject*;
};
template <class T>
requires(isRef<T> || std::is_arithmetic_v<T> || std::is_enum_v<T> || ObjectPointer<T>) struct ArgumentType<const T&>
    : ArgumentType<T> {
};

/// How a result of type `T` leaves an implementation, and how an argument of type `T` enters one.
template <class T>
using Result = typename ResultType<T>::Type;
template <class T>
using Argument = typename ArgumentType<T>::Type;

/// The C function type of an implementation.
template <class R, class... A>
using ImplementationType = Result<R> (*)(NSObject*, SEL, Argument<A>...);

/// One letter (or a short text) a type, in the platform's notation.
template <class T>
constexpr const char* typeEncoding() {
    if constexpr (std::is_void_v<T>) {
        return "v";
    } else if constexpr (std::is_same_v<T, bool>) {
        return "B";
    } else if constexpr (std::is_same_v<T, float>) {
        return "f";
    } else if constexpr (std::is_same_v<T, double>) {
        return "d";
    } else if constexpr (std::is_enum_v<T>) {
        return typeEncoding<std::underlying_type_t<T>>();
    } else if constexpr (std::is_integral_v<T>) {
        constexpr bool isSigned = std::is_signed_v<T>;
        switch (sizeof(T)) {
            case 1:
                return isSigned ? "c" : "C";
            case 2:
                return isSigned ? "s" : "S";
            case 4:
                return isSigned ? "i" : "I";
            default:
                return isSigned ? "q" : "Q";
        }
    } else if constexpr (std::is_same_v<T, SEL>) {
        return ":";
    } else if constexpr (std::is_same_v<T, Class*>) {
        return "#";
    } else if constexpr (isRef<T> || ObjectPointer<T>) {
        return "@";
    } else if constexpr (isFunction<std::remove_cvref_t<T>>) {
        return "@?";
    } else if constexpr (std::is_pointer_v<T>) {
        using Pointed = std::remove_pointer_t<T>;
        if constexpr (std::is_class_v<Pointed>) {
            static_assert(sizeof(Pointed) > 0, "include the header of a class whose objects an operation takes");
        }
        return isRef<Pointed> ? "^@" : "^v";
    } else {
        return "{?}";
    }
}

} // namespace detail

/// The exact type of an implementation: what it takes, what it gives, and how to call it with arguments whose types
/// are known only while the program runs.
struct MethodType {
    /// Result, receiver, selector and arguments in the platform's notation, such as "v@:@".
    const char* encoding;
    /// Encodings of the arguments alone, without receiver and selector.
    const char* const* argumentEncodings;
    std::size_t argumentCount;
    const std::type_info* function;
    /// Calls `implementation` with converted arguments. False when an argument cannot be converted; nothing was
    /// called then.
    bool (*invoke)(void (*implementation)(), NSObject* self, SEL selector, const Value* arguments, Value* result);

    [[nodiscard]] bool operator==(const MethodType& other) const {
        return this == &other || *function == *other.function;
    }
};

namespace detail {

template <class R, class... A>
struct MethodTypeOf {
    using Function = R (*)(NSObject*, SEL, A...);

    template <std::size_t... I>
    static bool call(Function function, NSObject* self, SEL selector, [[maybe_unused]] const Value* arguments,
                     Value* result, std::index_sequence<I...>) {
        if (!(arguments[I].template converts<A>() && ...)) {
            return false;
        }
        if constexpr (std::is_void_v<R>) {
            function(self, selector, arguments[I].template to<A>()...);
            *result = Value();
        } else {
            *result = Value(function(self, selector, arguments[I].template to<A>()...));
        }
        return true;
    }

    static bool invoke(void (*implementation)(), NSObject* self, SEL selector, const Value* arguments, Value* result) {
        return call(reinterpret_cast<Function>(implementation), self, selector, arguments, result,
                    std::index_sequence_for<A...>());
    }

    /// All encodings in one text, joined while compiling.
    static constexpr auto encoding = [] {
        constexpr std::size_t size = (std::char_traits<char>::length(typeEncoding<R>()) + ... +
                                      std::char_traits<char>::length(typeEncoding<A>()));
        std::array<char, size + 3> text{};
        auto end = text.begin();
        const auto append = [&end](const char* type) {
            end = std::copy_n(type, std::char_traits<char>::length(type), end);
        };
        append(typeEncoding<R>());
        append("@:");
        (append(typeEncoding<A>()), ...);
        return text;
    }();
    static constexpr const char* argumentEncodings[] = {typeEncoding<A>()..., nullptr};
    static constexpr MethodType type{encoding.data(), argumentEncodings, sizeof...(A), &typeid(Function), &invoke};
};

} // namespace detail

/// An implementation of an operation: a plain function that takes the object, the selector and the arguments, with
/// its exact type. Null when made by default.
///
/// Comparing two implementations compares the functions.
struct IMP {
    void (*function)() = nullptr;
    const MethodType* type = nullptr;

    explicit operator bool() const { return function != nullptr; }
    friend bool operator==(const IMP& a, const IMP& b) { return a.function == b.function; }
};

/// The implementation made from `function`, whose first two parameters are the object and the selector.
///
/// Objects travel as `NSObject*` in parameters and as `id` in results, integers in their fixed-width types; a function
/// that spells them otherwise does not compile here.
template <class R, class... A>
[[nodiscard]] IMP imp(R (*function)(NSObject*, SEL, A...)) {
    static_assert(std::is_same_v<detail::Result<R>, R>, "results are void, id, bool, fixed-width numbers or values");
    static_assert((std::is_same_v<detail::Argument<A>, A> && ...), "objects are passed as NSObject*");
    return {reinterpret_cast<void (*)()>(function), &detail::MethodTypeOf<R, A...>::type};
}

} // namespace zr
