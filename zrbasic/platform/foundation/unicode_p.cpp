#include <zrbasic/platform/foundation/unicode_p.h>

#include <unicode/ucasemap.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace zr::detail {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr char16_t replacementCharacter = 0xFFFD;
constexpr std::uint64_t nonAsciiUnits = 0xFF80FF80FF80FF80U;
constexpr std::uint64_t nonAsciiBytes = 0x8080808080808080U;

std::uint64_t load64(const void* from) noexcept {
    std::uint64_t word;
    std::memcpy(&word, from, sizeof word);
    return word;
}

// Decodes into `result`; false at the first ill-formed sequence unless `replace` is set.
bool decodeUtf8(std::string_view bytes, std::u16string& result, bool replace) {
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const auto length = static_cast<std::int64_t>(bytes.size());
    // No sequence gives more units than it has bytes.
    result.resize(bytes.size());
    char16_t* out = result.data();
    std::int64_t i = 0;
    while (i < length) {
        // Server replies are mostly ASCII; eight bytes at a time are worth the extra loop.
        while (length - i >= 8 && (load64(data + i) & nonAsciiBytes) == 0) {
            for (int k = 0; k < 8; ++k) {
                out[k] = data[i + k];
            }
            out += 8;
            i += 8;
        }
        if (i >= length) {
            break;
        }
        UChar32 c;
        U8_NEXT(data, i, length, c);
        if (c < 0) {
            if (!replace) {
                return false;
            }
            c = replacementCharacter;
        }
        if (c < 0x10000) {
            *out++ = static_cast<char16_t>(c);
        } else {
            *out++ = U16_LEAD(c);
            *out++ = U16_TRAIL(c);
        }
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    return true;
}

using CaseMapping = std::int32_t (*)(UChar*, std::int32_t, const UChar*, std::int32_t, UErrorCode*);

std::u16string mapCase(std::u16string_view text, CaseMapping mapping) {
    // ICU counts in 32 bits; a longer text is mapped in pieces that end outside surrogate pairs.
    constexpr std::size_t pieceLimit = std::size_t(1) << 28;
    std::u16string result;
    while (!text.empty()) {
        std::size_t pieceLength = std::min(text.size(), pieceLimit);
        if (pieceLength < text.size() && isLeadSurrogate(text[pieceLength - 1])) {
            --pieceLength;
        }
        const std::u16string_view piece = text.substr(0, pieceLength);
        const std::size_t start = result.size();
        std::size_t capacity = pieceLength + 8;
        for (;;) {
            result.resize(start + capacity);
            UErrorCode status = U_ZERO_ERROR;
            const std::int32_t needed = mapping(result.data() + start, static_cast<std::int32_t>(capacity),
                                                piece.data(), static_cast<std::int32_t>(pieceLength), &status);
            if (status == U_BUFFER_OVERFLOW_ERROR) {
                capacity = static_cast<std::size_t>(needed);
                continue;
            }
            if (U_FAILURE(status)) {
                result.replace(start, capacity, piece);
            } else {
                result.resize(start + static_cast<std::size_t>(needed));
            }
            break;
        }
        text.remove_prefix(pieceLength);
    }
    return result;
}

std::int32_t toUpper(UChar* to, std::int32_t capacity, const UChar* from, std::int32_t length, UErrorCode* status) {
    return u_strToUpper(to, capacity, from, length, "", status);
}

std::int32_t toLower(UChar* to, std::int32_t capacity, const UChar* from, std::int32_t length, UErrorCode* status) {
    return u_strToLower(to, capacity, from, length, "", status);
}

std::int32_t toTitle(UChar* to, std::int32_t capacity, const UChar* from, std::int32_t length, UErrorCode* status) {
    return u_strToTitle(to, capacity, from, length, nullptr, "", status);
}

std::uint64_t foldedProduct(std::uint64_t a, std::uint64_t b) noexcept {
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

} // namespace

void appendCodePoint(std::u16string& text, char32_t codePoint) {
    if (codePoint < 0x10000) {
        text.push_back(static_cast<char16_t>(codePoint));
    } else {
        text.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
        text.push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
    }
}

std::optional<std::u16string> utf16FromUtf8(std::string_view bytes) {
    std::u16string result;
    if (!decodeUtf8(bytes, result, false)) {
        return std::nullopt;
    }
    return result;
}

std::u16string utf16FromUtf8Replacing(std::string_view bytes) {
    std::u16string result;
    decodeUtf8(bytes, result, true);
    return result;
}

std::string utf8FromUtf16(std::u16string_view text) {
    // Nearly all text is plain, and narrowing that goes many units at a time.
    if (isAscii(text)) {
        return std::string(text.begin(), text.end());
    }
    // The exact length for text without lone surrogates and pairs; those take no more than is counted here.
    std::size_t capacity = 0;
    for (const char16_t unit : text) {
        capacity += unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
    }
    std::string result(capacity, '\0');
    auto* const bytes = reinterpret_cast<std::uint8_t*>(result.data());
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] < 0x80) {
            bytes[count++] = static_cast<std::uint8_t>(text[i++]);
            continue;
        }
        const CodePoint c = codePointAt(text, i);
        i += c.length;
        const bool isLone = c.value >= 0xD800 && c.value <= 0xDFFF;
        U8_APPEND_UNSAFE(bytes, count, isLone ? char32_t(replacementCharacter) : c.value);
    }
    result.resize(count);
    return result;
}

