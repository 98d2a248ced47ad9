#include <zrbasic/platform/foundation/json_number_p.h>

#include <zrbasic/platform/foundation/decimal.h>
#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/numeric_text.h>

#include <charconv>
#include <cmath>
#include <optional>
#include <string>

namespace zr::detail {

namespace {

constexpr std::size_t mostDigits = 38;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

std::size_t digitsFrom(std::string_view text, std::size_t position) {
    const std::size_t start = position;
    while (position < text.size() && isDigit(text[position])) {
        ++position;
    }
    return position - start;
}

/// The exponent behind the "e"; far enough from every usable one when it has too many digits.
long exponentIn(std::string_view text) {
    const bool isNegative = text.front() == '-';
    if (isNegative || text.front() == '+') {
        text.remove_prefix(1);
    }
    long exponent = 0;
    for (const char digit : text) {
        exponent = std::min(exponent * 10 + (digit - '0'), 1000000000L);
    }
    return isNegative ? -exponent : exponent;
}

std::optional<NSDecimal> numberOrNone(const NSDecimal& decimal) {
    return decimal.isNotANumber() ? std::nullopt : std::optional(decimal);
}

/// The decimal of exactly this value; none when it has too many digits or lies out of range.
std::optional<NSDecimal> exactDecimal(std::string_view token) {
    const bool isNegative = token.front() == '-';
    if (isNegative) {
        token.remove_prefix(1);
    }
    long exponent = 0;
    if (const std::size_t mark = token.find_first_of("eE"); mark != std::string_view::npos) {
        exponent = exponentIn(token.substr(mark + 1));
        token = token.substr(0, mark);
    }
    const std::size_t point = token.find('.');
    std::string digits(token.substr(0, point));
    if (point != std::string_view::npos) {
        const std::string_view fraction = token.substr(point + 1);
        digits += fraction;
        exponent -= static_cast<long>(fraction.size());
    }
    const std::size_t last = digits.find_last_not_of('0');
    if (last == std::string::npos) {
        return NSDecimal();
    }
    exponent += static_cast<long>(digits.size() - last - 1);
    digits.erase(last + 1);
    digits.erase(0, digits.find_first_not_of('0'));
    if (digits.size() > mostDigits) {
        return std::nullopt;
    }
    digits.insert(0, isNegative ? "-" : "");
    return numberOrNone(decimalFromText(digits + 'e' + std::to_string(exponent)));
}

id decimalOrDouble(std::string_view token) {
    // So few characters hold no more digits than fit, and without an exponent none is out of range.
    const bool isShort = token.size() <= mostDigits && token.find_first_of("eE") == std::string_view::npos;
    if (const auto decimal = isShort ? decimalFromText(token) : exactDecimal(token)) {
        return NSDecimalNumber::decimalNumberWithDecimal(*decimal);
    }
    const double nearest = doubleValueOfText(std::u16string(token.begin(), token.end()));
    return std::isfinite(nearest) ? box(nearest) : id();
}

} // namespace

std::size_t lengthOfJsonNumber(std::string_view text) {
    std::size_t position = !text.empty() && text.front() == '-' ? 1 : 0;
    const std::size_t whole = digitsFrom(text, position);
    if (whole == 0 || (whole > 1 && text[position] == '0')) {
        return 0;
    }
    position += whole;
    if (position < text.size() && text[position] == '.') {
        const std::size_t fraction = digitsFrom(text, position + 1);
        if (fraction == 0) {
            return 0;
        }
        position += 1 + fraction;
    }
    if (position < text.size() && (text[position] == 'e' || text[position] == 'E')) {
        ++position;
        if (position < text.size() && (text[position] == '+' || text[position] == '-')) {
            ++position;
        }
        const std::size_t exponent = digitsFrom(text, position);
        if (exponent == 0) {
            return 0;
        }
        position += exponent;
    }
    return position;
}

id numberFromJson(std::string_view token) {
    if (token.find_first_of(".eE") == std::string_view::npos) {
        const char* const end = token.data() + token.size();
        std::int64_t integer = 0;
        if (std::from_chars(token.data(), end, integer).ec == std::errc()) {
            return box(integer);
        }
        std::uint64_t large = 0;
        if (token.front() != '-' && std::from_chars(token.data(), end, large).ec == std::errc()) {
            return box(large);
        }
    }
    return decimalOrDouble(token);
}

} // namespace zr::detail
