#include <zrbasic/core/input_formatter.h>

#include <zrbasic/collections/dictionary.h>
#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/foundation/pattern_p.h>

namespace zr {
namespace {

Ref<ZRInputFormatter> newFormatter(Class* formatterClass) {
    return Ref<ZRInputFormatter>(cast<ZRInputFormatter>(class_createInstance(formatterClass)));
}

Ref<ZRInputFormatter> formatterWithMaxLength(Class* formatterClass, NSInteger maxLength) {
    return send<Ref<ZRInputFormatter>>(newFormatter(formatterClass), "initWithMaxLength:"_sel, maxLength);
}

Ref<ZRInputFormatter> formatterWithPartialValidater(Class* formatterClass, const ZRPartialValidater& validater) {
    if (!validater)
        return nullptr;
    return send<Ref<ZRInputFormatter>>(newFormatter(formatterClass), "initWithPartialValidater:"_sel, validater);
}

Ref<ZRInputFormatter> formatterWithPartialPattern(Class* formatterClass, NSString* pattern) {
    if (pattern == nullptr || pattern->length() == 0)
        return nullptr;
    return send<Ref<ZRInputFormatter>>(newFormatter(formatterClass), "initWithWithPartialPattern:"_sel, pattern);
}

Ref<ZRInputFormatter> formatterWithDelegate(Class* formatterClass, NSObject* delegate) {
    if (delegate == nullptr)
        return nullptr;
    return send<Ref<ZRInputFormatter>>(newFormatter(formatterClass), "initWithDelegate:"_sel, delegate);
}

// Null when no key of `pairs` occurs in the text.
Ref<NSString> textWithReplacements(NSString* text, NSDictionary* pairs) {
    Ref<NSString> replaced;
    for (const id& key : *pairs) {
        auto* typed = cast<NSString>(key);
        NSString* current = replaced ? replaced.get() : text;
        if (typed == nullptr || current == nullptr || !current->containsString(typed))
            continue;
        const id value = zr_objectForKey(pairs, typed);
        const Ref<NSString> replacement(cast<NSString>(value));
        replaced = current->stringByReplacingOccurrencesOfString_withString(typed, replacement ? replacement : ""_ns);
    }
    return replaced;
}

} // namespace

ZR_GROUP(ZRInputFormatter, Creation) {
    is.receivingClassMethod<&formatterWithMaxLength>("inputFormatterWithMaxLength:");
    is.receivingClassMethod<&formatterWithPartialValidater>("inputFormatterWithPartialValidater:");
    is.receivingClassMethod<&formatterWithPartialPattern>("inputFormatterWithPartialPattern:");
    is.receivingClassMethod<&formatterWithDelegate>("inputFormatterWithDelegate:");
}

ZRInputFormatter::~ZRInputFormatter() = default;

id ZRInputFormatter::initWithMaxLength(NSInteger maxLength) {
    NSFormatter::init();
    m_maxLength = maxLength;
    return id(this);
}

id ZRInputFormatter::initWithPartialValidater(const ZRPartialValidater& validater) {
    NSFormatter::init();
    m_partialValidater.set(validater);
    return id(this);
}

id ZRInputFormatter::initWithWithPartialPattern(NSString* pattern) {
    NSFormatter::init();
    if (pattern != nullptr && pattern->length() > 0)
        m_partialPattern = pattern;
    return id(this);
}

id ZRInputFormatter::initWithDelegate(NSObject* delegate) {
    NSFormatter::init();
    m_delegate = delegate;
    return id(this);
}

bool ZRInputFormatter::isPartialStringValid_newEditingString_errorDescription(NSString* partialString,
                                                                              Ref<NSString>* newString,
                                                                              Ref<NSString>*) {
    const std::u16string_view typed = partialString ? partialString->view() : std::u16string_view();
    const NSInteger limit = maxLength();
    if (limit > 0 && typed.size() > static_cast<NSUInteger>(limit))
        return false;
    if (!spaceEnable() && typed.find(u' ') != std::u16string_view::npos)
        return false;

    // A check may let go of this formatter.
    const Ref<ZRInputFormatter> self(this);
    Ref<NSString> replaced;
    if (const Ref<NSDictionary> pairs = replacedStringPairs())
        replaced = textWithReplacements(partialString, pairs);
    NSString* const text = replaced ? replaced.get() : partialString;
    if (text != nullptr && text->length() > 0 && !acceptsContent(text, newString)) {
        NSBeep();
        return false;
    }
    if (!replaced)
        return true;
    if (newString != nullptr)
        *newString = replaced;
    return false;
}

bool ZRInputFormatter::acceptsContent(NSString* text, Ref<NSString>* newString) {
    if (const ZRPartialValidater check = partialValidater())
        return check(text);
    if (const Ref<NSString> pattern = partialPattern())
        return validateString_withRegPattern(text, pattern);
    if (const id target = delegate()) {
        const SEL check = "inputFormatter:isPartialStringValid:newEditingString:"_sel;
        if (!target->conformsToProtocol(ZRInputFormatterDelegate::protocolObject()) &&
            !target->respondsToSelector(check))
            return true;
        return send<bool>(target, check, this, text, newString);
    }
    if (const Ref<NSCharacterSet> forbidden = invalidCharacterSet())
        return text->rangeOfCharacterFromSet(forbidden).location == NSNotFound;
    return true;
}

bool ZRInputFormatter::validateString_withRegPattern(NSString* string, NSString* pattern) {
    return string != nullptr && pattern != nullptr && detail::containsMatch(pattern->view(), 0, string->view());
}

bool ZRInputFormatter::getObjectValue_forString_errorDescription(id* object, NSString* string, Ref<NSString>*) {
    if (object != nullptr)
        *object = id(string);
    return true;
}

Ref<NSString> ZRInputFormatter::stringForObjectValue(NSObject* object) {
    return object ? NSString::stringWithFormat("%@"_ns, object) : ""_ns;
}

} // namespace zr
