#include <zrbasic/platform/foundation/number.h>

#include <zrbasic/platform/foundation/numeric_text.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>

namespace zr {

namespace {

constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;

template <typename T>
NSComparisonResult ordered(T left, T right) {
    if (left == right) {
        return NSOrderedSame;
    }
    return left < right ? NSOrderedAscending : NSOrderedDescending;
}

NSComparisonResult reversed(NSComparisonResult result) {
    return static_cast<NSComparisonResult>(-result);
}

NSComparisonResult compareDoubles(double left, double right) {
    if (std::isnan(left) || std::isnan(right)) {
        if (std::isnan(left) && std::isnan(right)) {
            return NSOrderedSame;
        }
        // Not a number stands between the negative values and zero.
        if (std::isnan(left)) {
            return right < 0 ? NSOrderedDescending : NSOrderedAscending;
        }
        return left < 0 ? NSOrderedAscending : NSOrderedDescending;
    }
    return ordered(left, right);
}

std::int64_t clampedToSigned(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= twoTo63) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return value < -twoTo63 ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(value);
}

std::uint64_t clampedToUnsigned(double value) {
    if (value >= twoTo64) {
        return std::numeric_limits<std::uint64_t>::max();
    }
    return value >= twoTo63 ? static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(clampedToSigned(value));
}

} // namespace

ZR_DEFINE_CLASS(NSNumber) {
    is.classMethod<&NSNumber::numberWithBool>("numberWithBool:")
        .classMethod<&NSNumber::numberWithChar>("numberWithChar:")
        .classMethod<&NSNumber::numberWithUnsignedChar>("numberWithUnsignedChar:")
        .classMethod<&NSNumber::numberWithShort>("numberWithShort:")
        .classMethod<&NSNumber::numberWithUnsignedShort>("numberWithUnsignedShort:")
        .classMethod<&NSNumber::numberWithInt>("numberWithInt:")
        .classMethod<&NSNumber::numberWithUnsignedInt>("numberWithUnsignedInt:")
        .classMethod<&NSNumber::numberWithLong>("numberWithLong:")
        .classMethod<&NSNumber::numberWithUnsignedLong>("numberWithUnsignedLong:")
        .classMethod<&NSNumber::numberWithLongLong>("numberWithLongLong:")
        .classMethod<&NSNumber::numberWithUnsignedLongLong>("numberWithUnsignedLongLong:")
        .classMethod<&NSNumber::numberWithInteger>("numberWithInteger:")
        .classMethod<&NSNumber::numberWithUnsignedInteger>("numberWithUnsignedInteger:")
        .classMethod<&NSNumber::numberWithFloat>("numberWithFloat:")
        .classMethod<&NSNumber::numberWithDouble>("numberWithDouble:")
        .method<&NSNumber::boolValue>("boolValue")
        .method<&NSNumber::charValue>("charValue")
        .method<&NSNumber::unsignedCharValue>("unsignedCharValue")
        .method<&NSNumber::shortValue>("shortValue")
        .method<&NSNumber::unsignedShortValue>("unsignedShortValue")
        .method<&NSNumber::intValue>("intValue")
        .method<&NSNumber::unsignedIntValue>("unsignedIntValue")
        .method<&NSNumber::longValue>("longValue")
        .method<&NSNumber::unsignedLongValue>("unsignedLongValue")
        .method<&NSNumber::longLongValue>("longLongValue")
        .method<&NSNumber::unsignedLongLongValue>("unsignedLongLongValue")
        .method<&NSNumber::integerValue>("integerValue")
        .method<&NSNumber::unsignedIntegerValue>("unsignedIntegerValue")
        .method<&NSNumber::floatValue>("floatValue")
        .method<&NSNumber::doubleValue>("doubleValue")
        .method<&NSNumber::decimalValue>("decimalValue")
        .method<&NSNumber::stringValue>("stringValue")
        .method<&NSNumber::compare>("compare:")
        .method<&NSNumber::isEqualToNumber>("isEqualToNumber:");
}

NSNumber::NSNumber() = default;
NSNumber::~NSNumber() = default;

