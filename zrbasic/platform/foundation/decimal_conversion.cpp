#include <zrbasic/platform/foundation/decimal.h>
#include <zrbasic/platform/foundation/decimal_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/foundation/wide_integer_p.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace zr {

namespace {

using namespace detail;

template <typename Unit>
class Reader {
  public:
    explicit Reader(std::basic_string_view<Unit> text) : m_text(text) {}

    template <typename Predicate>
    void skip(Predicate&& member) {
        while (m_index < m_text.size() && member(m_text[m_index])) {
            ++m_index;
        }
    }
    [[nodiscard]] Unit next() const { return m_index < m_text.size() ? m_text[m_index] : Unit{0}; }
    bool take(char first, char second) {
        const bool found = next() == Unit(first) || next() == Unit(second);
        m_index += found ? 1 : 0;
        return found;
    }
    /// The next digit, or -1 where there is none.
    int digit() {
        const Unit unit = next();
        if (unit < Unit('0') || unit > Unit('9')) {
            return -1;
        }
        ++m_index;
        return static_cast<int>(unit - Unit('0'));
    }

  private:
    std::basic_string_view<Unit> m_text;
    std::size_t m_index = 0;
};

// Collects digits until one does not fit; from there on it only counts them.
class MantissaBuilder {
  public:
    /// False when the digit was left out.
    bool append(int digit) {
        constexpr std::uint64_t shortLimit = std::numeric_limits<std::uint64_t>::max() / 10 - 1;
        const auto value = static_cast<unsigned>(digit);
        if (!m_isLong && m_short <= shortLimit) {
            m_short = m_short * 10 + value;
            return true;
        }
        if (!m_isLong) {
            m_long = m_short;
            m_isLong = true;
        }
        constexpr Wide largest = ~Wide{0};
        m_isFull = m_isFull || m_long > (largest - value) / 10;
        if (!m_isFull) {
            m_long = m_long * 10 + value;
        }
        return !m_isFull;
    }
    [[nodiscard]] Wide value() const { return m_isLong ? m_long : m_short; }

