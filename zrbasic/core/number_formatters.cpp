#include <zrbasic/core/number_formatters.h>

#include <array>
#include <utility>

namespace zr {
namespace {

constexpr NSInteger longestPrice = 10;
constexpr NSInteger longestPhoneNumber = 20;

// The pattern for one setting of the switches. Those who type prices rely on the signs as they come out here: asking
// for the minus sign alone puts a lazy repetition of the start anchor in, which accepts no sign at all, and asking
// for the plus sign alone adds nothing.
Ref<NSString> makePricePattern(bool needPositivePrefix, bool needNegativePrefix, bool needFraction) {
    std::u16string pattern = u"^";
    if (needNegativePrefix && needPositivePrefix) {
        pattern += u"[+\\-]?";
    } else if (needNegativePrefix) {
        pattern += u"+?";
    }
    pattern += u"\\d*";
    if (needFraction)
        pattern += u"\\.?\\d*$";
    return NSString::fromUtf16(std::move(pattern));
}

// Asked for with every keystroke, so the few that there are stay.
NSString* pricePattern(bool needPositivePrefix, bool needNegativePrefix, bool needFraction) {
    static const auto& patterns = *new std::array<Ref<NSString>, 8>([] {
        std::array<Ref<NSString>, 8> made;
        for (unsigned index = 0; index < made.size(); ++index)
            made[index] = makePricePattern((index & 1) != 0, (index & 2) != 0, (index & 4) != 0);
        return made;
    }());
    return patterns[(needPositivePrefix ? 1U : 0U) + (needNegativePrefix ? 2U : 0U) + (needFraction ? 4U : 0U)];
}

Ref<ZRIntegerInputFormatter> integerFormatter(Class* formatterClass, NSInteger maxLength) {
    const id fresh = class_createInstance(formatterClass);
    return send<Ref<ZRIntegerInputFormatter>>(fresh, "initWithNumberMaxLength:"_sel, maxLength);
}

} // namespace

ZR_GROUP(ZRIntegerInputFormatter, Creation) {
    is.receivingClassMethod<&integerFormatter>("formatterWithNumberMaxLength:");
}

ZRPriceNumberInputFormatter::~ZRPriceNumberInputFormatter() = default;

id ZRPriceNumberInputFormatter::init() {
    initWithMaxLength(longestPrice);
    m_needPositivePrefix = true;
    m_needNegativePrefix = true;
    m_needFraction = true;
    m_partialValidater.set([self = Weak<ZRPriceNumberInputFormatter>(this)](NSString* text) {
        const Ref<ZRPriceNumberInputFormatter> formatter = self.lock();
        return formatter && formatter->validateOfString(text);
    });
    return id(this);
}

bool ZRPriceNumberInputFormatter::validateOfString(NSString* string) {
    if (string == nullptr || string->length() > static_cast<NSUInteger>(maxLength()))
        return false;
    return validateString_withRegPattern(string,
                                         pricePattern(needPositivePrefix(), needNegativePrefix(), needFraction()));
}

ZRIntegerInputFormatter::~ZRIntegerInputFormatter() = default;

id ZRIntegerInputFormatter::initWithNumberMaxLength(NSInteger maxLength) {
    initWithMaxLength(maxLength);
    m_partialPattern = NSString::stringWithFormat("^\\d{0,%ld}$"_ns, maxLength);
    return id(this);
}

ZRPhoneNumberInputFormater::~ZRPhoneNumberInputFormater() = default;

id ZRPhoneNumberInputFormater::init() {
    return initWithNumberMaxLength(longestPhoneNumber);
}

} // namespace zr
