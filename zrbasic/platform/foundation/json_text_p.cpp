#include <zrbasic/platform/foundation/json_text_p.h>

#include <zrbasic/platform/foundation/unicode_p.h>

#include <cstdint>

#include <unicode/utf8.h>

namespace zr::detail {

namespace {

bool isPlain(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\';
}

const char* endOfPlain(const char* position) {
    while (isPlain(*position)) {
        ++position;
    }
    return position;
}

int hexDigit(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    const char small = static_cast<char>(character | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

/// The code unit written as four hexadecimal digits; -1 when they are not there. Stops at the first wrong character,
/// so it never runs past the closing quote.
int codeUnitAt(const char* digits) {
    int unit = 0;
    for (int i = 0; i < 4; ++i) {
        const int digit = hexDigit(digits[i]);
        if (digit < 0) {
            return -1;
        }
        unit = unit * 16 + digit;
    }
    return unit;
}

char16_t plainEscape(char letter) {
    switch (letter) {
        case '"':
        case '\\':
        case '/':
            return static_cast<char16_t>(letter);
        case 'b':
            return u'\b';
        case 'f':
            return u'\f';
        case 'n':
            return u'\n';
        case 'r':
            return u'\r';
        case 't':
            return u'\t';
        default:
            return 0;
    }
}

/// Decodes one escape. Null when it is none; otherwise the position behind it.
const char* decodeEscape(const char* backslash, std::u16string& text) {
    if (backslash[1] != 'u') {
        const char16_t unit = plainEscape(backslash[1]);
        text += unit;
        return unit ? backslash + 2 : nullptr;
    }
    const int unit = codeUnitAt(backslash + 2);
    if (unit < 0 || isTrailSurrogate(static_cast<char32_t>(unit))) {
        return nullptr;
    }
    text += static_cast<char16_t>(unit);
    if (!isLeadSurrogate(static_cast<char32_t>(unit))) {
        return backslash + 6;
    }
    if (backslash[6] != '\\' || backslash[7] != 'u') {
        return nullptr;
    }
    const int second = codeUnitAt(backslash + 8);
    if (second < 0 || !isTrailSurrogate(static_cast<char32_t>(second))) {
        return nullptr;
    }
    text += static_cast<char16_t>(second);
    return backslash + 12;
}

/// Appends one character of two to four bytes of valid UTF-8.
const char* appendCharacter(const char* position, std::u16string& text) {
    const auto byte = [position](int index) { return static_cast<unsigned char>(position[index]); };
    const unsigned first = byte(0);
    if (first < 0xE0) {
        text += static_cast<char16_t>((first & 0x1F) << 6 | (byte(1) & 0x3F));
        return position + 2;
    }
    if (first < 0xF0) {
        text += static_cast<char16_t>((first & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F));
        return position + 3;
    }
    appendCodePoint(text, (first & 0x07) << 18 | (byte(1) & 0x3Fu) << 12 | (byte(2) & 0x3Fu) << 6 | (byte(3) & 0x3Fu));
    return position + 4;
}

void appendEscape(char16_t unit, std::string& json) {
    constexpr std::string_view letters = "btn.fr";
    if (unit >= '\b' && unit <= '\r' && unit != '\v') {
        json += '\\';
        json += letters[static_cast<std::size_t>(unit - '\b')];
        return;
    }
    constexpr std::string_view digits = "0123456789abcdef";
    json += "\\u00";
    json += digits[unit >> 4];
    json += digits[unit & 0xF];
}

} // namespace

std::string_view plainJsonString(const char* quote) {
    const char* const begin = quote + 1;
    const char* const end = endOfPlain(begin);
    return *end == '"' ? std::string_view(begin, static_cast<std::size_t>(end - begin)) : std::string_view();
}

bool decodeJsonString(const char* quote, std::u16string& text, const char*& fault) {
    const char* position = quote + 1;
    while (true) {
        const char* const end = endOfPlain(position);
        text.append(position, end);
        if (*end == '"') {
            return true;
        }
        if (*end != '\\') {
            position = appendCharacter(end, text);
            continue;
        }
        position = decodeEscape(end, text);
        if (!position) {
            fault = end;
            return false;
        }
    }
}

std::size_t lengthOfJsonString(std::string_view text) {
    std::size_t position = 1;
    while (position < text.size() && text[position] != '"') {
        position += text[position] == '\\' ? 2 : 1;
    }
    return position + 1;
}

std::size_t offsetOfInvalidUtf8(std::string_view text) {
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t start = position;
        // A character has four bytes at most, and indices here are 32 bits wide.
        const std::string_view piece = text.substr(start, 4);
        std::int32_t index = 0;
        UChar32 character = 0;
        U8_NEXT(piece.data(), index, static_cast<std::int32_t>(piece.size()), character);
        if (character < 0) {
            return start;
        }
        position += static_cast<std::size_t>(index);
    }
    return position;
}

std::size_t offsetOfBrokenString(std::string_view text) {
    std::size_t quote = text.size();
    for (std::size_t position = 0; position < text.size(); ++position) {
        const char character = text[position];
        const bool isInside = quote < text.size();
        if (isInside && static_cast<unsigned char>(character) < 0x20) {
            return position;
        }
        if (character == '"') {
            quote = isInside ? text.size() : position;
        } else if (isInside && character == '\\') {
            ++position;
        }
    }
    return quote;
}

bool appendJsonString(std::u16string_view text, std::string& json) {
    if (!isWellFormed(text)) {
        return false;
    }
    json += '"';
    std::size_t position = 0;
    while (position < text.size()) {
        const char16_t unit = text[position];
        if (unit >= 0x80) {
            std::size_t end = position;
            while (end < text.size() && text[end] >= 0x80) {
                ++end;
            }
            json += utf8FromUtf16(text.substr(position, end - position));
            position = end;
            continue;
        }
        if (unit < 0x20) {
            appendEscape(unit, json);
        } else {
            if (unit == '"' || unit == '\\') {
                json += '\\';
            }
            json += static_cast<char>(unit);
        }
        ++position;
    }
    json += '"';
    return true;
}

} // namespace zr::detail