  private:
    std::uint64_t m_short = 0;
    Wide m_long = 0;
    bool m_isLong = false;
    bool m_isFull = false;
};

template <typename Unit>
std::int64_t readExponent(Reader<Unit>& reader) {
    // Any exponent this large is out of range, however many digits the mantissa has.
    constexpr std::int64_t enough = std::numeric_limits<std::int64_t>::max() / 4;
    const bool negative = reader.next() == Unit('-');
    reader.take('-', '+');
    std::int64_t exponent = 0;
    for (int digit = reader.digit(); digit >= 0; digit = reader.digit()) {
        exponent = std::min(exponent * 10 + digit, enough / 10);
    }
    return negative ? -exponent : exponent;
}

NSDecimal settled(Wide mantissa, bool negative, std::int64_t exponent) {
    NSDecimal result{lowWord(mantissa), highWord(mantissa), 0, negative};
    if (exponent < NSDecimalMinExponent && mantissa != 0) {
        // Digits below the smallest exponent are cut off like those that the mantissa cannot hold.
        const std::int64_t excess = NSDecimalMinExponent - exponent;
        mantissa = excess < static_cast<std::int64_t>(powersOfTen.size())
                       ? mantissa / powersOfTen[static_cast<std::size_t>(excess)]
                       : 0;
        if (mantissa == 0) {
            return NSDecimal::notANumber();
        }
        setMantissa(result, mantissa);
        exponent = NSDecimalMinExponent;
    }
    settleDecimal(result, exponent);
    return result;
}

template <typename Unit, typename Predicate>
NSDecimal read(std::basic_string_view<Unit> text, Predicate&& isSpace) {
    Reader<Unit> reader(text);
    reader.skip(isSpace);
    const bool negative = reader.next() == Unit('-');
    bool found = reader.take('-', '+');
    MantissaBuilder mantissa;
    std::int64_t exponent = 0;
    for (int digit = reader.digit(); digit >= 0; digit = reader.digit()) {
        found = true;
        exponent += mantissa.append(digit) ? 0 : 1;
    }
    if (reader.take('.', '.')) {
        found = true;
        for (int digit = reader.digit(); digit >= 0; digit = reader.digit()) {
            exponent -= mantissa.append(digit) ? 1 : 0;
        }
    }
    if (!found) {
        return NSDecimal::notANumber();
    }
    if (reader.take('e', 'E')) {
        exponent += readExponent(reader);
    }
    return settled(mantissa.value(), negative, exponent);
}

bool isAsciiSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

template <typename Float>
NSDecimal fromShortestText(Float value) {
    if (!std::isfinite(value)) {
        return NSDecimal::notANumber();
    }
    char buffer[64];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    return decimalFromText(std::string_view(buffer, static_cast<std::size_t>(written.ptr - buffer)));
}

// A double with a power of two for its value; the exponent must be that of a normal number.
double powerOfTwo(int exponent) {
    return std::bit_cast<double>(static_cast<std::uint64_t>(1023 + exponent) << 52);
}

// 64 leading bits, rounded to a double at once. The lowest bit stands for everything behind it, which is enough to
// tell a tie from its neighbours.
double roundedDouble(std::uint64_t leading, bool more, int exponent) {
    return static_cast<double>(leading | (more ? 1 : 0)) * powerOfTwo(exponent);
}

double quotientAsDouble(Wide mantissa, int digits) {
    const Wide power = powersOfTen[static_cast<std::size_t>(digits)];
    const int mantissaShift = wideBits - bitCount(mantissa);
    const int powerShift = wideBits - bitCount(power);
    const Wide divisor = power << powerShift;
    Wide remainder = mantissa << mantissaShift;
    std::uint64_t next = 0;
    int exponent = powerShift - mantissaShift - wordBits;
    if (remainder >= divisor) {
        next = lowWord(remainder) << (wordBits - 1);
        remainder >>= 1;
        ++exponent;
    }
    const std::uint64_t leading = divideWord(remainder, next, divisor);
    return roundedDouble(leading, remainder != 0, exponent);
}

double productAsDouble(Wide mantissa, int digits) {
    const DoubleWide value = product(mantissa, powersOfTen[static_cast<std::size_t>(digits)]);
    const int excess = bitCount(value) - wordBits;
    if (excess <= 0) {
        return static_cast<double>(lowWord(value.low));
    }
    const bool isLong = value.high != 0;
    const Wide upper = isLong ? value.high : value.low;
    const int shift = wideBits - bitCount(upper);
    Wide leading = upper << shift;
    bool more = false;
    if (isLong) {
        leading |= shift != 0 ? value.low >> (wideBits - shift) : 0;
        more = (value.low << shift) != 0;
    }
    more = more || lowWord(leading) != 0;
    return roundedDouble(highWord(leading), more, excess);
}

// 39 digits at most, without leading zeros; returns the end.
char* writeDigits(char* text, Wide mantissa) {
    constexpr int chunk = 19;
    constexpr Wide base = powersOfTen[chunk];
    if (highWord(mantissa) == 0) {
        return std::to_chars(text, text + chunk + 1, lowWord(mantissa)).ptr;
    }
    char* const end = writeDigits(text, mantissa / base) + chunk;
    std::uint64_t rest = lowWord(mantissa % base);
    for (char* digit = end; digit != end - chunk; rest /= 10) {
        *--digit = static_cast<char>('0' + rest % 10);
    }
    return end;
}

// The whole part of the magnitude, clamped to 64 bits.
std::uint64_t wholeMagnitude(const NSDecimal& number) {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    const Wide mantissa = mantissaOf(number);
    if (mantissa == 0) {
        return 0;
    }
    const auto distance = static_cast<std::size_t>(std::abs(number.exponent));
    if (number.exponent >= 0) {
        if (distance >= 20) {
            return largest;
        }
        const DoubleWide whole = product(mantissa, powersOfTen[distance]);
        return whole.high != 0 || highWord(whole.low) != 0 ? largest : lowWord(whole.low);
    }
    if (distance >= powersOfTen.size()) {
        return 0;
    }
    const Wide whole = mantissa / powersOfTen[distance];
    return highWord(whole) != 0 ? largest : lowWord(whole);
}

} // namespace

