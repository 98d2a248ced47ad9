#include <zrbasic/platform/foundation/url_parts_p.h>

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <uriparser/Uri.h>

#include <limits>
#include <vector>

namespace zr::detail {

namespace {

constexpr std::size_t nowhere = std::u16string_view::npos;

constexpr AsciiSet letters("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
constexpr AsciiSet hexDigits("0123456789ABCDEFabcdef");
constexpr AsciiSet schemeCharacters("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-.");
// Brackets are reserved for addresses, but callers do write "?a[]=1".
constexpr AsciiSet urlCharacters = unreservedAnd("!$&'()*+,/:;=?@[]");
// What separates items must not occur within them.
constexpr AsciiSet itemCharacters = unreservedAnd("!$'()*+,;:@/?");

// Cuts `text` at its first `mark` and gives what follows it; no value when there is none.
std::optional<std::u16string_view> takeBehind(std::u16string_view& text, char16_t mark) {
    const std::size_t place = findCharacter(text, mark);
    if (place == nowhere) {
        return std::nullopt;
    }
    const std::u16string_view rest = text.substr(place + 1);
    text = text.substr(0, place);
    return rest;
}

void splitAuthority(UrlParts& parts) {
    std::u16string_view host = *parts.authority;
    // The last one, so that no host holds an "@" and none passes for another.
    if (const std::size_t at = host.rfind(u'@'); at != nowhere) {
        std::u16string_view user = host.substr(0, at);
        parts.password = takeBehind(user, u':');
        parts.user = user;
        host.remove_prefix(at + 1);
    }
    const std::size_t bracket = host.rfind(u']');
    const std::size_t colon = host.rfind(u':');
    if (colon != nowhere && (bracket == nowhere || colon > bracket)) {
        parts.port = host.substr(colon + 1);
        host = host.substr(0, colon);
    }
    parts.host = host;
}

// The value of an upper-case hexadecimal digit, or 16.
constexpr unsigned upperHexValue(char16_t c) {
    return c >= u'0' && c <= u'9' ? c - u'0' : c >= u'A' && c <= u'F' ? c - u'A' + 10U : 16U;
}

// Whether a name or value would be written as it stands, once it was decoded. False also for escapes of anything but
// ASCII, which need a closer look.
bool isPlainlyWritten(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (itemCharacters.contains(text[i])) {
            continue;
        }
        if (text[i] != u'%' || text.size() - i < 3) {
            return false;
        }
        const unsigned high = upperHexValue(text[i + 1]);
        const unsigned low = upperHexValue(text[i + 2]);
        if (high > 7 || low > 15 || itemCharacters.contains(high * 16 + low)) {
            return false;
        }
        i += 2;
    }
    return true;
}

// Joins a base's folder and a relative path, and goes the steps up that are in there.
std::u16string mergedPath(std::u16string_view folder, std::u16string_view relative) {
    std::u16string joined(folder);
    joined += relative;
    std::u16string_view rest = joined;
    const bool isAbsolute = rest.starts_with(u'/');
    if (isAbsolute) {
        rest.remove_prefix(1);
    }
    std::vector<std::u16string_view> segments;
    for (bool isLast = false; !isLast;) {
        std::u16string_view segment = rest;
        const auto behind = takeBehind(segment, u'/');
        isLast = !behind.has_value();
        rest = behind.value_or(std::u16string_view());
        const bool stepsUp = segment == u".." && !segments.empty() && segments.back() != u"..";
        if (stepsUp) {
            segments.pop_back();
        }
        if (!stepsUp && segment != u".") {
            segments.push_back(segment);
        } else if (isLast) {
            // A folder, and written as one.
            segments.push_back(std::u16string_view());
        }
    }
    std::u16string path;
    path.reserve(joined.size());
    for (std::size_t i = 0; i < segments.size(); ++i) {
        if (isAbsolute || i > 0) {
            path += u'/';
        }
        path += segments[i];
    }
    return path;
}

} // namespace

UrlParts splitUrl(std::u16string_view text) {
    UrlParts parts;
    parts.fragment = takeBehind(text, u'#');
    parts.query = takeBehind(text, u'?');
    if (const std::size_t colon = text.find(u':'); colon != nowhere && isUrlScheme(text.substr(0, colon))) {
        parts.scheme = text.substr(0, colon);
        text.remove_prefix(colon + 1);
    }
    if (text.starts_with(u"//")) {
        const std::size_t end = text.find(u'/', 2);
        parts.authority = text.substr(2, end == nowhere ? nowhere : end - 2);
        text.remove_prefix(parts.authority->size() + 2);
        splitAuthority(parts);
    }
    parts.path = text;
    return parts;
}

bool isEncodedText(std::u16string_view text, const AsciiSet& allowed) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (allowed.contains(text[i])) {
            continue;
        }
        if (text[i] != u'%' || text.size() - i < 3 || !hexDigits.contains(text[i + 1]) ||
            !hexDigits.contains(text[i + 2])) {
            return false;
        }
        i += 2;
    }
    return true;
}

bool hasUrlCharacters(std::u16string_view text) {
    const std::optional<std::u16string_view> fragment = takeBehind(text, u'#');
    return isEncodedText(text, urlCharacters) && (!fragment || isEncodedText(*fragment, urlCharacters));
}

