#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Percent escapes: "%" and two hexadecimal digits for each byte of the UTF-8 form.
///
/// Stateless and usable from any thread; nothing throws but `std::bad_alloc`.
namespace zr::detail {

/// A set of ASCII characters.
class AsciiSet {
  public:
    constexpr AsciiSet() noexcept = default;

    /// The characters of `members`; those outside ASCII are left out.
    constexpr explicit AsciiSet(std::string_view members) noexcept {
        for (const char c : members) {
            insert(static_cast<unsigned char>(c));
        }
    }

    constexpr void insert(char32_t c) noexcept {
        if (c < 0x80) {
            m_bits[c / 64] |= std::uint64_t(1) << (c % 64);
        }
    }

    [[nodiscard]] constexpr bool contains(char32_t c) const noexcept {
        return c < 0x80 && ((m_bits[c / 64] >> (c % 64)) & 1) != 0;
    }

  private:
    std::array<std::uint64_t, 2> m_bits{};
};

/// Appends the escape of one byte, with upper-case digits.
inline void appendEscape(std::u16string& to, unsigned char byte) {
    constexpr char16_t digits[] = u"0123456789ABCDEF";
    const char16_t escape[] = {u'%', digits[byte / 16], digits[byte % 16]};
    to.append(escape, 3);
}

/// Decodes every escape of `text`; all else, "+" and non-ASCII included, stays as it is.
///
/// No value when a "%" lacks its two hexadecimal digits (of either case), or when the bytes of neighbouring escapes
/// are not UTF-8.
[[nodiscard]] ZR_EXPORT std::optional<std::u16string> percentDecoded(std::u16string_view text);

/// Writes every character outside `allowed` as escapes with upper-case digits; non-ASCII is always escaped.
///
/// No value when `text` holds a lone surrogate, which has no UTF-8 form.
[[nodiscard]] ZR_EXPORT std::optional<std::u16string> percentEncoded(std::u16string_view text, const AsciiSet& allowed);

} // namespace zr::detail
