#pragma once

#include <zrbasic/platform/foundation/format_argument.h>
#include <zrbasic/platform/runtime/declare.h>
#include <zrbasic/platform/runtime/types.h>

#include <atomic>
#include <string>
#include <string_view>

namespace zr {

class NSArray;
class NSCharacterSet;

/// How strings are compared and searched; a sum of these where options are taken.
enum NSStringCompareOptions : NSUInteger {
    NSCaseInsensitiveSearch = 1,
    /// By code unit, without regard to canonical equivalence.
    NSLiteralSearch = 2,
    /// From the end: the last match.
    NSBackwardsSearch = 4,
    /// Only at the beginning of the range, or at its end when backwards.
    NSAnchoredSearch = 8,
    /// Runs of digits compare by value; for comparisons only.
    NSNumericSearch = 64,
    NSDiacriticInsensitiveSearch = 128,
    /// Full-width and half-width forms equal the ordinary ones.
    NSWidthInsensitiveSearch = 256,
    /// The argument is a pattern; goes with case-insensitive and anchored only.
    NSRegularExpressionSearch = 1024,
};

/// Text in UTF-16. Lengths, indices and ranges count code units.
///
/// Equality, hashes, prefixes and suffixes go by code unit. Comparing, searching, replacing and splitting do not,
/// unless told to be literal: canonically equivalent texts match each other, and no match cuts a combining sequence.
/// An empty text is never found.
///
/// A null argument raises `NSInvalidArgumentException` unless the operation says otherwise; an index or range that is
/// not inside the text raises `NSRangeException`. Results are new strings or, where nothing changes, the receiver.
///
/// A string never changes (but see `NSMutableString`), so it may be used from any thread.
class ZR_EXPORT NSString : public NSObject {
    ZR_DECLARE_CLASS(NSString, NSObject)

  public:
    NSString();
    ~NSString() override;

    /// A string of the given UTF-8 text; sequences that are not valid UTF-8 become U+FFFD.
    [[nodiscard]] static Ref<NSString> fromUtf8(std::string_view text);
    /// A string of exactly these code units.
    [[nodiscard]] static Ref<NSString> fromUtf16(std::u16string_view text);
    /// The same, taking the text over.
    [[nodiscard]] static Ref<NSString> fromUtf16(std::u16string&& text);
    /// Up to the first zero unit; null reads as empty.
    [[nodiscard]] static Ref<NSString> fromUtf16(const char16_t* text) {
        return fromUtf16(text != nullptr ? std::u16string_view(text) : std::u16string_view());
    }

    /// The empty string.
    [[nodiscard]] static Ref<NSString> string();
    [[nodiscard]] static Ref<NSString> stringWithString(NSString* other);
    /// Decodes UTF-8 up to the first zero byte; null for a null pointer and for text that is not valid UTF-8.
    [[nodiscard]] static Ref<NSString> stringWithUTF8String(const char* text);
    /// The format with its directives replaced: `stringWithFormat("%@ %.2f"_ns, symbol, price)`.
    ///
    /// Objects are written as their description, null as "(null)". Widths, flags and lengths are those of C, and
    /// nothing is localised. Arguments of an unexpected kind convert or read as zero; missing ones read as null.
    template <class... Arguments>
    [[nodiscard]] static Ref<NSString> stringWithFormat(NSString* format, const Arguments&... arguments) {
        const FormatArgument values[] = {FormatArgument(arguments)..., FormatArgument(nullptr)};
        return fromUtf16(formatted(format, values, sizeof...(Arguments)));
    }

    id initWithString(NSString* other);
    /// As `stringWithUTF8String`: gives null for invalid text.
    id initWithUTF8String(const char* text);

    /// The code units, borrowed: valid while the string lives and, for a mutable one, until it is changed.
    [[nodiscard]] std::u16string_view view() const { return m_text; }
    /// The text in UTF-8; a lone surrogate becomes U+FFFD.
    [[nodiscard]] std::string utf8() const;
    /// The same; the caller owns the result.
    [[nodiscard]] std::string UTF8String() const;

