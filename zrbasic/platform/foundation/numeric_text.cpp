#include <zrbasic/platform/foundation/numeric_text.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>

namespace zr {

namespace {

// Room for the largest double with six decimals.
constexpr std::size_t bufferSize = 384;

const char* nameOfNonFinite(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    return value < 0 ? "-inf" : "inf";
}

template <typename Float>
std::string shortestText(Float value) {
    if (!std::isfinite(value)) {
        return nameOfNonFinite(value);
    }
    char buffer[bufferSize];
    char* const limit = buffer + sizeof buffer;
    char* end = std::to_chars(buffer, limit, value, std::chars_format::scientific).ptr;
    // Scientific text always ends in e, a sign and at least two digits.
    const char* const mark = std::find(buffer, end, 'e');
    int exponent = 0;
    std::from_chars(mark + 2, end, exponent);
    exponent = mark[1] == '-' ? -exponent : exponent;
    if (exponent >= -4 && exponent < 16) {
        end = std::to_chars(buffer, limit, value, std::chars_format::fixed).ptr;
    }
    return std::string(buffer, end);
}

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

void skipBlanks(std::u16string_view& text) {
    while (!text.empty() && detail::isWhitespace(text.front())) {
        text.remove_prefix(1);
    }
}

// Leaves `text` at its first digit, point or whatever else; true for a minus sign.
bool takeSign(std::u16string_view& text) {
    skipBlanks(text);
    if (text.empty() || (text.front() != u'-' && text.front() != u'+')) {
        return false;
    }
    const bool negative = text.front() == u'-';
    text.remove_prefix(1);
    skipBlanks(text);
    return negative;
}

template <typename Integer>
Integer integerAtStart(std::u16string_view text) {
    const bool negative = takeSign(text);
    // Collected below zero, where there is room for one value more.
    constexpr Integer lowest = std::numeric_limits<Integer>::min();
    Integer value = 0;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
        const auto digit = static_cast<Integer>(text.front() - u'0');
        const bool fits = value > lowest / 10 || (value == lowest / 10 && digit <= -(lowest % 10));
        value = fits ? static_cast<Integer>(value * 10 - digit) : lowest;
        if (!fits) {
            break;
        }
    }
    if (negative) {
        return value;
    }
    return value == lowest ? std::numeric_limits<Integer>::max() : static_cast<Integer>(-value);
}

// The significant digits of a number of any length, in a form that `std::from_chars` reads.
class SignificantDigits {
    static constexpr std::size_t mostDigits = 800;

  public:
    SignificantDigits() { m_text[mostDigits] = '0'; }

    void append(char16_t digit, bool isDecimal) {
        m_exponent -= isDecimal ? 1 : 0;
        if (m_count == 0 && digit == u'0') {
            return;
        }
        if (m_count < mostDigits) {
            m_text[m_count++] = static_cast<char>(digit);
            return;
        }
        // No two neighbouring doubles have a middle of that many digits: behind them it only counts whether anything
        // is left.
        ++m_exponent;
        m_text[mostDigits] = digit != u'0' ? '1' : m_text[mostDigits];
    }
    void addExponent(std::int64_t exponent) {
        // Far beyond any range, and still too small to overflow together with the length of a text.
        constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max() / 4;
        m_exponent += std::clamp(exponent, -limit, limit);
    }

    template <typename Float>
    [[nodiscard]] Float value() {
        if (m_count == 0) {
            return 0;
        }
        constexpr std::int64_t farOut = 99999;
        const std::int64_t magnitude = m_exponent + static_cast<std::int64_t>(m_count);
        std::int64_t exponent = std::clamp(m_exponent, -farOut, farOut);
        std::size_t length = m_count;
        if (m_text[mostDigits] != '0') {
            ++length;
            --exponent;
        }
        char* end = m_text + length;
        *end++ = 'e';
        end = std::to_chars(end, m_text + sizeof m_text, exponent).ptr;
        Float value = 0;
        if (std::from_chars(m_text, end, value).ec == std::errc::result_out_of_range) {
            return magnitude > 0 ? std::numeric_limits<Float>::infinity() : 0;
        }
        return value;
    }

  private:
    // Behind the digits: the one that stands for all the others, and an exponent.
    char m_text[mostDigits + 16];
    std::size_t m_count = 0;
    std::int64_t m_exponent = 0;
};

template <typename Float>
Float floatAtStart(std::u16string_view text) {
    const bool negative = takeSign(text);
    SignificantDigits digits;
    bool found = false;
    const auto takeDigits = [&](bool isDecimal) {
        for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
            digits.append(text.front(), isDecimal);
            found = true;
        }
    };
    takeDigits(false);
    if (!text.empty() && text.front() == u'.') {
        text.remove_prefix(1);
        takeDigits(true);
    }
    if (!found) {
        return 0;
    }
    if (text.size() > 1 && (text.front() == u'e' || text.front() == u'E')) {
        text.remove_prefix(1);
        const bool hasSign = text.front() == u'-' || text.front() == u'+';
        // A blank behind the sign would be skipped there, but ends the number here.
        if (text.size() > (hasSign ? 1u : 0u) && isDigit(text[hasSign ? 1 : 0])) {
            digits.addExponent(integerAtStart<std::int64_t>(text));
        }
    }
    const Float value = digits.value<Float>();
    return negative ? -value : value;
}

} // namespace

std::string textOfDouble(double value) {
    return shortestText(value);
}

std::string textOfFloat(float value) {
    return shortestText(value);
}

std::string textWithSixDecimals(double value) {
    if (!std::isfinite(value)) {
        return nameOfNonFinite(value);
    }
    char buffer[bufferSize];
    return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 6).ptr);
}

std::int64_t integerValueOfText(std::u16string_view text) noexcept {
    return integerAtStart<std::int64_t>(text);
}

std::int32_t intValueOfText(std::u16string_view text) noexcept {
    return integerAtStart<std::int32_t>(text);
}

std::int64_t longLongValueOfText(std::u16string_view text) noexcept {
    return integerAtStart<std::int64_t>(text);
}

double doubleValueOfText(std::u16string_view text) noexcept {
    return floatAtStart<double>(text);
}

float floatValueOfText(std::u16string_view text) noexcept {
    return floatAtStart<float>(text);
}

bool boolValueOfText(std::u16string_view text) noexcept {
    skipBlanks(text);
    if (!text.empty() && std::u16string_view(u"YyTt").find(text.front()) != std::u16string_view::npos) {
        return true;
    }
    takeSign(text);
    while (!text.empty() && text.front() == u'0') {
        text.remove_prefix(1);
    }
    return !text.empty() && text.front() >= u'1' && text.front() <= u'9';
}

} // namespace zr
