#include <zrbasic/platform/foundation/string.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/character_set.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/string_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/runtime/exception.h>

#include <cstring>

namespace zr {

namespace {

/// Faster than the comparison of 16-bit text in the standard library, which goes unit by unit.
bool sameUnits(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

} // namespace

ZR_DEFINE_CLASS(NSString) {
    is.classMethod<&NSString::string>("string")
        .classMethod<&NSString::stringWithString>("stringWithString:")
        .classMethod<&NSString::stringWithUTF8String>("stringWithUTF8String:")
        .method<&NSString::initWithString>("initWithString:")
        .method<&NSString::initWithUTF8String>("initWithUTF8String:")
        .method<&NSString::UTF8String>("UTF8String")
        .method<&NSString::length>("length")
        .method<&NSString::characterAtIndex>("characterAtIndex:")
        .method<&NSString::substringFromIndex>("substringFromIndex:")
        .method<&NSString::substringToIndex>("substringToIndex:")
        .method<&NSString::substringWithRange>("substringWithRange:")
        .method<&NSString::isEqualToString>("isEqualToString:")
        .method<&NSString::compare>("compare:")
        .method<&NSString::compare_options>("compare:options:")
        .method<&NSString::compare_options_range>("compare:options:range:")
        .method<&NSString::caseInsensitiveCompare>("caseInsensitiveCompare:")
        .method<&NSString::rangeOfString>("rangeOfString:")
        .method<&NSString::rangeOfString_options>("rangeOfString:options:")
        .method<&NSString::rangeOfString_options_range>("rangeOfString:options:range:")
        .method<&NSString::localizedStandardRangeOfString>("localizedStandardRangeOfString:")
        .method<&NSString::rangeOfCharacterFromSet>("rangeOfCharacterFromSet:")
        .method<&NSString::rangeOfCharacterFromSet_options>("rangeOfCharacterFromSet:options:")
        .method<&NSString::rangeOfCharacterFromSet_options_range>("rangeOfCharacterFromSet:options:range:")
        .method<&NSString::containsString>("containsString:")
        .method<&NSString::hasPrefix>("hasPrefix:")
        .method<&NSString::hasSuffix>("hasSuffix:")
        .method<&NSString::stringByAppendingString>("stringByAppendingString:")
        .method<&NSString::stringByReplacingOccurrencesOfString_withString>(
            "stringByReplacingOccurrencesOfString:withString:")
        .method<&NSString::stringByReplacingOccurrencesOfString_withString_options_range>(
            "stringByReplacingOccurrencesOfString:withString:options:range:")
        .method<&NSString::stringByReplacingCharactersInRange_withString>(
            "stringByReplacingCharactersInRange:withString:")
        .method<&NSString::componentsSeparatedByString>("componentsSeparatedByString:")
        .method<&NSString::componentsSeparatedByCharactersInSet>("componentsSeparatedByCharactersInSet:")
        .method<&NSString::stringByTrimmingCharactersInSet>("stringByTrimmingCharactersInSet:")
        .method<&NSString::uppercaseString>("uppercaseString")
        .method<&NSString::lowercaseString>("lowercaseString")
        .method<&NSString::capitalizedString>("capitalizedString")
        .method<&NSString::integerValue>("integerValue")
        .method<&NSString::intValue>("intValue")
        .method<&NSString::longLongValue>("longLongValue")
        .method<&NSString::doubleValue>("doubleValue")
        .method<&NSString::floatValue>("floatValue")
        .method<&NSString::boolValue>("boolValue")
        .method<&NSString::stringByRemovingPercentEncoding>("stringByRemovingPercentEncoding")
        .method<&NSString::stringByAddingPercentEncodingWithAllowedCharacters>(
            "stringByAddingPercentEncodingWithAllowedCharacters:")
        .method<&NSString::stringByAppendingPathComponent>("stringByAppendingPathComponent:")
        .method<&NSString::lastPathComponent>("lastPathComponent")
        .method<&NSString::pathExtension>("pathExtension");
}

NSString::NSString() = default;
NSString::~NSString() = default;

Ref<NSString> NSString::fromUtf8(std::string_view text) {
    return fromUtf16(detail::utf16FromUtf8Replacing(text));
}

Ref<NSString> NSString::fromUtf16(std::u16string_view text) {
    Ref<NSString> string = alloc<NSString>();
    string->m_text = text;
    return string;
}

Ref<NSString> NSString::fromUtf16(std::u16string&& text) {
    Ref<NSString> string = alloc<NSString>();
    string->m_text = std::move(text);
    return string;
}

Ref<NSString> NSString::string() {
    static NSString* const empty = fromUtf16(u"").leak();
    return empty;
}

Ref<NSString> NSString::stringWithString(NSString* other) {
    if (other == nullptr) {
        detail::raiseNilArgument(nullptr, "stringWithString:");
    }
    return Ref<NSString>(cast<NSString>(other->copy()));
}

Ref<NSString> NSString::stringWithUTF8String(const char* text) {
    return make<NSString>(&NSString::initWithUTF8String, text);
}

id NSString::initWithString(NSString* other) {
    m_text = detail::requireText(this, "initWithString:", other);
    return id(this);
}

id NSString::initWithUTF8String(const char* text) {
    if (text == nullptr) {
        return nullptr;
    }
    auto decoded = detail::utf16FromUtf8(text);
    if (!decoded) {
        return nullptr;
    }
    m_text = std::move(*decoded);
    return id(this);
}

std::string NSString::utf8() const {
    return detail::utf8FromUtf16(m_text);
}

std::string NSString::UTF8String() const {
    return utf8();
}

char16_t NSString::characterAtIndex(NSUInteger index) const {
    if (index >= m_text.size()) {
        NSException::raise(NSRangeException,
                           "-[" + class_()->name() + " characterAtIndex:]: Range or index out of bounds");
    }
    return m_text[index];
}

Ref<NSString> NSString::substringFromIndex(NSUInteger index) const {
    detail::requireIndex(this, "substringFromIndex:", index, m_text.size());
    return detail::part(this, view().substr(index));
}

Ref<NSString> NSString::substringToIndex(NSUInteger index) const {
    detail::requireIndex(this, "substringToIndex:", index, m_text.size());
    return detail::part(this, view().substr(0, index));
}

Ref<NSString> NSString::substringWithRange(NSRange range) const {
    detail::requireRange(this, "substringWithRange:", range, m_text.size());
    return detail::part(this, view().substr(range.location, range.length));
}

bool NSString::isEqual(NSObject* other) const {
    if (other != nullptr && other->isa() == isa()) {
        // Of one class, as keys mostly are: no need to ask what the other one is.
        return sameUnits(m_text, static_cast<NSString*>(other)->m_text);
    }
    return isEqualToString(cast<NSString>(other));
}

bool NSString::isEqualToString(NSString* other) const {
    return this == other || (other != nullptr && sameUnits(m_text, other->m_text));
}

NSUInteger NSString::hash() const {
    NSUInteger known = m_hash.load(std::memory_order_relaxed);
    if (known == 0) {
        known = detail::hashUnits(m_text);
        m_hash.store(known, std::memory_order_relaxed);
    }
    return known;
}

Ref<NSString> NSString::description() const {
    return Ref<NSString>(const_cast<NSString*>(this));
}

id NSString::copy() const {
    return id(const_cast<NSString*>(this));
}

id NSString::mutableCopy() const {
    return NSMutableString::stringWithString(const_cast<NSString*>(this));
}

Ref<NSString> NSString::stringByAppendingString(NSString* other) const {
    const std::u16string_view end = detail::requireText(this, "stringByAppendingString:", other);
    std::u16string joined;
    joined.reserve(m_text.size() + end.size());
    joined += m_text;
    joined += end;
    return fromUtf16(std::move(joined));
}

Ref<NSString> NSString::stringByReplacingCharactersInRange_withString(NSRange range, NSString* replacement) const {
    constexpr std::string_view selector = "stringByReplacingCharactersInRange:withString:";
    const std::u16string_view middle = detail::requireText(this, selector, replacement);
    detail::requireRange(this, selector, range, m_text.size());
    std::u16string changed;
    changed.reserve(m_text.size() - range.length + middle.size());
    changed.append(m_text, 0, range.location);
    changed += middle;
    changed.append(m_text, NSMaxRange(range));
    return fromUtf16(std::move(changed));
}

Ref<NSString> NSString::stringByTrimmingCharactersInSet(NSCharacterSet* set) const {
    if (set == nullptr) {
        detail::raiseNilArgument(this, "stringByTrimmingCharactersInSet:");
    }
    return detail::part(this, detail::trimmed(view(), [set](char32_t c) { return set->longCharacterIsMember(c); }));
}

std::u16string NSString::formatted(NSString* format, const FormatArgument* arguments, std::size_t count) {
    if (format == nullptr) {
        NSException::raise(NSInvalidArgumentException, "*** -[NSString initWithFormat:]: nil argument");
    }
    return detail::formatText(format->view(), arguments, count);
}

namespace detail {

namespace {

std::string operationName(const NSObject* self, std::string_view selector) {
    std::string name = self != nullptr ? "-[" + self->class_()->name() : "+[NSString";
    name += ' ';
    name += selector;
    name += "]: ";
    return name;
}

} // namespace

void raiseNilArgument(const NSObject* self, std::string_view selector) {
    NSException::raise(NSInvalidArgumentException, "*** " + operationName(self, selector) + "nil argument");
}

void requireRange(const NSObject* self, std::string_view selector, NSRange range, NSUInteger length) {
    if (range.location > length || range.length > length - range.location) [[unlikely]] {
        NSException::raise(NSRangeException, operationName(self, selector) + "Range {" +
                                                 std::to_string(range.location) + ", " + std::to_string(range.length) +
                                                 "} out of bounds; string length " + std::to_string(length));
    }
}

void requireIndex(const NSObject* self, std::string_view selector, NSUInteger index, NSUInteger length) {
    if (index > length) [[unlikely]] {
        NSException::raise(NSRangeException, operationName(self, selector) + "Index " + std::to_string(index) +
                                                 " out of bounds; string length " + std::to_string(length));
    }
}

Ref<NSString> part(const NSString* whole, std::u16string_view units) {
    if (units.size() == whole->length()) {
        // A string that may change gives a snapshot, any other gives itself.
        return Ref<NSString>(cast<NSString>(whole->copy()));
    }
    return units.empty() ? NSString::string() : NSString::fromUtf16(units);
}

} // namespace detail

} // namespace zr
