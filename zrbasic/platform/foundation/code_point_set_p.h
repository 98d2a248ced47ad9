#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace zr::detail {

/// A set of code points, kept as sorted stretches with a bitmap in front for ASCII.
///
/// Surrogates are code points like any other here. Values may be read from any thread.
class ZR_EXPORT CodePointSet {
  public:
    /// All code points from `first` to `last`, both included.
    struct Stretch {
        char32_t first;
        char32_t last;

        friend bool operator==(const Stretch&, const Stretch&) = default;
    };

    static constexpr char32_t lastCodePoint = 0x10FFFF;

    CodePointSet() = default;
    /// Stretches in any order; those that overlap or touch are joined, what lies past U+10FFFF is cut off.
    explicit CodePointSet(std::vector<Stretch> stretches);
    /// The code points of `text`; a lone surrogate counts as itself.
    explicit CodePointSet(std::u16string_view text);
    /// What the pattern means in ICU's notation for sets, such as "[:Nd:]"; empty when it is not a valid one.
    [[nodiscard]] static CodePointSet fromPattern(std::u16string_view pattern);

    [[nodiscard]] bool contains(char32_t c) const noexcept {
        return c < 0x80 ? ((m_ascii[c / 64] >> (c % 64)) & 1) != 0 : containsBeyondAscii(c);
    }

    [[nodiscard]] CodePointSet inverted() const;
    [[nodiscard]] CodePointSet united(const CodePointSet& other) const;
    [[nodiscard]] CodePointSet intersected(const CodePointSet& other) const;
    [[nodiscard]] CodePointSet without(const CodePointSet& other) const;

    [[nodiscard]] const std::vector<Stretch>& stretches() const noexcept { return m_stretches; }
    [[nodiscard]] bool isEmpty() const noexcept { return m_stretches.empty(); }
    [[nodiscard]] std::uint64_t hash() const noexcept;
    friend bool operator==(const CodePointSet& a, const CodePointSet& b) { return a.m_stretches == b.m_stretches; }

  private:
    [[nodiscard]] bool containsBeyondAscii(char32_t c) const noexcept;
    void join();

    std::vector<Stretch> m_stretches;
    std::array<std::uint64_t, 2> m_ascii{};
};

} // namespace zr::detail