bool isWellFormed(std::u16string_view text) noexcept {
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint c = codePointAt(text, i);
        if (c.value >= 0xD800 && c.value <= 0xDFFF) {
            return false;
        }
        i += c.length;
    }
    return true;
}

bool isAscii(std::u16string_view text) noexcept {
    std::size_t i = 0;
    for (; i + 4 <= text.size(); i += 4) {
        if ((load64(text.data() + i) & nonAsciiUnits) != 0) {
            return false;
        }
    }
    for (; i < text.size(); ++i) {
        if (text[i] >= 0x80) {
            return false;
        }
    }
    return true;
}

std::u16string uppercased(std::u16string_view text) {
    if (!isAscii(text)) {
        return mapCase(text, toUpper);
    }
    std::u16string result(text);
    for (char16_t& unit : result) {
        unit = static_cast<char16_t>(unit >= u'a' && unit <= u'z' ? unit - 0x20 : unit);
    }
    return result;
}

std::u16string lowercased(std::u16string_view text) {
    if (!isAscii(text)) {
        return mapCase(text, toLower);
    }
    std::u16string result(text);
    for (char16_t& unit : result) {
        unit = static_cast<char16_t>(unit >= u'A' && unit <= u'Z' ? unit + 0x20 : unit);
    }
    return result;
}

std::u16string capitalized(std::u16string_view text) {
    return mapCase(text, toTitle);
}

std::uint64_t hashUnits(std::u16string_view text) noexcept {
    // Odd multipliers with well spread bits; changing them changes every hash.
    constexpr std::uint64_t firstKey = 0x9E3779B97F4A7C15U;
    constexpr std::uint64_t secondKey = 0xD1B54A32D192ED03U;
    const char16_t* units = text.data();
    std::size_t left = text.size();
    std::uint64_t state = firstKey ^ (text.size() * secondKey);
    while (left >= 8) {
        state = foldedProduct(state ^ load64(units), firstKey ^ load64(units + 4));
        units += 8;
        left -= 8;
    }
    std::uint64_t low = 0;
    std::uint64_t high = 0;
    for (std::size_t i = 0; i < left; ++i) {
        (i < 4 ? low : high) |= static_cast<std::uint64_t>(units[i]) << (16 * (i % 4));
    }
    state = foldedProduct(state ^ low, secondKey ^ high);
    return foldedProduct(state ^ firstKey, secondKey);
}

} // namespace zr::detail
