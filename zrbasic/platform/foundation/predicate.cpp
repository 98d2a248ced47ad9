#include <zrbasic/platform/foundation/predicate.h>

#include <zrbasic/platform/foundation/pattern_p.h>

namespace zr {
namespace {

// Only one condition exists, and the pattern engine is at hand to read it.
constexpr std::u16string_view matchesFormat = u"\\s*SELF\\s+MATCHES\\s+%@\\s*";

} // namespace

ZR_DEFINE_CLASS(NSPredicate) {
    is.classMethod<&NSPredicate::predicateWithFormat>("predicateWithFormat:");
    is.method<&NSPredicate::evaluateWithObject>("evaluateWithObject:");
    is.method<&NSPredicate::predicateFormat>("predicateFormat");
}

NSPredicate::~NSPredicate() = default;

Ref<NSPredicate> NSPredicate::predicateWithFormat(NSString* format, NSObject* argument) {
    if (format == nullptr || !detail::matchesWhole(matchesFormat, detail::patternCaseInsensitive, format->view())) {
        NSException::raise(NSInvalidArgumentException,
                           "Unable to parse the format string \"" + (format ? format->utf8() : "(null)") + '"');
    }
    Ref<NSPredicate> predicate = alloc<NSPredicate>();
    if (auto* pattern = cast<NSString>(argument))
        predicate->m_pattern = Ref<NSString>(cast<NSString>(pattern->copy()));
    return predicate;
}

bool NSPredicate::evaluateWithObject(NSObject* object) const {
    if (object == nullptr)
        return false;
    const auto* text = cast<NSString>(object);
    if (text == nullptr) {
        NSException::raise(NSInvalidArgumentException,
                           "Can't do regex matching on object " + object->description()->utf8() + '.');
    }
    return m_pattern != nullptr && detail::matchesWhole(m_pattern->view(), 0, text->view());
}

Ref<NSString> NSPredicate::predicateFormat() const {
    std::u16string text = u"SELF MATCHES ";
    if (m_pattern == nullptr)
        return NSString::fromUtf16(text + u"nil");
    text += u'"';
    for (const char16_t unit : m_pattern->view()) {
        if (unit == u'"' || unit == u'\\')
            text += u'\\';
        text += unit;
    }
    return NSString::fromUtf16(text + u'"');
}

Ref<NSString> NSPredicate::description() const {
    return predicateFormat();
}

bool NSPredicate::isEqual(NSObject* other) const {
    const auto* predicate = cast<NSPredicate>(other);
    if (predicate == nullptr || m_pattern == nullptr)
        return predicate != nullptr && predicate->m_pattern == nullptr;
    return m_pattern->isEqual(predicate->m_pattern);
}

NSUInteger NSPredicate::hash() const {
    return m_pattern == nullptr ? 0 : m_pattern->hash();
}

id NSPredicate::copy() const {
    return id(const_cast<NSPredicate*>(this));
}

} // namespace zr
