#pragma once

#include <zrbasic/platform/foundation/character_set.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/formatter.h>
#include <zrbasic/platform/runtime/declare.h>

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace zr {

class ZRInputFormatter;

/// A content check: given the candidate text, true accepts it. Copies share the callable.
class ZRPartialValidater {
  public:
    ZRPartialValidater() = default;
    ZRPartialValidater(std::nullptr_t) {}
    /// From any callable; an empty `std::function` and a null function pointer give an empty check.
    template <class F>
    requires(!std::is_same_v<std::remove_cvref_t<F>, ZRPartialValidater> &&
             std::is_invocable_r_v<bool, std::remove_cvref_t<F>&, NSString*>) ZRPartialValidater(F&& check) {
        std::function<bool(NSString*)> function(std::forward<F>(check));
        if (function)
            m_function = std::make_shared<const std::function<bool(NSString*)>>(std::move(function));
    }

    explicit operator bool() const { return m_function != nullptr; }
    /// Must not be called on an empty check.
    bool operator()(NSString* text) const { return (*m_function)(text); }

  private:
    std::shared_ptr<const std::function<bool(NSString*)>> m_function;
};

namespace detail {

template <>
class Slot<ZRPartialValidater> {
  public:
    using Get = ZRPartialValidater;
    using Set = const ZRPartialValidater&;
    static constexpr bool isObject = false;
    static constexpr const char* storage = "C";

    [[nodiscard]] const ZRPartialValidater& get() const { return m_value; }
    void set(Set value) { m_value = value; }

    static std::string encoding() { return "@?"; }

  private:
    ZRPartialValidater m_value;
};

} // namespace detail

/// Checks the texts of input formatters for them.
class ZR_EXPORT ZRInputFormatterDelegate {
    ZR_PROTOCOL(ZRInputFormatterDelegate)
  public:
    /// Whether `partialString` may stand. A text put into `newString` is shown instead when the edit is refused, by
    /// this check or because the formatter replaced something; the formatter's own replacement wins over it.
    virtual bool inputFormatter_isPartialStringValid_newEditingString(ZRInputFormatter* formatter,
                                                                      NSString* partialString,
                                                                      Ref<NSString>* newString) = 0;
    ZR_PROTOCOL_METHOD(inputFormatter_isPartialStringValid_newEditingString,
                       "inputFormatter:isPartialStringValid:newEditingString:")
};

/// Decides, keystroke by keystroke, whether the text that a user is typing may stand.
///
/// Attached to a text field, it is handed the whole proposed text with every edit. A length limit, a rule for spaces
/// and a table of replacements come first; then the first content check that is set decides alone, in the order
/// validater, pattern, delegate, forbidden characters. Subclasses for prices, whole numbers and telephone numbers are
/// in core/number_formatters.h.
///
/// The field's value is its text: nothing is converted. Used on the thread of its text field.
class ZR_EXPORT ZRInputFormatter : public NSFormatter {
    ZR_OBJECT(ZRInputFormatter, NSFormatter)
  public:
    ~ZRInputFormatter() override;

    /// The pattern, in ICU's syntax, that the text must contain a match of; null (the default) for none. An invalid
    /// one refuses every text.
    ZR_PROPERTY(Copied<NSString>, partialPattern, setPartialPattern)
    /// The content check that comes before all others; empty by default.
    ZR_PROPERTY(ZRPartialValidater, partialValidater, setPartialValidater)
    /// A `ZRInputFormatterDelegate`, or any object that responds to its operation; not kept. Null by default.
    ZR_PROPERTY(Weak<NSObject>, delegate, setDelegate)
    /// The longest text, in UTF-16 code units; 0 (the default) and less mean no limit.
    ZR_PROPERTY(NSInteger, maxLength, setMaxLength)
    /// The characters that may not occur; null by default.
    ZR_PROPERTY(Ref<NSCharacterSet>, invalidCharacterSet, setInvalidCharacterSet)
    /// Whether a space (U+0020) may occur. False by default: a formatter that was told nothing refuses spaces.
    ZR_PROPERTY(bool, spaceEnable, setSpaceEnable)
    /// What is replaced while it is typed, strings by strings; null by default. A value that is no string counts as "".
    ZR_PROPERTY(Ref<NSDictionary>, replacedStringPairs, setReplacedStringPairs)

    /// Sets the limit, whatever its sign. All other properties keep their defaults, here and below.
    id initWithMaxLength(NSInteger maxLength);
    ZR_METHOD(initWithMaxLength, "initWithMaxLength:")
    id initWithPartialValidater(const ZRPartialValidater& validater);
    ZR_METHOD(initWithPartialValidater, "initWithPartialValidater:")
    /// Leaves the pattern null when `pattern` is null or empty.
    id initWithWithPartialPattern(NSString* pattern);
    ZR_METHOD(initWithWithPartialPattern, "initWithWithPartialPattern:")
    id initWithDelegate(NSObject* delegate);
    ZR_METHOD(initWithDelegate, "initWithDelegate:")

    /// Judges one edit.
    ///
    /// 1. A text beyond the limit is refused; 2. so is one with a space, unless spaces are enabled. Both without a
    /// beep. 3. Every key of the replacements that occurs is replaced by its value, one key after the other in the
    /// dictionary's order. 4. A text that is now empty is accepted, else 5. the content check decides. 6. What it
    /// refuses is refused with a beep and without a replacement text. 7. An accepted text in which something was
    /// replaced goes to `newString`, and the answer is false, so that the field shows it. 8. Else true.
    ///
    /// A null text counts as empty. `error` is never written; `newString` may be null.
    bool isPartialStringValid_newEditingString_errorDescription(NSString* partialString, Ref<NSString>* newString,
                                                                Ref<NSString>* error) override;

    /// Whether `string` contains a match of the pattern, letter case included; an empty match counts. False for an
    /// invalid pattern and for null.
    [[nodiscard]] virtual bool validateString_withRegPattern(NSString* string, NSString* pattern);
    ZR_METHOD(validateString_withRegPattern, "validateString:withRegPattern:")

    /// Gives `string` itself to `object`. Always true; `error` is never written.
    bool getObjectValue_forString_errorDescription(id* object, NSString* string, Ref<NSString>* error) override;
    /// The object's description; "" for null.
    [[nodiscard]] Ref<NSString> stringForObjectValue(NSObject* object) override;

  private:
    [[nodiscard]] bool acceptsContent(NSString* text, Ref<NSString>* newString);
};

/// A new formatter of the class `T` with that limit.
template <std::derived_from<ZRInputFormatter> T = ZRInputFormatter>
[[nodiscard]] Ref<T> inputFormatterWithMaxLength(NSInteger maxLength) {
    return make<T>(&ZRInputFormatter::initWithMaxLength, maxLength);
}

/// A new formatter of the class `T` with that check; null without one.
template <std::derived_from<ZRInputFormatter> T = ZRInputFormatter>
[[nodiscard]] Ref<T> inputFormatterWithPartialValidater(const ZRPartialValidater& validater) {
    return validater ? make<T>(&ZRInputFormatter::initWithPartialValidater, validater) : nullptr;
}

/// A new formatter of the class `T` with that pattern; null for a null or empty one.
template <std::derived_from<ZRInputFormatter> T = ZRInputFormatter>
[[nodiscard]] Ref<T> inputFormatterWithPartialPattern(NSString* pattern) {
    const bool hasPattern = pattern != nullptr && pattern->length() > 0;
    return hasPattern ? make<T>(&ZRInputFormatter::initWithWithPartialPattern, pattern) : nullptr;
}

/// A new formatter of the class `T` with that delegate, which is not kept; null for null.
template <std::derived_from<ZRInputFormatter> T = ZRInputFormatter>
[[nodiscard]] Ref<T> inputFormatterWithDelegate(NSObject* delegate) {
    return delegate != nullptr ? make<T>(&ZRInputFormatter::initWithDelegate, delegate) : nullptr;
}

} // namespace zr
