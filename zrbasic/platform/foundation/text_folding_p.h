#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace zr::detail {

/// One code point of a folded text and the combining sequence of the source it comes from.
struct FoldedUnit {
    char32_t value;
    std::size_t clusterStart; ///< offset of the sequence's first code unit in the source
    std::size_t clusterEnd;   ///< offset just after its last one
    bool isFirst;             ///< first folded code point of its sequence
    bool isLast;              ///< last folded code point of its sequence
};

/// True for a unit that no canonical mapping touches unless a combining mark stands in the same text.
///
/// Two texts made of such units are canonically equivalent only when they are the same, and contain no combining
/// sequence longer than one code point. False for surrogates.
[[nodiscard]] constexpr bool isPlainUnit(char16_t unit) noexcept {
    return unit < 0x0300 || (unit >= 0x309B && unit <= 0xA66E) || (unit >= 0x3000 && unit <= 0x3029) ||
           (unit >= 0x3030 && unit <= 0x3098) || (unit >= 0x2002 && unit <= 0x20CF) ||
           (unit >= 0x2190 && unit <= 0x2328) || (unit >= 0x232B && unit <= 0x2ADB) ||
           (unit >= 0xAC00 && unit <= 0xD7A3) || (unit >= 0xE000 && unit <= 0xF8FF) ||
           (unit >= 0xFF00 && unit <= 0xFFFD);
}

/// True for a plain unit that is its own decomposition: anything below U+00C0, and the unified ideographs.
[[nodiscard]] constexpr bool isInertUnit(char16_t unit) noexcept {
    return unit < 0x00C0 || (unit >= 0x3400 && unit <= 0x9FFF);
}

/// Reads a text as a stream of canonically decomposed, optionally case-, mark- and width-folded code points.
///
/// A combining sequence is a code point with the marks (and medial or final Hangul letters) that follow it. With the
/// literal option there is no decomposition, and every code point is a sequence of its own.
/// Keeps a view of the source only; use from one thread.
class FoldedReader {
  public:
    /// `options` is a sum of `CompareOption` values; those that do not fold are ignored.
    FoldedReader(std::u16string_view text, unsigned options);

    [[nodiscard]] bool atEnd() { return m_next == m_cluster.size() && !fill(); }

    /// The next code point; must not be called at the end.
    [[nodiscard]] const FoldedUnit& peek() const noexcept { return m_cluster[m_next]; }

    void advance() noexcept { ++m_next; }

  private:
    struct Decomposed {
        char32_t value;
        unsigned char combiningClass;
    };

    bool fill();
    void readCluster();
    void decompose(char32_t c);
    void appendFolded(Decomposed c);

    std::u16string_view m_text;
    std::size_t m_position = 0;
    std::size_t m_next = 0;
    std::vector<FoldedUnit> m_cluster;
    std::vector<Decomposed> m_decomposed;
    bool m_literal;
    bool m_foldsCase;
    bool m_foldsMarks;
    bool m_foldsWidth;
};

} // namespace zr::detail
