#include <zrbasic/platform/foundation/string.h>

#include <zrbasic/platform/foundation/character_set.h>
#include <zrbasic/platform/foundation/numeric_text.h>
#include <zrbasic/platform/foundation/percent_encoding_p.h>
#include <zrbasic/platform/foundation/string_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

namespace zr {

namespace {

// Without the slashes at the end; a text of nothing but slashes keeps one.
std::u16string_view withoutTrailingSlashes(std::u16string_view path) {
    while (path.size() > 1 && path.back() == u'/') {
        path.remove_suffix(1);
    }
    return path;
}

std::u16string_view lastComponent(std::u16string_view path) {
    path = withoutTrailingSlashes(path);
    const std::size_t slash = path.rfind(u'/');
    return slash == std::u16string_view::npos || path.size() == 1 ? path : path.substr(slash + 1);
}

} // namespace

Ref<NSString> NSString::uppercaseString() const {
    return fromUtf16(detail::uppercased(m_text));
}

Ref<NSString> NSString::lowercaseString() const {
    return fromUtf16(detail::lowercased(m_text));
}

Ref<NSString> NSString::capitalizedString() const {
    return fromUtf16(detail::capitalized(m_text));
}

NSInteger NSString::integerValue() const {
    return integerValueOfText(m_text);
}

std::int32_t NSString::intValue() const {
    return intValueOfText(m_text);
}

std::int64_t NSString::longLongValue() const {
    return longLongValueOfText(m_text);
}

double NSString::doubleValue() const {
    return doubleValueOfText(m_text);
}

float NSString::floatValue() const {
    return floatValueOfText(m_text);
}

bool NSString::boolValue() const {
    return boolValueOfText(m_text);
}

Ref<NSString> NSString::stringByRemovingPercentEncoding() const {
    if (m_text.find(u'%') == std::u16string::npos) {
        return detail::part(this, m_text);
    }
    auto decoded = detail::percentDecoded(m_text);
    return decoded ? fromUtf16(std::move(*decoded)) : Ref<NSString>();
}

Ref<NSString> NSString::stringByAddingPercentEncodingWithAllowedCharacters(NSCharacterSet* allowed) const {
    if (allowed == nullptr) {
        detail::raiseNilArgument(this, "stringByAddingPercentEncodingWithAllowedCharacters:");
    }
    // Only ASCII can stand for itself in escaped text, whatever else the set holds.
    detail::AsciiSet kept;
    for (char16_t c = 0; c < 0x80; ++c) {
        if (allowed->characterIsMember(c)) {
            kept.insert(c);
        }
    }
    auto encoded = detail::percentEncoded(m_text, kept);
    return encoded ? fromUtf16(std::move(*encoded)) : Ref<NSString>();
}

Ref<NSString> NSString::stringByAppendingPathComponent(NSString* component) const {
    std::u16string_view added = detail::requireText(this, "stringByAppendingPathComponent:", component);
    std::u16string_view start = withoutTrailingSlashes(view());
    if (added.find_first_not_of(u'/') == std::u16string_view::npos) {
        return detail::part(this, start);
    }
    if (!start.empty()) {
        added.remove_prefix(added.find_first_not_of(u'/'));
    }
    std::u16string joined(start);
    if (!joined.empty() && joined.back() != u'/') {
        joined.push_back(u'/');
    }
    joined += withoutTrailingSlashes(added);
    return fromUtf16(std::move(joined));
}

Ref<NSString> NSString::lastPathComponent() const {
    return detail::part(this, lastComponent(m_text));
}

Ref<NSString> NSString::pathExtension() const {
    const std::u16string_view component = lastComponent(m_text);
    const std::size_t dot = component.rfind(u'.');
    if (dot == std::u16string_view::npos || dot == 0) {
        return string();
    }
    return detail::part(this, component.substr(dot + 1));
}

} // namespace zr
