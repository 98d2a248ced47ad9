#include <zrbasic/platform/foundation/mutable_string.h>

#include <zrbasic/platform/foundation/string_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <algorithm>

namespace zr {

ZR_DEFINE_CLASS(NSMutableString) {
    is.classMethod<&NSMutableString::string>("string")
        .classMethod<&NSMutableString::stringWithString>("stringWithString:")
        .classMethod<&NSMutableString::stringWithUTF8String>("stringWithUTF8String:")
        .classMethod<&NSMutableString::stringWithCapacity>("stringWithCapacity:")
        .method<&NSMutableString::initWithCapacity>("initWithCapacity:")
        .method<&NSMutableString::setString>("setString:")
        .method<&NSMutableString::appendString>("appendString:")
        .method<&NSMutableString::insertString_atIndex>("insertString:atIndex:")
        .method<&NSMutableString::deleteCharactersInRange>("deleteCharactersInRange:")
        .method<&NSMutableString::replaceCharactersInRange_withString>("replaceCharactersInRange:withString:")
        .method<&NSMutableString::replaceOccurrencesOfString_withString_options_range>(
            "replaceOccurrencesOfString:withString:options:range:");
}

NSMutableString::NSMutableString() = default;
NSMutableString::~NSMutableString() = default;

Ref<NSMutableString> NSMutableString::fromUtf8(std::string_view text) {
    return fromUtf16(detail::utf16FromUtf8Replacing(text));
}

Ref<NSMutableString> NSMutableString::fromUtf16(std::u16string_view text) {
    Ref<NSMutableString> string = alloc<NSMutableString>();
    string->m_text = text;
    return string;
}

Ref<NSMutableString> NSMutableString::string() {
    return make<NSMutableString>();
}

Ref<NSMutableString> NSMutableString::stringWithString(NSString* other) {
    return make<NSMutableString>(&NSString::initWithString, other);
}

Ref<NSMutableString> NSMutableString::stringWithUTF8String(const char* text) {
    return make<NSMutableString>(&NSString::initWithUTF8String, text);
}

Ref<NSMutableString> NSMutableString::stringWithCapacity(NSUInteger capacity) {
    return make<NSMutableString>(&NSMutableString::initWithCapacity, capacity);
}

id NSMutableString::initWithCapacity(NSUInteger capacity) {
    m_text.reserve(std::min<NSUInteger>(capacity, 1'000'000));
    return id(this);
}

void NSMutableString::setString(NSString* other) {
    m_text = detail::requireText(this, "setString:", other);
}

void NSMutableString::appendString(NSString* other) {
    m_text += detail::requireText(this, "appendString:", other);
}

void NSMutableString::insertString_atIndex(NSString* other, NSUInteger index) {
    const std::u16string_view inserted = detail::requireText(this, "insertString:atIndex:", other);
    detail::requireIndex(this, "insertString:atIndex:", index, m_text.size());
    m_text.insert(index, inserted);
}

void NSMutableString::deleteCharactersInRange(NSRange range) {
    detail::requireRange(this, "deleteCharactersInRange:", range, m_text.size());
    m_text.erase(range.location, range.length);
}

void NSMutableString::replaceCharactersInRange_withString(NSRange range, NSString* replacement) {
    constexpr std::string_view selector = "replaceCharactersInRange:withString:";
    const std::u16string_view inserted = detail::requireText(this, selector, replacement);
    detail::requireRange(this, selector, range, m_text.size());
    m_text.replace(range.location, range.length, inserted);
}

NSUInteger NSMutableString::replaceOccurrencesOfString_withString_options_range(NSString* target, NSString* replacement,
                                                                                NSUInteger options, NSRange range) {
    constexpr std::string_view selector = "replaceOccurrencesOfString:withString:options:range:";
    const std::u16string_view needle = detail::requireText(this, selector, target);
    const std::u16string_view substitute = detail::requireText(this, selector, replacement);
    detail::requireRange(this, selector, range, m_text.size());
    detail::Replacement result = detail::replaceOccurrences(m_text, needle, substitute, options, range);
    if (result.count != 0) {
        m_text = std::move(result.text);
    }
    return result.count;
}

NSUInteger NSMutableString::hash() const {
    return detail::hashUnits(m_text);
}

id NSMutableString::copy() const {
    return NSString::fromUtf16(view());
}

} // namespace zr