    [[nodiscard]] NSUInteger length() const { return m_text.size(); }
    [[nodiscard]] char16_t characterAtIndex(NSUInteger index) const;
    /// The text from `index` on; at the length, the empty string.
    [[nodiscard]] Ref<NSString> substringFromIndex(NSUInteger index) const;
    /// The text before `index`. A surrogate pair may be cut.
    [[nodiscard]] Ref<NSString> substringToIndex(NSUInteger index) const;
    [[nodiscard]] Ref<NSString> substringWithRange(NSRange range) const;

    /// False for anything but a string of the same code units: "é" does not equal "e" with a combining accent.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] bool isEqualToString(NSString* other) const;
    [[nodiscard]] NSUInteger hash() const override;
    /// The receiver.
    [[nodiscard]] Ref<NSString> description() const override;
    [[nodiscard]] id copy() const override;
    /// An `NSMutableString` of the same text.
    [[nodiscard]] id mutableCopy() const override;

    /// By decomposed code points: "B" before "a", "10" before "9". Everything comes after null.
    [[nodiscard]] NSComparisonResult compare(NSString* other) const;
    [[nodiscard]] NSComparisonResult compare_options(NSString* other, NSUInteger options) const;
    /// Compares the part of the receiver in `range` with the whole of `other`.
    [[nodiscard]] NSComparisonResult compare_options_range(NSString* other, NSUInteger options, NSRange range) const;
    [[nodiscard]] NSComparisonResult caseInsensitiveCompare(NSString* other) const;

    /// The first place of `other`, or {NSNotFound, 0}. The range may be longer or shorter than `other`.
    [[nodiscard]] NSRange rangeOfString(NSString* other) const;
    /// With `NSRegularExpressionSearch`, the first match of the pattern; an invalid pattern is not found, and a match
    /// of length 0 is a match: test the location.
    [[nodiscard]] NSRange rangeOfString_options(NSString* other, NSUInteger options) const;
    [[nodiscard]] NSRange rangeOfString_options_range(NSString* other, NSUInteger options, NSRange range) const;
    /// As a person searches: without regard to case and diacritical marks.
    [[nodiscard]] NSRange localizedStandardRangeOfString(NSString* other) const;
    /// The first code point that belongs to `set`: a range of one or two code units.
    [[nodiscard]] NSRange rangeOfCharacterFromSet(NSCharacterSet* set) const;
    /// Backwards and anchored are the options that count here.
    [[nodiscard]] NSRange rangeOfCharacterFromSet_options(NSCharacterSet* set, NSUInteger options) const;
    [[nodiscard]] NSRange rangeOfCharacterFromSet_options_range(NSCharacterSet* set, NSUInteger options,
                                                                NSRange range) const;
    [[nodiscard]] bool containsString(NSString* other) const;
    /// By code unit; false for an empty prefix.
    [[nodiscard]] bool hasPrefix(NSString* prefix) const;
    /// By code unit; false for an empty suffix.
    [[nodiscard]] bool hasSuffix(NSString* suffix) const;

    [[nodiscard]] Ref<NSString> stringByAppendingString(NSString* other) const;
    template <class... Arguments>
    [[nodiscard]] Ref<NSString> stringByAppendingFormat(NSString* format, const Arguments&... arguments) const {
        const FormatArgument values[] = {FormatArgument(arguments)..., FormatArgument(nullptr)};
        return fromUtf16(m_text + formatted(format, values, sizeof...(Arguments)));
    }
    /// Every occurrence from left to right, none overlapping; what was put in is not searched again.
    [[nodiscard]] Ref<NSString> stringByReplacingOccurrencesOfString_withString(NSString* target,
                                                                                NSString* replacement) const;
    /// With `NSRegularExpressionSearch` the replacement is a template: "$1" stands for the first group.
    [[nodiscard]] Ref<NSString> stringByReplacingOccurrencesOfString_withString_options_range(NSString* target,
                                                                                              NSString* replacement,
                                                                                              NSUInteger options,
                                                                                              NSRange range) const;
    [[nodiscard]] Ref<NSString> stringByReplacingCharactersInRange_withString(NSRange range,
                                                                              NSString* replacement) const;
    /// The parts between the occurrences of `separator`, empty ones included: "," splits into two empty strings. The
    /// whole as the only part when there is none; so for an empty separator.
    [[nodiscard]] Ref<NSArray> componentsSeparatedByString(NSString* separator) const;
    /// The parts between the members of `set`, each member a separator of its own.
    [[nodiscard]] Ref<NSArray> componentsSeparatedByCharactersInSet(NSCharacterSet* set) const;
    /// Without the code points of `set` at both ends.
    [[nodiscard]] Ref<NSString> stringByTrimmingCharactersInSet(NSCharacterSet* set) const;

