#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/object.h>

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace zr {

/// One value for a format text such as "%@ costs %.2f"; made by itself from whatever is passed.
///
/// Borrows objects and texts, so it must not outlive the call it was made for. A value of another kind than the format
/// asks for is never an error: numbers convert, an object reads as the number 0, "%@" writes a number as it is.
class FormatArgument {
  public:
    FormatArgument(std::nullptr_t) : m_value(static_cast<const NSObject*>(nullptr)) {}

    template <typename T>
    requires std::integral<T> || std::is_enum_v<T> FormatArgument(T value) {
        if constexpr (std::is_enum_v<T>) {
            *this = FormatArgument(static_cast<std::underlying_type_t<T>>(value));
        } else if constexpr (std::is_signed_v<T>) {
            m_value = static_cast<std::int64_t>(value);
        } else {
            m_value = static_cast<std::uint64_t>(value);
        }
    }

    FormatArgument(double value) : m_value(value) {}
    FormatArgument(float value) : m_value(static_cast<double>(value)) {}

    /// UTF-8 up to the first zero byte; null is written as "(null)".
    FormatArgument(const char* text) : m_value(text) {}
    FormatArgument(const std::string& text) : m_value(text.c_str()) {}
    /// UTF-16 up to the first zero unit.
    FormatArgument(const char16_t* text) : m_value(text) {}

    template <typename T>
    requires std::convertible_to<T*, const NSObject*> FormatArgument(T* object)
        : m_value(static_cast<const NSObject*>(object)) {}

    template <typename T>
    FormatArgument(const Ref<T>& object) : FormatArgument(object.get()) {}

    using Value = std::variant<const NSObject*, std::int64_t, std::uint64_t, double, const char*, const char16_t*>;

    [[nodiscard]] const Value& value() const noexcept { return m_value; }

  private:
    Value m_value;
};

namespace detail {

/// Writes `format` with its "%" directives replaced by the arguments, in order or by number ("%2$@").
///
/// Known directives: @ d i D u U x X o O c C s S p f F e E g G a A and %%, with the flags, widths, precisions and
/// length letters of C. Nothing is localised. An argument that is missing reads as null; those left over are ignored;
/// an unknown directive is written as it stands. Widths and precisions end at 4096.
[[nodiscard]] ZR_EXPORT std::u16string formatText(std::u16string_view format, const FormatArgument* arguments,
                                                  std::size_t count);

} // namespace detail

} // namespace zr
