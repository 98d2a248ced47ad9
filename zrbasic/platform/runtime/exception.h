#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <exception>
#include <memory>
#include <string>
#include <string_view>

namespace zr {

inline constexpr std::string_view NSGenericException = "NSGenericException";
inline constexpr std::string_view NSRangeException = "NSRangeException";
inline constexpr std::string_view NSInvalidArgumentException = "NSInvalidArgumentException";
inline constexpr std::string_view NSInternalInconsistencyException = "NSInternalInconsistencyException";
/// Raised by key-value coding for a key that the object does not have.
inline constexpr std::string_view NSUndefinedKeyException = "NSUnknownKeyException";
inline constexpr std::string_view NSDecimalNumberOverflowException = "NSDecimalNumberOverflowException";
inline constexpr std::string_view NSDecimalNumberUnderflowException = "NSDecimalNumberUnderflowException";
inline constexpr std::string_view NSDecimalNumberDivideByZeroException = "NSDecimalNumberDivideByZeroException";

/// The one kind of exception, besides `std::bad_alloc`, that leaves the library.
///
/// Thrown by value and caught by reference: `catch (const NSException& exception)`. Copies share their text, so
/// copying never fails. Both texts are UTF-8.
class ZR_EXPORT NSException : public std::exception {
  public:
    NSException(std::string_view name, std::string_view reason);
    NSException(const NSException&) noexcept;
    NSException& operator=(const NSException&) noexcept;
    ~NSException() override;

    /// What kind of mistake it was: one of the constants above, as a rule.
    [[nodiscard]] const std::string& name() const noexcept;
    /// What happened, for a log or a debugger.
    [[nodiscard]] const std::string& reason() const noexcept;
    /// Name and reason, joined by ": ".
    [[nodiscard]] const char* what() const noexcept override;

    [[noreturn]] static void raise(std::string_view name, std::string_view reason);

  private:
    struct Text;
    std::shared_ptr<const Text> m_text;
};

} // namespace zr