Ref<NSNumber> NSNumber::withSigned(std::int64_t value, char type) {
    Ref<NSNumber> number = alloc<NSNumber>();
    number->m_kind = Kind::Signed;
    number->m_type[0] = type;
    number->m_signed = value;
    return number;
}

Ref<NSNumber> NSNumber::withUnsigned(std::uint64_t value, char type) {
    Ref<NSNumber> number = alloc<NSNumber>();
    number->m_kind = Kind::Unsigned;
    number->m_type[0] = type;
    number->m_unsigned = value;
    return number;
}

Ref<NSNumber> NSNumber::numberWithBool(bool value) {
    const auto boolean = [](bool truth) {
        Ref<NSNumber> number = withSigned(truth ? 1 : 0, 'c');
        number->m_kind = Kind::Boolean;
        return number.leak();
    };
    static NSNumber* const yes = boolean(true);
    static NSNumber* const no = boolean(false);
    return value ? yes : no;
}

Ref<NSNumber> NSNumber::numberWithChar(signed char value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithUnsignedChar(unsigned char value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithShort(short value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithUnsignedShort(unsigned short value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithInt(int value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithUnsignedInt(unsigned int value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithLong(long value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithUnsignedLong(unsigned long value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithLongLong(long long value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithUnsignedLongLong(unsigned long long value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithInteger(NSInteger value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithUnsignedInteger(NSUInteger value) {
    return box(value);
}

Ref<NSNumber> NSNumber::numberWithFloat(float value) {
    Ref<NSNumber> number = numberWithDouble(static_cast<double>(value));
    number->m_kind = Kind::Float;
    number->m_type[0] = 'f';
    return number;
}

Ref<NSNumber> NSNumber::numberWithDouble(double value) {
    Ref<NSNumber> number = alloc<NSNumber>();
    number->m_kind = Kind::Double;
    number->m_type[0] = 'd';
    number->m_double = value;
    return number;
}

bool NSNumber::boolValue() const {
    return isFractional() ? m_double != 0 : m_unsigned != 0;
}

template <typename Integer>
Integer NSNumber::narrowed() const {
    if (!isFractional()) {
        return static_cast<Integer>(m_unsigned);
    }
    using Signed = std::make_signed_t<Integer>;
    const long long value = longLongValue();
    if (std::is_signed_v<Integer> || value < 0) {
        using Limits = std::numeric_limits<Signed>;
        return static_cast<Integer>(std::clamp<long long>(value, Limits::min(), Limits::max()));
    }
    return static_cast<Integer>(
        std::min<unsigned long long>(unsignedLongLongValue(), std::numeric_limits<Integer>::max()));
}

signed char NSNumber::charValue() const {
    return narrowed<signed char>();
}

unsigned char NSNumber::unsignedCharValue() const {
    return narrowed<unsigned char>();
}

short NSNumber::shortValue() const {
    return narrowed<short>();
}

unsigned short NSNumber::unsignedShortValue() const {
    return narrowed<unsigned short>();
}

int NSNumber::intValue() const {
    return narrowed<int>();
}

unsigned int NSNumber::unsignedIntValue() const {
    return narrowed<unsigned int>();
}

long NSNumber::longValue() const {
    return narrowed<long>();
}

unsigned long NSNumber::unsignedLongValue() const {
    return narrowed<unsigned long>();
}

long long NSNumber::longLongValue() const {
    return isFractional() ? clampedToSigned(m_double) : m_signed;
}

unsigned long long NSNumber::unsignedLongLongValue() const {
    return isFractional() ? clampedToUnsigned(m_double) : m_unsigned;
}

NSInteger NSNumber::integerValue() const {
    return longLongValue();
}

NSUInteger NSNumber::unsignedIntegerValue() const {
    return unsignedLongLongValue();
}

float NSNumber::floatValue() const {
    if (isFractional()) {
        return static_cast<float>(m_double);
    }
    return m_kind == Kind::Unsigned ? static_cast<float>(m_unsigned) : static_cast<float>(m_signed);
}

double NSNumber::doubleValue() const {
    if (isFractional()) {
        return m_double;
    }
    return m_kind == Kind::Unsigned ? static_cast<double>(m_unsigned) : static_cast<double>(m_signed);
}

NSDecimal NSNumber::decimalValue() const {
    switch (m_kind) {
        case Kind::Unsigned:
            return decimalFromUInt64(m_unsigned);
        case Kind::Float:
            return decimalFromFloat(static_cast<float>(m_double));
        case Kind::Double:
            return decimalFromDouble(m_double);
        default:
            return decimalFromInt64(m_signed);
    }
}

Ref<NSString> NSNumber::stringValue() const {
    switch (m_kind) {
        case Kind::Unsigned:
            return NSString::fromUtf8(std::to_string(m_unsigned));
        case Kind::Float:
            return NSString::fromUtf8(textOfFloat(static_cast<float>(m_double)));
        case Kind::Double:
            return NSString::fromUtf8(textOfDouble(m_double));
        default:
            return NSString::fromUtf8(std::to_string(m_signed));
    }
}

const char* NSNumber::objCType() const {
    return m_type;
}

NSComparisonResult NSNumber::compareToInteger(const NSNumber& other) const {
    const bool isOtherSigned = other.m_kind != Kind::Unsigned;
    if (isFractional()) {
        if (std::isnan(m_double)) {
            return compareDoubles(m_double, other.doubleValue());
        }
        if (m_double >= twoTo64 || m_double < -twoTo63) {
            return ordered(m_double, 0.0);
        }
        // Whole parts first: the integer may have more digits than a double holds.
        const double whole = std::trunc(m_double);
        const std::int64_t signedWhole = clampedToSigned(whole);
        NSComparisonResult result = NSOrderedSame;
        if (isOtherSigned) {
            result = whole >= twoTo63 ? NSOrderedDescending : ordered(signedWhole, other.m_signed);
        } else {
            const std::uint64_t unsignedWhole = clampedToUnsigned(whole);
            result = whole < 0 ? NSOrderedAscending : ordered(unsignedWhole, other.m_unsigned);
        }
        return result != NSOrderedSame ? result : ordered(m_double, whole);
    }
    const bool isSigned = m_kind != Kind::Unsigned;
    if (isSigned && m_signed < 0) {
        const bool isBelow = !isOtherSigned || other.m_signed >= 0;
        return isBelow ? NSOrderedAscending : ordered(m_signed, other.m_signed);
    }
    if (isOtherSigned && other.m_signed < 0) {
        return NSOrderedDescending;
    }
    return ordered(m_unsigned, other.m_unsigned);
}

NSComparisonResult NSNumber::compare(NSNumber* other) const {
    if (other == nullptr) {
        NSException::raise(NSInvalidArgumentException, "*** -[NSNumber compare:]: nil argument");
    }
    if (m_kind == Kind::Decimal || other->m_kind == Kind::Decimal) {
        const bool isLeftNaN = std::isnan(doubleValue());
        const bool isRightNaN = std::isnan(other->doubleValue());
        if (isLeftNaN || isRightNaN) {
            return ordered(!isLeftNaN, !isRightNaN);
        }
        const NSDecimal left = decimalValue();
        const NSDecimal right = other->decimalValue();
        if (left.isNotANumber() || right.isNotANumber()) {
            // Beyond the range of decimals there is no decimal value, but an order all the same.
            return compareDoubles(doubleValue(), other->doubleValue());
        }
        return NSDecimalCompare(&left, &right);
    }
    if (!other->isFractional()) {
        return compareToInteger(*other);
    }
    if (!isFractional()) {
        return reversed(other->compareToInteger(*this));
    }
    return compareDoubles(m_double, other->m_double);
}

bool NSNumber::isEqualToNumber(NSNumber* other) const {
    return other == this || (other != nullptr && compare(other) == NSOrderedSame);
}

bool NSNumber::isEqual(NSObject* other) const {
    return isEqualToNumber(cast<NSNumber>(other));
}

NSUInteger NSNumber::hash() const {
    const double value = doubleValue();
    if (std::isnan(value)) {
        return 0;
    }
    // The two zeros are equal numbers.
    return std::hash<double>()(value == 0 ? 0.0 : value);
}

Ref<NSString> NSNumber::description() const {
    return stringValue();
}

id NSNumber::copy() const {
    return id(const_cast<NSNumber*>(this));
}

} // namespace zr
