#pragma once

#include <zrbasic/platform/foundation/decimal.h>
#include <zrbasic/platform/runtime/declare.h>

#include <cstdint>
#include <type_traits>

namespace zr {

/// A number as an object: a boolean, an integer, a float or a double. `NSDecimalNumber` is the kind for decimals.
///
/// Made with `box(12.5)` or the `numberWith…` operations, both of which keep the type they are given. Numbers compare
/// by value whatever their kinds: 1, 1.0, true and the decimal 1 are equal and have one hash.
///
/// A number never changes and may be used from any thread.
class ZR_EXPORT NSNumber : public NSObject {
    ZR_DECLARE_CLASS(NSNumber, NSObject)

  public:
    NSNumber();
    ~NSNumber() override;

    /// One of two objects, which live as long as the process.
    [[nodiscard]] static Ref<NSNumber> numberWithBool(bool value);
    [[nodiscard]] static Ref<NSNumber> numberWithChar(signed char value);
    [[nodiscard]] static Ref<NSNumber> numberWithUnsignedChar(unsigned char value);
    [[nodiscard]] static Ref<NSNumber> numberWithShort(short value);
    [[nodiscard]] static Ref<NSNumber> numberWithUnsignedShort(unsigned short value);
    [[nodiscard]] static Ref<NSNumber> numberWithInt(int value);
    [[nodiscard]] static Ref<NSNumber> numberWithUnsignedInt(unsigned int value);
    [[nodiscard]] static Ref<NSNumber> numberWithLong(long value);
    [[nodiscard]] static Ref<NSNumber> numberWithUnsignedLong(unsigned long value);
    [[nodiscard]] static Ref<NSNumber> numberWithLongLong(long long value);
    [[nodiscard]] static Ref<NSNumber> numberWithUnsignedLongLong(unsigned long long value);
    [[nodiscard]] static Ref<NSNumber> numberWithInteger(NSInteger value);
    [[nodiscard]] static Ref<NSNumber> numberWithUnsignedInteger(NSUInteger value);
    [[nodiscard]] static Ref<NSNumber> numberWithFloat(float value);
    [[nodiscard]] static Ref<NSNumber> numberWithDouble(double value);

    /// Whether the value is anything but zero; NaN is.
    [[nodiscard]] virtual bool boolValue() const;
    /// A fraction is cut off toward zero; a floating-point value out of range clamps, and NaN gives 0. An integer out
    /// of range keeps its low bits, and so does a negative value read as unsigned: -1 is the largest one.
    [[nodiscard]] signed char charValue() const;
    [[nodiscard]] unsigned char unsignedCharValue() const;
    [[nodiscard]] short shortValue() const;
    [[nodiscard]] unsigned short unsignedShortValue() const;
    [[nodiscard]] int intValue() const;
    [[nodiscard]] unsigned int unsignedIntValue() const;
    [[nodiscard]] long longValue() const;
    [[nodiscard]] unsigned long unsignedLongValue() const;
    [[nodiscard]] virtual long long longLongValue() const;
    [[nodiscard]] virtual unsigned long long unsignedLongLongValue() const;
    [[nodiscard]] NSInteger integerValue() const;
    [[nodiscard]] NSUInteger unsignedIntegerValue() const;
    /// The nearest float.
    [[nodiscard]] virtual float floatValue() const;
    /// The nearest double.
    [[nodiscard]] virtual double doubleValue() const;
    /// An integer exactly, a floating-point value as the shortest decimal that reads back: 0.1 is 0.1. NaN for NaN, the
    /// infinities and what is out of a decimal's range.
    [[nodiscard]] virtual NSDecimal decimalValue() const;
    /// The shortest text that reads back, such as "1.5", "100" or "1e-05"; "1" and "0" for booleans. Never null.
    [[nodiscard]] virtual Ref<NSString> stringValue() const;

    /// One letter for the type the number was made with: c s i q for signed integers by width, C S I Q for unsigned
    /// ones, f and d. A boolean has c, a decimal d.
    [[nodiscard]] virtual const char* objCType() const;
    [[nodiscard]] bool isBoolean() const { return m_kind == Kind::Boolean; }
    /// A float, a double or a decimal, whether or not the value is whole.
    [[nodiscard]] bool isFractional() const { return m_kind >= Kind::Float; }

    /// By value, exactly, whatever the kinds. NaN equals NaN and stands between the negative values and zero, but
    /// below everything when a decimal takes part. Raises `NSInvalidArgumentException` for null.
    [[nodiscard]] NSComparisonResult compare(NSNumber* other) const;
    /// False for null.
    [[nodiscard]] bool isEqualToNumber(NSNumber* other) const;
    /// True for a number of the same value; never for a string.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;
    [[nodiscard]] Ref<NSString> description() const override;
    /// The number itself.
    [[nodiscard]] id copy() const override;

  protected:
    /// In the order in which kinds become wider.
    enum class Kind : std::uint8_t { Boolean, Signed, Unsigned, Float, Double, Decimal };
    explicit NSNumber(Kind kind) : m_kind(kind) {}

  private:
    template <typename T>
    friend Ref<NSNumber> box(T value);

    static Ref<NSNumber> withSigned(std::int64_t value, char type);
    static Ref<NSNumber> withUnsigned(std::uint64_t value, char type);
    template <typename Integer>
    [[nodiscard]] Integer narrowed() const;
    [[nodiscard]] NSComparisonResult compareToInteger(const NSNumber& other) const;

    Kind m_kind = Kind::Signed;
    char m_type[2] = {'q', '\0'};
    union {
        std::int64_t m_signed = 0;
        std::uint64_t m_unsigned;
        double m_double;
    };
};

/// The number object for any C++ number: `box(12.5)`, `box(7)`, `box(true)`. An enumerator counts as its integer.
template <typename T>
[[nodiscard]] Ref<NSNumber> box(T value) {
    if constexpr (std::is_enum_v<T>) {
        return box(static_cast<std::underlying_type_t<T>>(value));
    } else {
        static_assert(std::is_arithmetic_v<T>, "only numbers can be boxed");
        if constexpr (std::is_same_v<T, bool>) {
            return NSNumber::numberWithBool(value);
        } else if constexpr (std::is_same_v<T, float>) {
            return NSNumber::numberWithFloat(value);
        } else if constexpr (std::is_floating_point_v<T>) {
            return NSNumber::numberWithDouble(static_cast<double>(value));
        } else if constexpr (std::is_signed_v<T>) {
            return NSNumber::withSigned(value, sizeof(T) == 1   ? 'c'
                                               : sizeof(T) == 2 ? 's'
                                               : sizeof(T) == 4 ? 'i'
                                                                : 'q');
        } else {
            return NSNumber::withUnsigned(value, sizeof(T) == 1   ? 'C'
                                                 : sizeof(T) == 2 ? 'S'
                                                 : sizeof(T) == 4 ? 'I'
                                                                  : 'Q');
        }
    }
}

} // namespace zr
