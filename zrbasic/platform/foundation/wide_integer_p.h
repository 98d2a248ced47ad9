#pragma once

#include <zrbasic/platform/foundation/decimal.h>

#include <array>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>

/// Integers of 128 and 256 bits, as far as the decimal needs them: the mantissa and its exact products and dividends.
namespace zr::detail {

__extension__ typedef unsigned __int128 Wide;

inline constexpr int wordBits = 64;
inline constexpr int wideBits = 128;

struct DoubleWide {
    Wide high = 0;
    Wide low = 0;
};

inline constexpr auto powersOfTen = [] {
    std::array<Wide, 39> powers{};
    Wide power = 1;
    for (Wide& entry : powers) {
        entry = power;
        power *= 10;
    }
    return powers;
}();

inline constexpr auto powersOfFive = [] {
    std::array<std::uint64_t, 28> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& entry : powers) {
        entry = power;
        power *= 5;
    }
    return powers;
}();

constexpr std::uint64_t lowWord(Wide value) {
    return static_cast<std::uint64_t>(value);
}

constexpr std::uint64_t highWord(Wide value) {
    return static_cast<std::uint64_t>(value >> wordBits);
}

constexpr Wide mantissaOf(const NSDecimal& number) {
    return (Wide{number.high} << wordBits) | number.low;
}

inline void setMantissa(NSDecimal& number, Wide mantissa) {
    number.low = lowWord(mantissa);
    number.high = highWord(mantissa);
}

inline int bitCount(Wide value) {
    const std::uint64_t high = highWord(value);
    return high != 0 ? wideBits - std::countl_zero(high) : wordBits - std::countl_zero(lowWord(value));
}

inline int bitCount(const DoubleWide& value) {
    return value.high != 0 ? wideBits + bitCount(value.high) : bitCount(value.low);
}

// 1233 / 4096 is the logarithm of 2, near enough below it for any width used here.
inline int digitsBelow(int bits) {
    return (bits * 1233) >> 12;
}

inline int digitCount(Wide value) {
    const int digits = digitsBelow(bitCount(value));
    return digits + (value >= powersOfTen[static_cast<std::size_t>(digits)] ? 1 : 0);
}

inline bool endsWithZero(Wide value) {
    if ((lowWord(value) & 1) != 0) {
        return false;
    }
    if (highWord(value) == 0) {
        return lowWord(value) % 5 == 0;
    }
    // 2 to the 64th leaves 1 when divided by 5, so the words can simply be added.
    return (highWord(value) % 5 + lowWord(value) % 5) % 5 == 0;
}

// Moves trailing zeros into the exponent, up to `highest`.
inline void stripTrailingZeros(Wide& value, std::int64_t& exponent, std::int64_t highest) {
    if (!endsWithZero(value)) {
        return;
    }
    for (const int step : {16, 8, 4}) {
        const auto unevenBits = (std::uint64_t{1} << step) - 1;
        const Wide divisor = powersOfTen[static_cast<std::size_t>(step)];
        while (highWord(value) != 0 && exponent + step <= highest && (lowWord(value) & unevenBits) == 0 &&
               value % divisor == 0) {
            value /= divisor;
            exponent += step;
        }
    }
    while (highWord(value) != 0 && exponent < highest && endsWithZero(value)) {
        value /= 10;
        ++exponent;
    }
    if (highWord(value) == 0) {
        // A single word divides by a constant without a division.
        std::uint64_t word = lowWord(value);
        for (; exponent < highest && word % 10 == 0; word /= 10) {
            ++exponent;
        }
        value = word;
    }
}

inline DoubleWide product(Wide left, Wide right) {
    const Wide low = Wide{lowWord(left)} * lowWord(right);
    const Wide crossed = Wide{highWord(left)} * lowWord(right);
    const Wide straight = Wide{lowWord(left)} * highWord(right);
    const Wide high = Wide{highWord(left)} * highWord(right);
    const Wide middle = Wide{highWord(low)} + lowWord(crossed) + lowWord(straight);
    return {high + highWord(crossed) + highWord(straight) + highWord(middle), (middle << wordBits) | lowWord(low)};
}

inline DoubleWide scaledUp(Wide value, int digits) {
    // Callers never ask for more than 76 digits in all, so what exceeds 38 fits in front.
    const int inFront = digits > 38 ? digits - 38 : 0;
    return product(value * powersOfTen[static_cast<std::size_t>(inFront)],
                   powersOfTen[static_cast<std::size_t>(digits - inFront)]);
}

inline DoubleWide sum(const DoubleWide& left, Wide right) {
    const Wide low = left.low + right;
    return {left.high + (low < right ? 1 : 0), low};
}

inline DoubleWide difference(const DoubleWide& left, const DoubleWide& right) {
    return {left.high - right.high - (left.low < right.low ? 1 : 0), left.low - right.low};
}

inline std::strong_ordering order(const DoubleWide& left, const DoubleWide& right) {
    return left.high != right.high ? left.high <=> right.high : left.low <=> right.low;
}

// One word of a long division: `remainder` followed by `next`, by a divisor whose top bit is set.
inline std::uint64_t divideWord(Wide& remainder, std::uint64_t next, Wide divisor) {
    const std::uint64_t top = highWord(divisor);
    const std::uint64_t rest = lowWord(divisor);
    Wide guess = highWord(remainder) == 0 ? lowWord(remainder) / top : remainder / top;
    Wide left = remainder - guess * top;
    // The divisor has two words and both take part, so the guess is exact once this loop ends.
    while (highWord(guess) != 0 || guess * rest > ((left << wordBits) | next)) {
        --guess;
        left += top;
        if (highWord(left) != 0) {
            break;
        }
    }
    remainder = ((remainder << wordBits) | next) - guess * divisor;
    return lowWord(guess);
}

struct Division {
    Wide quotient;
    Wide remainder;
};

// The quotient must fit, that is, the upper half of the dividend must be below the divisor.
inline Division divide(const DoubleWide& dividend, Wide divisor) {
    const int shift = wideBits - bitCount(divisor);
    Wide remainder = dividend.high << shift;
    if (shift != 0) {
        remainder |= dividend.low >> (wideBits - shift);
    }
    const Wide low = dividend.low << shift;
    const Wide scaled = divisor << shift;
    const std::uint64_t upper = divideWord(remainder, highWord(low), scaled);
    const std::uint64_t lower = divideWord(remainder, lowWord(low), scaled);
    return {(Wide{upper} << wordBits) | lower, remainder >> shift};
}

inline std::uint64_t divideByWord(DoubleWide& value, std::uint64_t divisor) {
    const Wide first = highWord(value.high);
    const Wide second = ((first % divisor) << wordBits) | lowWord(value.high);
    const Wide third = ((second % divisor) << wordBits) | highWord(value.low);
    const Wide fourth = ((third % divisor) << wordBits) | lowWord(value.low);
    value.high = ((first / divisor) << wordBits) | (second / divisor);
    value.low = ((third / divisor) << wordBits) | (fourth / divisor);
    return lowWord(fourth % divisor);
}

} // namespace zr::detail
