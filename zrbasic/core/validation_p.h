#pragma once

#include <string_view>

/// The patterns that say what is legal, in the engine's syntax and for the whole text.
///
/// What is legal is not asked of the engine: its backtracking takes memory for every character and, for some texts,
/// time without end. Each pattern has a walk from left to right instead, which must agree with it on every text that
/// the engine can judge.
namespace zr::detail {

// Of all spaces, a path may hold only the no-break one.
inline constexpr std::u16string_view urlPattern = u"(https://|http://)?([\\w-]+\\.)+[\\w-]+(/[\\w-\u00A0./?%&=]*)?";

inline constexpr std::u16string_view phoneNumberPattern = u"^1[0-9]{10}$";

inline constexpr std::u16string_view emailAddressPattern =
    u"^[\\w!#$%&'*+/=?^_`{|}~-]+(?:\\.[\\w!#$%&'*+/=?^_`{|}~-]+)*"
    u"@(?:[\\w](?:[\\w-]*[\\w])?\\.)+[\\w](?:[\\w-]*[\\w])?$";

inline constexpr std::u16string_view passwordPattern =
    u"(((?=.*[0-9]+.*)(?=.*[a-zA-Z]+.*))"
    u"|((?=.*[\\x21-\\x2F\\x3A-\\x40\\x5B-\\x60\\x7B-\\x7E]+.*)(?=.*[a-zA-Z]+.*))"
    u"|((?=.*[0-9]+.*)(?=.*[\\x21-\\x2F\\x3A-\\x40\\x5B-\\x60\\x7B-\\x7E]+.*)))[\\x21-\\x7E]{8,24}";

inline constexpr std::u16string_view commonEnglishPattern = u"^[\\x21-\\x7E]*$";

inline constexpr std::u16string_view futuresPricePattern = u"^[+-]?[0-9]*[\\.']?[0-9]*%?$";

inline constexpr std::u16string_view pureNumberPattern = u"^\\d+$";

inline constexpr std::u16string_view idCardNumberPattern = u"^(\\d{14}|\\d{17})(\\d|[xX])$";

} // namespace zr::detail
