#include <zrbasic/platform/foundation/code_point_set_p.h>

#include <zrbasic/platform/foundation/unicode_p.h>

#include <unicode/uset.h>

#include <algorithm>

namespace zr::detail {

CodePointSet::CodePointSet(std::vector<Stretch> stretches) : m_stretches(std::move(stretches)) {
    join();
}

CodePointSet::CodePointSet(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint c = codePointAt(text, i);
        m_stretches.push_back({c.value, c.value});
        i += c.length;
    }
    join();
}

CodePointSet CodePointSet::fromPattern(std::u16string_view pattern) {
    UErrorCode status = U_ZERO_ERROR;
    USet* const set = uset_openPattern(pattern.data(), static_cast<std::int32_t>(pattern.size()), &status);
    std::vector<Stretch> stretches;
    if (U_SUCCESS(status)) {
        const std::int32_t count = uset_getItemCount(set);
        for (std::int32_t i = 0; i < count; ++i) {
            UChar32 first = 0;
            UChar32 last = 0;
            UErrorCode itemStatus = U_ZERO_ERROR;
            // A positive length is a string that belongs to the set, which is no code point.
            if (uset_getItem(set, i, &first, &last, nullptr, 0, &itemStatus) == 0 && U_SUCCESS(itemStatus)) {
                stretches.push_back({static_cast<char32_t>(first), static_cast<char32_t>(last)});
            }
        }
    }
    uset_close(set);
    return CodePointSet(std::move(stretches));
}

CodePointSet CodePointSet::inverted() const {
    std::vector<Stretch> gaps;
    char32_t next = 0;
    for (const Stretch& stretch : m_stretches) {
        if (stretch.first > next) {
            gaps.push_back({next, stretch.first - 1});
        }
        next = stretch.last + 1;
    }
    if (next <= lastCodePoint) {
        gaps.push_back({next, lastCodePoint});
    }
    return CodePointSet(std::move(gaps));
}

CodePointSet CodePointSet::united(const CodePointSet& other) const {
    std::vector<Stretch> all = m_stretches;
    all.insert(all.end(), other.m_stretches.begin(), other.m_stretches.end());
    return CodePointSet(std::move(all));
}

CodePointSet CodePointSet::intersected(const CodePointSet& other) const {
    std::vector<Stretch> common;
    auto a = m_stretches.begin();
    auto b = other.m_stretches.begin();
    while (a != m_stretches.end() && b != other.m_stretches.end()) {
        const char32_t first = std::max(a->first, b->first);
        const char32_t last = std::min(a->last, b->last);
        if (first <= last) {
            common.push_back({first, last});
        }
        if (a->last < b->last) {
            ++a;
        } else {
            ++b;
        }
    }
    return CodePointSet(std::move(common));
}

CodePointSet CodePointSet::without(const CodePointSet& other) const {
    return intersected(other.inverted());
}

std::uint64_t CodePointSet::hash() const noexcept {
    std::uint64_t value = m_stretches.size();
    for (const Stretch& stretch : m_stretches) {
        value = (value ^ (std::uint64_t(stretch.first) << 32 | stretch.last)) * 0x9E3779B97F4A7C15U;
        value ^= value >> 29;
    }
    return value;
}

bool CodePointSet::containsBeyondAscii(char32_t c) const noexcept {
    const auto after = std::upper_bound(m_stretches.begin(), m_stretches.end(), c,
                                        [](char32_t value, const Stretch& stretch) { return value < stretch.first; });
    return after != m_stretches.begin() && c <= std::prev(after)->last;
}

void CodePointSet::join() {
    for (Stretch& stretch : m_stretches) {
        stretch.last = std::min(stretch.last, lastCodePoint);
    }
    std::erase_if(m_stretches, [](const Stretch& stretch) { return stretch.first > stretch.last; });
    std::sort(m_stretches.begin(), m_stretches.end(),
              [](const Stretch& a, const Stretch& b) { return a.first < b.first; });
    std::size_t kept = 0;
    for (std::size_t i = 1; i < m_stretches.size(); ++i) {
        if (m_stretches[i].first <= m_stretches[kept].last + 1) {
            m_stretches[kept].last = std::max(m_stretches[kept].last, m_stretches[i].last);
        } else {
            m_stretches[++kept] = m_stretches[i];
        }
    }
    if (!m_stretches.empty()) {
        m_stretches.resize(kept + 1);
    }
    m_ascii = {};
    for (const Stretch& stretch : m_stretches) {
        for (char32_t c = stretch.first; c < 0x80 && c <= stretch.last; ++c) {
            m_ascii[c / 64] |= std::uint64_t(1) << (c % 64);
        }
    }
}

} // namespace zr::detail
