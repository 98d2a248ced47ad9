#pragma once

#include <zrbasic/platform/foundation/string.h>

#include <string_view>

namespace zr::detail {

/// Raises `NSInvalidArgumentException` in the name of `self` and its operation `selector`.
[[noreturn]] void raiseNilArgument(const NSObject* self, std::string_view selector);

/// Raises `NSRangeException` unless `range` lies inside `length` elements. Copes with ranges that wrap.
void requireRange(const NSObject* self, std::string_view selector, NSRange range, NSUInteger length);

/// Raises `NSRangeException` when `index` is past `length`, the one after the last included.
void requireIndex(const NSObject* self, std::string_view selector, NSUInteger index, NSUInteger length);

/// `text`, which must not be null, as a view.
[[nodiscard]] inline std::u16string_view requireText(const NSObject* self, std::string_view selector,
                                                     const NSString* text) {
    if (text == nullptr) [[unlikely]] {
        raiseNilArgument(self, selector);
    }
    return text->view();
}

/// `units`, a part of the text of `whole`, as a string that does not change: `whole` itself where that is possible.
[[nodiscard]] Ref<NSString> part(const NSString* whole, std::u16string_view units);

/// `text` with every occurrence inside `range` replaced, and how many there were. The options are those of searches;
/// with a pattern, the replacement is a template. `range` must lie inside the text.
struct Replacement {
    std::u16string text;
    NSUInteger count;
};
[[nodiscard]] Replacement replaceOccurrences(std::u16string_view text, std::u16string_view target,
                                             std::u16string_view replacement, NSUInteger options, NSRange range);

} // namespace zr::detail
