#include <zrbasic/core/text.h>

#include <zrbasic/core/tools.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/text_search_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

namespace zr {

ZR_GROUP(NSString, ZRXHelper) {
    is.classMethod<&stringByTrimmingBothEndWhiteSpace>("stringByTrimmingBothEndWhiteSpace:");
    is.method<&isEqualToStringIgnoringCase>("isEqualToStringIgnoringCase:");
    is.method<&hasAnyPrefixs>("hasAnyPrefixs:");
    is.method<&containAnyStrings>("containAnyStrings:");
    is.method<&characterLength>("characterLength");
    is.method<&subStringFrom_to>("subStringFrom:to:");
}

bool ZRXTextValid(NSObject* value) {
    if (value == nullptr || isNull(value))
        return false;
    const auto* text = cast<NSString>(value);
    return text != nullptr && !detail::trimmedWhitespace(text->view()).empty();
}

bool ZRTextValid(NSObject* value) {
    return send<bool>(ZRXTools::classObject(), "isLegalString:"_sel, value);
}

Ref<NSString> ZRXStringByTrimmingWhiteSpace(NSObject* value) {
    if (!ZRXTextValid(value))
        return nullptr;
    const std::u16string_view text = detail::trimmedWhitespaceAndNewlines(cast<NSString>(value)->view());
    return text.empty() ? nullptr : NSString::fromUtf16(text);
}

Ref<NSString> stringByTrimmingBothEndWhiteSpace(NSObject* value) {
    const Ref<NSString> text = ZRXStringByTrimmingWhiteSpace(value);
    return text ? text : ""_ns;
}

bool isEqualToStringIgnoringCase(NSString* self, NSObject* other) {
    if (self == nullptr || !ZRXTextValid(other))
        return false;
    return detail::compareTexts(self->view(), cast<NSString>(other)->view(),
                                detail::caseInsensitiveSearch | detail::widthInsensitiveSearch) == 0;
}

bool hasAnyPrefixs(NSString* self, NSArray* prefixes) {
    if (self == nullptr || prefixes == nullptr)
        return false;
    for (const id& prefix : *prefixes) {
        if (auto* text = cast<NSString>(prefix); text != nullptr && self->hasPrefix(text))
            return true;
    }
    return false;
}

bool containAnyStrings(NSString* self, NSArray* strings) {
    if (self == nullptr || strings == nullptr)
        return false;
    for (const id& string : *strings) {
        if (auto* text = cast<NSString>(string); text != nullptr && self->containsString(text))
            return true;
    }
    return false;
}

NSUInteger characterLength(NSString* self) {
    if (self == nullptr)
        return 0;
    NSUInteger length = 0;
    for (const char16_t unit : self->view())
        length += unit < 128 ? 1 : 2;
    return length;
}

Ref<NSString> subStringFrom_to(NSString* self, NSString* start, NSString* end) {
    if (self == nullptr || start == nullptr || end == nullptr)
        return self;
    const std::u16string_view text = self->view();
    const std::size_t startPosition = detail::findLiteral(text, start->view());
    const std::size_t endPosition = detail::findLiteral(text, end->view());
    if (startPosition == std::u16string_view::npos || endPosition == std::u16string_view::npos)
        return self;
    const NSUInteger location = startPosition + start->length();
    // Where the end comes first the length wraps, and the substring operation raises as it does for any bad range.
    return self->substringWithRange({location, endPosition - location});
}

} // namespace zr
