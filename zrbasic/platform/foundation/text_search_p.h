#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

/// Comparison and search in UTF-16 text.
///
/// Unless told to be literal, both work on canonical equivalence: "é" and "e" with a combining accent are the same,
/// and a match never cuts a combining sequence. For equality by code unit use `==` on the views.
/// Stateless and usable from any thread; nothing throws but `std::bad_alloc`.
namespace zr::detail {

/// How texts are compared; the numbers are part of the interface and are added up.
enum CompareOption : unsigned {
    caseInsensitiveSearch = 1,
    literalSearch = 2,
    backwardsSearch = 4,
    anchoredSearch = 8,
    numericSearch = 64,
    diacriticInsensitiveSearch = 128,
    widthInsensitiveSearch = 256,
};

/// A stretch of text in UTF-16 code units.
struct TextSpan {
    std::size_t location;
    std::size_t length;

    friend constexpr bool operator==(const TextSpan&, const TextSpan&) noexcept = default;
};

/// -1, 0 or 1 as `left` comes before, is the same as, or comes after `right`.
///
/// Order is that of the decomposed code points, so U+FF5E comes before U+1F600 although its code unit is the larger.
/// Nothing is ignorable and nothing is localised: "B" comes before "a".
[[nodiscard]] ZR_EXPORT int compareTexts(std::u16string_view left, std::u16string_view right);

/// Compares with a sum of `CompareOption` values; backwards and anchored mean nothing here.
///
/// Numeric order applies where both texts have ASCII digits: "2" comes before "10", "01" is the same as "1".
[[nodiscard]] ZR_EXPORT int compareTexts(std::u16string_view left, std::u16string_view right, unsigned options);

/// The first place of `needle` (the last with the backwards option), or no value.
///
/// Anchored matches lie at the beginning, or at the end when backwards. An empty needle is never found, nor is one of
/// which folding leaves nothing. The span may be longer or shorter than the needle. The numeric option is ignored.
[[nodiscard]] ZR_EXPORT std::optional<TextSpan> findText(std::u16string_view text, std::u16string_view needle,
                                                         unsigned options = 0);

/// All places of `needle` from left to right, none overlapping; backwards is ignored, anchored keeps only those that
/// follow each other from the beginning.
[[nodiscard]] ZR_EXPORT std::vector<TextSpan> findAllTexts(std::u16string_view text, std::u16string_view needle,
                                                           unsigned options = 0);

/// The first (or last) place where the code units of `needle` stand, or `npos`; an empty needle is never found.
///
/// Takes time proportional to the lengths, whatever they hold.
[[nodiscard]] ZR_EXPORT std::size_t findLiteral(std::u16string_view text, std::u16string_view needle,
                                                std::size_t from = 0);
[[nodiscard]] ZR_EXPORT std::size_t findLastLiteral(std::u16string_view text, std::u16string_view needle);

} // namespace zr::detail