bool isStrictUrl(std::u16string_view text) {
    // A query and a fragment have no structure beyond their characters.
    for (const char16_t mark : {u'#', u'?'}) {
        const std::optional<std::u16string_view> end = takeBehind(text, mark);
        if (end && !isEncodedText(*end, queryCharacters)) {
            return false;
        }
    }
    if (!isAscii(text)) {
        return false;
    }
    const std::string bytes(text.begin(), text.end());
    UriUriA uri;
    const char* errorPosition = nullptr;
    if (uriParseSingleUriExA(&uri, bytes.data(), bytes.data() + bytes.size(), &errorPosition) != URI_SUCCESS) {
        return false;
    }
    uriFreeUriMembersA(&uri);
    return true;
}

bool isUrlScheme(std::u16string_view text) {
    if (text.empty() || !letters.contains(text.front())) {
        return false;
    }
    for (const char16_t c : text) {
        if (!schemeCharacters.contains(c)) {
            return false;
        }
    }
    return true;
}

std::u16string resolvedUrl(std::u16string_view reference, std::u16string_view base) {
    const UrlParts own = splitUrl(reference);
    if (reference.empty()) {
        return std::u16string(base);
    }
    const UrlParts from = splitUrl(base);
    std::u16string result;
    result.reserve(base.size() + reference.size() + 1);
    if (from.scheme) {
        result += *from.scheme;
        result += u':';
    }
    if (own.authority) {
        return result += reference;
    }
    if (from.authority) {
        result += u"//";
        result += *from.authority;
    }
    std::optional<std::u16string_view> query = own.query;
    if (own.path.empty()) {
        result += from.path;
        query = query ? query : from.query;
    } else if (own.path.front() == u'/') {
        result += own.path;
    } else {
        // The folder ends with the last "/"; there is none in a path without one.
        std::u16string_view folder = from.path.substr(0, from.path.rfind(u'/') + 1);
        if (from.authority && from.path.empty()) {
            folder = u"/";
        }
        const std::u16string path = mergedPath(folder, own.path);
        if (!from.authority && path.starts_with(u"//")) {
            // Or the path would pass for a host.
            result += u"/.";
        }
        result += path;
    }
    if (query) {
        result += u'?';
        result += *query;
    }
    if (own.fragment) {
        result += u'#';
        result += *own.fragment;
    }
    return result;
}

void appendQueryItem(std::u16string& query, bool& isFirst, std::u16string_view name,
                     std::optional<std::u16string_view> value) {
    if (!isFirst) {
        query += u'&';
    }
    isFirst = false;
    appendEncoded(query, name, itemCharacters);
    if (value) {
        query += u'=';
        appendEncoded(query, *value, itemCharacters);
    }
}

void appendRewrittenItem(std::u16string& query, bool& isFirst, std::u16string_view name,
                         std::optional<std::u16string_view> value) {
    if (isPlainlyWritten(name) && (!value || isPlainlyWritten(*value))) {
        query += isFirst ? u"" : u"&";
        isFirst = false;
        query += name;
        if (value) {
            query += u'=';
            query += *value;
        }
        return;
    }
    const auto decodedValue = value ? percentDecoded(*value) : std::nullopt;
    appendQueryItem(query, isFirst, percentDecoded(name).value_or(u""), decodedValue);
}

void appendEncoded(std::u16string& to, std::u16string_view text, const AsciiSet& allowed) {
    for (;;) {
        std::size_t plain = 0;
        while (plain < text.size() && allowed.contains(text[plain])) {
            ++plain;
        }
        to.append(text.data(), plain);
        text.remove_prefix(plain);
        if (text.empty()) {
            return;
        }
        const char16_t unit = text.front();
        if (unit >= 0x80) {
            break;
        }
        appendEscape(to, static_cast<unsigned char>(unit));
        text.remove_prefix(1);
    }
    if (const auto encoded = percentEncoded(text, allowed)) {
        to += *encoded;
    } else {
        // By way of UTF-8, which has U+FFFD for what cannot be encoded.
        to += *percentEncoded(utf16FromUtf8Replacing(utf8FromUtf16(text)), allowed);
    }
}

Ref<NSString> decodedPart(std::optional<std::u16string_view> text) {
    if (!text || findCharacter(*text, u'%') == nowhere) {
        return plainPart(text);
    }
    auto decoded = percentDecoded(*text);
    return decoded ? NSString::fromUtf16(std::move(*decoded)) : Ref<NSString>();
}

Ref<NSString> plainPart(std::optional<std::u16string_view> text) {
    return text ? NSString::fromUtf16(*text) : Ref<NSString>();
}

Ref<NSNumber> portNumber(std::optional<std::u16string_view> text) {
    constexpr NSInteger most = std::numeric_limits<NSInteger>::max();
    if (!text || text->empty()) {
        return nullptr;
    }
    NSInteger value = 0;
    for (const char16_t c : *text) {
        if (c < u'0' || c > u'9' || value > (most - (c - u'0')) / 10) {
            return nullptr;
        }
        value = value * 10 + (c - u'0');
    }
    return box(value);
}

} // namespace zr::detail
