#pragma once

#include <zrbasic/platform/foundation/percent_encoding_p.h>
#include <zrbasic/platform/runtime/ref.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

/// What URLs and URL components have in common: taking the text of a URL apart, and putting one together.
///
/// Stateless and usable from any thread; nothing throws but `std::bad_alloc`.
namespace zr {

class NSNumber;
class NSString;
class NSURL;

namespace detail {

/// The parts of a URL's text as they stand in it, escapes included; no value for a part that is not there, which is
/// not the same as an empty one. Views of the text that was split.
struct UrlParts {
    std::optional<std::u16string_view> scheme;
    /// All between "//" and the path; the next four are parts of it.
    std::optional<std::u16string_view> authority;
    std::optional<std::u16string_view> user;
    std::optional<std::u16string_view> password;
    /// With the brackets of an address in brackets. There whenever there is an authority.
    std::optional<std::u16string_view> host;
    std::optional<std::u16string_view> port;
    std::u16string_view path;
    std::optional<std::u16string_view> query;
    std::optional<std::u16string_view> fragment;

    /// What follows the scheme is that scheme's own business, as in "mailto:a@b".
    [[nodiscard]] bool isOpaque() const { return scheme && !authority && !path.starts_with(u'/'); }
};

/// Takes any text apart, well-formed or not.
[[nodiscard]] UrlParts splitUrl(std::u16string_view text);

/// The first place of an ASCII character, or `npos`. The standard search goes unit by unit in 16-bit text.
[[nodiscard]] inline std::size_t findCharacter(std::u16string_view text, char16_t character) noexcept {
    constexpr std::uint64_t everyUnit = 0x0001000100010001U;
    std::size_t i = 0;
    for (; i + 4 <= text.size(); i += 4) {
        std::uint64_t units;
        std::memcpy(&units, text.data() + i, sizeof units);
        // Zero where the character stands. Subtracting one lets the highest bit of such a unit show, and at most
        // mistakes units behind it for others.
        units ^= everyUnit * character;
        if (((units - everyUnit) & ~units & (everyUnit << 15)) != 0) {
            break;
        }
    }
    for (; i < text.size(); ++i) {
        if (text[i] == character) {
            return i;
        }
    }
    return std::u16string_view::npos;
}

/// The letters, digits and signs that stand for themselves in every part of a URL.
[[nodiscard]] constexpr AsciiSet unreservedAnd(std::string_view others) noexcept {
    AsciiSet set("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~");
    for (const char c : others) {
        set.insert(static_cast<unsigned char>(c));
    }
    return set;
}

/// Whether `text` is made of the members of `allowed` and of complete escapes.
[[nodiscard]] bool isEncodedText(std::u16string_view text, const AsciiSet& allowed);

/// Whether `text` has only characters that a URL may hold, whatever its structure.
[[nodiscard]] bool hasUrlCharacters(std::u16string_view text);

/// Whether `text` is a URL or relative reference to the letter of RFC 3986.
[[nodiscard]] bool isStrictUrl(std::u16string_view text);

[[nodiscard]] bool isUrlScheme(std::u16string_view text);

/// `reference`, which has no scheme, as seen from `base`. A ".." for which the base has no folder left stays in the
/// path.
[[nodiscard]] std::u16string resolvedUrl(std::u16string_view reference, std::u16string_view base);

/// Calls `visit` with the name and the value, if any, of every piece of a query, as they stand there.
template <class Visit>
void walkQuery(std::u16string_view query, Visit visit) {
    // An empty query has no pieces, but one of "&" has two.
    for (bool isLast = query.empty(); !isLast;) {
        const std::size_t end = findCharacter(query, u'&');
        isLast = end == std::u16string_view::npos;
        const std::u16string_view piece = query.substr(0, end);
        const std::size_t equals = findCharacter(piece, u'=');
        if (equals == std::u16string_view::npos) {
            visit(piece, std::optional<std::u16string_view>());
        } else {
            visit(piece.substr(0, equals), std::optional(piece.substr(equals + 1)));
        }
        query.remove_prefix(isLast ? 0 : end + 1);
    }
}

/// Appends "name=value" with the escapes that names and values need, and without a value the name alone. `isFirst`
/// says that no "&" is wanted, and is false afterwards.
void appendQueryItem(std::u16string& query, bool& isFirst, std::u16string_view name,
                     std::optional<std::u16string_view> value);

/// Appends an item that is escaped already the way `appendQueryItem` would write it once it was decoded. A name that
/// does not decode becomes "", and such a value is left out.
void appendRewrittenItem(std::u16string& query, bool& isFirst, std::u16string_view name,
                         std::optional<std::u16string_view> value);

/// The characters that stand for themselves in a whole query or fragment.
inline constexpr AsciiSet queryCharacters = unreservedAnd("!$&'()*+,;=:@/?");

/// Appends `text` with everything outside `allowed` as escapes; a lone surrogate is written as U+FFFD.
void appendEncoded(std::u16string& to, std::u16string_view text, const AsciiSet& allowed);

/// `text` with its escapes decoded; null when they are not UTF-8, and for no value.
[[nodiscard]] Ref<NSString> decodedPart(std::optional<std::u16string_view> text);

/// `text` as a string; null for no value.
[[nodiscard]] Ref<NSString> plainPart(std::optional<std::u16string_view> text);

/// A URL of a text that is known to have only the characters of one.
[[nodiscard]] Ref<NSURL> urlOfCheckedText(Ref<NSString> text);

/// A port's text as a number; null when it is anything but digits, or beyond the signed 64-bit range.
[[nodiscard]] Ref<NSNumber> portNumber(std::optional<std::u16string_view> text);

} // namespace detail

} // namespace zr