NSDecimal decimalFromDouble(double value) noexcept {
    // A decimal of at most 15 digits that reads back is the shortest one, and most prices have one with six decimals.
    constexpr double scale = 1e6;
    constexpr double limit = 1e15;
    const double scaled = value * scale;
    if (scaled > -limit && scaled < limit) {
        const std::int64_t whole = std::llround(scaled);
        if (static_cast<double>(whole) / scale == value) {
            NSDecimal result = decimalFromInt64(whole);
            settleDecimal(result, std::int64_t{result.exponent} - 6);
            return result;
        }
    }
    return fromShortestText(value);
}

NSDecimal decimalFromFloat(float value) noexcept {
    return fromShortestText(value);
}

NSDecimal decimalFromText(std::u16string_view text) noexcept {
    return read(text, [](char16_t unit) { return isWhitespaceOrNewline(unit); });
}

NSDecimal decimalFromText(std::string_view text) noexcept {
    return read(text, isAsciiSpace);
}

std::string decimalText(const NSDecimal& number) {
    if (number.isNotANumber()) {
        return "NaN";
    }
    if (number.isZero()) {
        return "0";
    }
    NSDecimal compact = number;
    NSDecimalCompact(&compact);
    char digits[64];
    std::string text(digits, writeDigits(digits, mantissaOf(compact)));
    if (compact.exponent >= 0) {
        text.append(static_cast<std::size_t>(compact.exponent), '0');
    } else {
        const auto decimals = static_cast<std::size_t>(-compact.exponent);
        if (text.size() <= decimals) {
            text.insert(0, decimals + 1 - text.size(), '0');
        }
        text.insert(text.size() - decimals, 1, '.');
    }
    if (compact.negative) {
        text.insert(0, 1, '-');
    }
    return text;
}

double decimalToDouble(const NSDecimal& number) noexcept {
    constexpr Wide largestExactInteger = Wide{1} << 53;
    constexpr double exactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                      1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    const Wide mantissa = mantissaOf(number);
    if (mantissa == 0) {
        return number.negative ? std::numeric_limits<double>::quiet_NaN() : 0.0;
    }
    const int distance = std::abs(number.exponent);
    double magnitude = 0;
    if (mantissa <= largestExactInteger && distance <= 22) {
        const double exact = static_cast<double>(lowWord(mantissa));
        magnitude = number.exponent < 0 ? exact / exactPowers[distance] : exact * exactPowers[distance];
    } else if (distance < static_cast<int>(powersOfTen.size())) {
        magnitude = number.exponent < 0 ? quotientAsDouble(mantissa, distance) : productAsDouble(mantissa, distance);
    } else {
        char text[64];
        char* end = writeDigits(text, mantissa);
        *end++ = 'e';
        end = std::to_chars(end, text + sizeof text, number.exponent).ptr;
        std::from_chars(text, end, magnitude);
    }
    return number.negative ? -magnitude : magnitude;
}

std::int64_t decimalToInt64(const NSDecimal& number) noexcept {
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    const std::uint64_t whole = wholeMagnitude(number);
    if (number.negative) {
        return whole > largest ? std::numeric_limits<std::int64_t>::min() : -static_cast<std::int64_t>(whole);
    }
    return static_cast<std::int64_t>(std::min(whole, largest));
}

std::uint64_t decimalToUInt64(const NSDecimal& number) noexcept {
    return number.negative ? static_cast<std::uint64_t>(decimalToInt64(number)) : wholeMagnitude(number);
}

} // namespace zr
