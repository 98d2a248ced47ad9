#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

/// Text that can be changed in place. As `NSString` otherwise; must not be changed while another thread uses it.
///
/// As a key or an element of a collection it is copied or must be left alone: its hash changes with its text.
class ZR_EXPORT NSMutableString : public NSString {
    ZR_DECLARE_CLASS(NSMutableString, NSString)

  public:
    NSMutableString();
    ~NSMutableString() override;

    /// As for `NSString`, but the result can be changed.
    [[nodiscard]] static Ref<NSMutableString> fromUtf8(std::string_view text);
    [[nodiscard]] static Ref<NSMutableString> fromUtf16(std::u16string_view text);

    [[nodiscard]] static Ref<NSMutableString> string();
    [[nodiscard]] static Ref<NSMutableString> stringWithString(NSString* other);
    /// Null for a null pointer and for text that is not valid UTF-8.
    [[nodiscard]] static Ref<NSMutableString> stringWithUTF8String(const char* text);
    /// An empty string with room for so many code units; a hint, ignored beyond a million.
    [[nodiscard]] static Ref<NSMutableString> stringWithCapacity(NSUInteger capacity);
    template <class... Arguments>
    [[nodiscard]] static Ref<NSMutableString> stringWithFormat(NSString* format, const Arguments&... arguments) {
        Ref<NSMutableString> result = string();
        result->appendFormat(format, arguments...);
        return result;
    }

    id initWithCapacity(NSUInteger capacity);

    void setString(NSString* other);
    void appendString(NSString* other);
    template <class... Arguments>
    void appendFormat(NSString* format, const Arguments&... arguments) {
        const FormatArgument values[] = {FormatArgument(arguments)..., FormatArgument(nullptr)};
        m_text += formatted(format, values, sizeof...(Arguments));
    }
    /// `index` may be the length, which appends.
    void insertString_atIndex(NSString* other, NSUInteger index);
    void deleteCharactersInRange(NSRange range);
    void replaceCharactersInRange_withString(NSRange range, NSString* replacement);
    /// Replaces every occurrence inside `range` and returns how many there were.
    NSUInteger replaceOccurrencesOfString_withString_options_range(NSString* target, NSString* replacement,
                                                                   NSUInteger options, NSRange range);

    [[nodiscard]] NSUInteger hash() const override;
    /// An immutable string of the present text.
    [[nodiscard]] id copy() const override;
};

} // namespace zr