    /// Full case mapping, the same in every locale; the result may be longer: "ß" becomes "SS".
    [[nodiscard]] Ref<NSString> uppercaseString() const;
    [[nodiscard]] Ref<NSString> lowercaseString() const;
    /// Every word with a capital and small letters.
    [[nodiscard]] Ref<NSString> capitalizedString() const;

    /// The whole number that the text begins with, behind blanks; 0 when there is none. Clamped to the type's range.
    [[nodiscard]] NSInteger integerValue() const;
    [[nodiscard]] std::int32_t intValue() const;
    [[nodiscard]] std::int64_t longLongValue() const;
    /// The number that the text begins with, fraction and exponent included; 0 when there is none.
    [[nodiscard]] double doubleValue() const;
    [[nodiscard]] float floatValue() const;
    /// True when the text begins, behind blanks, with Y, y, T, t or a number whose first digit other than 0 is a whole
    /// one.
    [[nodiscard]] bool boolValue() const;

    /// Null when an escape is malformed or the bytes are not UTF-8. "+" stays "+".
    [[nodiscard]] Ref<NSString> stringByRemovingPercentEncoding() const;
    /// Everything but the ASCII characters of `allowed` as upper-case escapes of its UTF-8 bytes; null when the
    /// receiver holds a lone surrogate.
    [[nodiscard]] Ref<NSString> stringByAddingPercentEncodingWithAllowedCharacters(NSCharacterSet* allowed) const;

    /// The two joined by exactly one "/"; an empty part adds nothing.
    [[nodiscard]] Ref<NSString> stringByAppendingPathComponent(NSString* component) const;
    /// What follows the last "/", trailing ones aside; "/" for a path of nothing else.
    [[nodiscard]] Ref<NSString> lastPathComponent() const;
    /// What follows the last "." of the last component; empty when there is none or it begins the component.
    [[nodiscard]] Ref<NSString> pathExtension() const;

  protected:
    /// The format with its directives replaced; raises for a null format.
    [[nodiscard]] static std::u16string formatted(NSString* format, const FormatArgument* arguments, std::size_t count);

    std::u16string m_text;
    /// 0 until it was asked for; never kept by a mutable string.
    mutable std::atomic<NSUInteger> m_hash{0};
};

namespace detail {

template <FixedText Text>
[[nodiscard]] const Ref<NSString>& stringLiteral() {
    using Character = std::remove_cvref_t<decltype(Text.data[0])>;
    // Constants live for ever, like the literals that they are.
    static const Ref<NSString>& constant = *new Ref<NSString>([] {
        if constexpr (std::is_same_v<Character, char16_t>) {
            return NSString::fromUtf16(std::u16string_view(Text.data, sizeof(Text.data) / sizeof(Character) - 1));
        } else {
            return NSString::fromUtf8(std::string_view(Text.data, sizeof(Text.data) - 1));
        }
    }());
    return constant;
}

} // namespace detail

inline namespace literals {

/// `"price"_ns` and `u"price"_ns` are constant strings: the same object every time.
template <detail::FixedText Text>
[[nodiscard]] Ref<NSString> operator""_ns() {
    return detail::stringLiteral<Text>();
}

} // namespace literals

} // namespace zr
