#include <zrbasic/platform/foundation/string.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/character_set.h>
#include <zrbasic/platform/foundation/string_p.h>
#include <zrbasic/platform/foundation/text_search_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <vector>

namespace zr {

Ref<NSArray> NSString::componentsSeparatedByString(NSString* separator) const {
    const std::u16string_view needle = detail::requireText(this, "componentsSeparatedByString:", separator);
    const std::vector<detail::TextSpan> spans = detail::findAllTexts(m_text, needle);
    std::vector<id> parts;
    parts.reserve(spans.size() + 1);
    std::size_t start = 0;
    for (const detail::TextSpan& span : spans) {
        parts.push_back(detail::part(this, view().substr(start, span.location - start)));
        start = span.location + span.length;
    }
    parts.push_back(detail::part(this, view().substr(start)));
    return NSArray::fromElements(std::move(parts));
}

Ref<NSArray> NSString::componentsSeparatedByCharactersInSet(NSCharacterSet* set) const {
    if (set == nullptr) {
        detail::raiseNilArgument(this, "componentsSeparatedByCharactersInSet:");
    }
    std::vector<id> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i < m_text.size();) {
        const detail::CodePoint c = detail::codePointAt(m_text, i);
        if (set->longCharacterIsMember(c.value)) {
            parts.push_back(detail::part(this, view().substr(start, i - start)));
            start = i + c.length;
        }
        i += c.length;
    }
    parts.push_back(detail::part(this, view().substr(start)));
    return NSArray::fromElements(std::move(parts));
}

} // namespace zr
