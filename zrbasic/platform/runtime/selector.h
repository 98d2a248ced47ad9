#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <algorithm>
#include <atomic>
#include <compare>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace zr {

namespace detail {

/// One interned operation name. Records live as long as the process, so a selector is as cheap as a pointer.
struct SelectorRecord {
    std::string name;
    /// What key-value machinery derives from the name, once.
    mutable std::atomic<void*> memo{nullptr};
};

/// Text as a template argument, for literals that are resolved once.
template <class Character, std::size_t N>
struct FixedText {
    consteval FixedText(const Character (&text)[N]) { std::copy_n(text, N, data); }

    Character data[N]{};
};

} // namespace detail

/// The name of an operation, such as `setPrice:`; null when made by default.
///
/// Two selectors of the same name are equal wherever they were made. Copying and comparing cost as much as a pointer.
class SEL {
  public:
    constexpr SEL() = default;
    constexpr SEL(std::nullptr_t) {}
    explicit constexpr SEL(const detail::SelectorRecord* record) : m_record(record) {}

    explicit operator bool() const { return m_record != nullptr; }
    friend bool operator==(SEL, SEL) = default;

    /// The operation's name in UTF-8; "" for the null selector.
    [[nodiscard]] std::string_view name() const {
        return m_record ? std::string_view(m_record->name) : std::string_view();
    }

    [[nodiscard]] const detail::SelectorRecord* record() const { return m_record; }

  private:
    const detail::SelectorRecord* m_record = nullptr;
};

/// The selector named `name`, made on first use. An empty name gives the null selector. Safe from any thread.
[[nodiscard]] ZR_EXPORT SEL sel_registerName(std::string_view name);

/// The selector named `name` if it was ever made; null otherwise. For names from outside, which must not fill memory.
[[nodiscard]] ZR_EXPORT SEL sel_findName(std::string_view name);

/// The name of `selector` as a C string; "<null selector>" for null.
[[nodiscard]] ZR_EXPORT const char* sel_getName(SEL selector);

inline namespace literals {

/// `"setPrice:"_sel` is the selector of that name, looked up once per literal.
template <detail::FixedText Name>
[[nodiscard]] SEL operator""_sel() {
    static const SEL selector = sel_registerName(std::string_view(Name.data, sizeof(Name.data) - 1));
    return selector;
}

} // namespace literals

} // namespace zr

template <>
struct std::hash<zr::SEL> {
    std::size_t operator()(zr::SEL selector) const noexcept { return std::hash<const void*>()(selector.record()); }
};
