#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Text encoding, white space, letter case and hashing on plain UTF-16 views.
///
/// Everything here is stateless and may be called from any thread; nothing throws but `std::bad_alloc`.
namespace zr::detail {

/// One decoded code point and the number of UTF-16 code units (1 or 2) it takes.
///
/// A lone surrogate decodes to itself.
struct CodePoint {
    char32_t value;
    std::size_t length;
};

[[nodiscard]] constexpr bool isLeadSurrogate(char32_t unit) noexcept {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

[[nodiscard]] constexpr bool isTrailSurrogate(char32_t unit) noexcept {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// The code point that begins at `index`, which must be below the length of `text`.
[[nodiscard]] constexpr CodePoint codePointAt(std::u16string_view text, std::size_t index) noexcept {
    const char32_t lead = text[index];
    if (isLeadSurrogate(lead) && index + 1 < text.size() && isTrailSurrogate(text[index + 1])) {
        return {0x10000 + ((lead - 0xD800) << 10) + (text[index + 1] - 0xDC00), 2};
    }
    return {lead, 1};
}

/// The code point that ends just before `index`, which must be between 1 and the length of `text`.
[[nodiscard]] constexpr CodePoint codePointBefore(std::u16string_view text, std::size_t index) noexcept {
    const char32_t trail = text[index - 1];
    if (isTrailSurrogate(trail) && index >= 2 && isLeadSurrogate(text[index - 2])) {
        return {0x10000 + ((char32_t(text[index - 2]) - 0xD800) << 10) + (trail - 0xDC00), 2};
    }
    return {trail, 1};
}

/// Appends `codePoint` as one or two UTF-16 code units; surrogates are appended as they are.
ZR_EXPORT void appendCodePoint(std::u16string& text, char32_t codePoint);

/// Decodes UTF-8; no value when any byte sequence is ill-formed (overlong forms and surrogates included).
[[nodiscard]] ZR_EXPORT std::optional<std::u16string> utf16FromUtf8(std::string_view bytes);

/// Decodes UTF-8, putting one U+FFFD in the place of every ill-formed sequence.
[[nodiscard]] ZR_EXPORT std::u16string utf16FromUtf8Replacing(std::string_view bytes);

/// Encodes as UTF-8; a lone surrogate becomes U+FFFD.
[[nodiscard]] ZR_EXPORT std::string utf8FromUtf16(std::u16string_view text);

/// True when every surrogate in `text` has its partner.
[[nodiscard]] ZR_EXPORT bool isWellFormed(std::u16string_view text) noexcept;

/// True when every code unit is below U+0080.
[[nodiscard]] ZR_EXPORT bool isAscii(std::u16string_view text) noexcept;

/// True for the tab, the space separators and U+200B; line breaks are not white space here.
[[nodiscard]] constexpr bool isWhitespace(char32_t c) noexcept {
    // U+200B is no space separator, but the platform's set holds it and trimming relies on it.
    return c == 0x09 || c == 0x20 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200B) || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

/// True for U+000A to U+000D, U+0085, U+2028 and U+2029.
[[nodiscard]] constexpr bool isNewline(char32_t c) noexcept {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

[[nodiscard]] constexpr bool isWhitespaceOrNewline(char32_t c) noexcept {
    return isWhitespace(c) || isNewline(c);
}

/// The part of `text` between its first and last code point that is not a `member`.
///
/// Code points are tested whole, so a surrogate pair is never cut. Returns an empty view when all are members.
template <typename Predicate>
[[nodiscard]] constexpr std::u16string_view trimmed(std::u16string_view text, Predicate&& member) {
    while (!text.empty()) {
        const CodePoint first = codePointAt(text, 0);
        if (!member(first.value)) {
            break;
        }
        text.remove_prefix(first.length);
    }
    while (!text.empty()) {
        const CodePoint last = codePointBefore(text, text.size());
        if (!member(last.value)) {
            break;
        }
        text.remove_suffix(last.length);
    }
    return text;
}

[[nodiscard]] constexpr std::u16string_view trimmedWhitespace(std::u16string_view text) noexcept {
    return trimmed(text, isWhitespace);
}

[[nodiscard]] constexpr std::u16string_view trimmedWhitespaceAndNewlines(std::u16string_view text) noexcept {
    return trimmed(text, isWhitespaceOrNewline);
}

/// Full, locale-independent case mapping; the result may be longer than `text` ("ß" becomes "SS").
[[nodiscard]] ZR_EXPORT std::u16string uppercased(std::u16string_view text);
[[nodiscard]] ZR_EXPORT std::u16string lowercased(std::u16string_view text);

/// Every word with its first letter in title case and the others in lower case.
[[nodiscard]] ZR_EXPORT std::u16string capitalized(std::u16string_view text);

/// A 64-bit hash of the code units, the same in every process.
///
/// Not meant to withstand chosen input.
[[nodiscard]] ZR_EXPORT std::uint64_t hashUnits(std::u16string_view text) noexcept;

} // namespace zr::detail
