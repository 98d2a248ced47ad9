#pragma once

#include <zrbasic/platform/runtime/ref.h>
#include <zrbasic/platform/runtime/selector.h>

#include <any>
#include <cmath>
#include <limits>
#include <type_traits>
#include <variant>

namespace zr {

/// One argument or result of a message whose types are known only while the program runs.
///
/// Numbers convert among each other: fractions are cut off, values out of range saturate, NaN gives 0. Everything
/// else converts to its own type only; a conversion that is not possible gives the type's zero value.
class Value {
  public:
    /// Nothing: the zero of whatever type it is read as.
    Value() = default;

    template <class T>
    requires(!std::is_same_v<std::remove_cvref_t<T>, Value>) Value(T&& value) { assign(std::forward<T>(value)); }

    [[nodiscard]] bool isNothing() const { return std::holds_alternative<std::monostate>(m_data); }
    [[nodiscard]] bool isObject() const { return std::holds_alternative<id>(m_data); }
    [[nodiscard]] bool isNumber() const { return m_data.index() >= 1 && m_data.index() <= 4; }

    /// The object held, borrowed; null for anything else.
    [[nodiscard]] NSObject* object() const {
        const id* const held = std::get_if<id>(&m_data);
        return held ? held->get() : nullptr;
    }

    /// Whether reading it as `T` gives what was put in rather than a made-up zero.
    template <class T>
    [[nodiscard]] bool converts() const {
        if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
            return isNothing() || isNumber();
        } else if constexpr (std::is_same_v<T, NSObject*> || std::is_same_v<T, id>) {
            return isNothing() || isObject();
        } else if constexpr (std::is_same_v<T, SEL>) {
            return isNothing() || std::holds_alternative<SEL>(m_data);
        } else {
            const std::any* const held = std::get_if<std::any>(&m_data);
            return isNothing() || (held && std::any_cast<std::remove_cvref_t<T>>(held) != nullptr);
        }
    }

    /// The value as a `T`: a number, a boolean, `SEL`, `id`, a borrowed `NSObject*`, or the very type put in.
    template <class T>
    [[nodiscard]] T to() const {
        if constexpr (std::is_void_v<T>) {
            return;
        } else if constexpr (std::is_same_v<T, Value>) {
            return *this;
        } else if constexpr (std::is_enum_v<T>) {
            return static_cast<T>(to<std::underlying_type_t<T>>());
        } else if constexpr (std::is_arithmetic_v<T>) {
            return std::visit([](const auto& held) -> T { return numberFrom<T>(held); }, m_data);
        } else if constexpr (std::is_same_v<T, NSObject*>) {
            return object();
        } else if constexpr (std::is_same_v<T, id>) {
            return id(object());
        } else if constexpr (std::is_same_v<T, SEL>) {
            const SEL* const held = std::get_if<SEL>(&m_data);
            return held ? *held : SEL();
        } else {
            using Plain = std::remove_cvref_t<T>;
            if (const std::any* const held = std::get_if<std::any>(&m_data)) {
                if (const Plain* const exact = std::any_cast<Plain>(held)) {
                    return *exact;
                }
            }
            if constexpr (std::is_reference_v<T>) {
                static const Plain zero{};
                return zero;
            } else {
                return Plain{};
            }
        }
    }

  private:
    template <class T>
    void assign(T&& value) {
        using Plain = std::remove_cvref_t<T>;
        if constexpr (std::is_same_v<Plain, bool>) {
            m_data = value;
        } else if constexpr (std::is_enum_v<Plain>) {
            assign(static_cast<std::underlying_type_t<Plain>>(value));
        } else if constexpr (std::is_floating_point_v<Plain>) {
            m_data = static_cast<double>(value);
        } else if constexpr (std::is_integral_v<Plain> && std::is_signed_v<Plain>) {
            m_data = static_cast<std::int64_t>(value);
        } else if constexpr (std::is_integral_v<Plain>) {
            m_data = static_cast<std::uint64_t>(value);
        } else if constexpr (std::is_same_v<Plain, SEL>) {
            m_data = value;
        } else if constexpr (std::is_same_v<Plain, std::nullptr_t>) {
            m_data.template emplace<id>();
        } else if constexpr (std::is_convertible_v<T, id>) {
            m_data.template emplace<id>(std::forward<T>(value));
        } else {
            m_data = std::any(std::forward<T>(value));
        }
    }

    template <class T, class Held>
    static T numberFrom(const Held& held) {
        if constexpr (!std::is_arithmetic_v<Held>) {
            return T{};
        } else if constexpr (std::is_same_v<T, bool>) {
            return held != Held{};
        } else if constexpr (std::is_floating_point_v<T> || std::is_same_v<Held, bool>) {
            return static_cast<T>(held);
        } else if constexpr (std::is_floating_point_v<Held>) {
            using Limits = std::numeric_limits<T>;
            if (std::isnan(held)) {
                return T{};
            }
            // The bounds are powers of two and so exact as doubles, unlike the largest integers themselves.
            const double upper = std::ldexp(1.0, Limits::digits);
            const double lower = Limits::is_signed ? -upper : 0.0;
            if (held >= upper) {
                return Limits::max();
            }
            return held <= lower ? Limits::min() : static_cast<T>(held);
        } else {
            // Between integers the bits are kept, as a cast between their C types does.
            return static_cast<T>(held);
        }
    }

    std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, id, SEL, std::any> m_data;
};

} // namespace zr
