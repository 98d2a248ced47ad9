#include <zrbasic/platform/foundation/percent_encoding_p.h>

#include <zrbasic/platform/foundation/unicode_p.h>

namespace zr::detail {

namespace {

// The value of a hexadecimal digit, or -1.
int hexValue(char16_t unit) noexcept {
    if (unit >= u'0' && unit <= u'9') {
        return unit - u'0';
    }
    if (unit >= u'a' && unit <= u'f') {
        return unit - u'a' + 10;
    }
    if (unit >= u'A' && unit <= u'F') {
        return unit - u'A' + 10;
    }
    return -1;
}

} // namespace

std::optional<std::u16string> percentDecoded(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    std::string bytes;
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] != u'%') {
            result.push_back(text[i]);
            ++i;
            continue;
        }
        // A character may be spread over several escapes, so a whole run is decoded at once.
        bytes.clear();
        while (i < text.size() && text[i] == u'%') {
            if (text.size() - i < 3) {
                return std::nullopt;
            }
            const int high = hexValue(text[i + 1]);
            const int low = hexValue(text[i + 2]);
            if (high < 0 || low < 0) {
                return std::nullopt;
            }
            bytes.push_back(static_cast<char>(high * 16 + low));
            i += 3;
        }
        const auto decoded = utf16FromUtf8(bytes);
        if (!decoded) {
            return std::nullopt;
        }
        result += *decoded;
    }
    return result;
}

std::optional<std::u16string> percentEncoded(std::u16string_view text, const AsciiSet& allowed) {
    if (!isWellFormed(text)) {
        return std::nullopt;
    }
    std::u16string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        if (allowed.contains(text[i])) {
            result.push_back(text[i]);
            ++i;
            continue;
        }
        const std::size_t length = codePointAt(text, i).length;
        for (const char c : utf8FromUtf16(text.substr(i, length))) {
            appendEscape(result, static_cast<unsigned char>(c));
        }
        i += length;
    }
    return result;
}

} // namespace zr::detail
