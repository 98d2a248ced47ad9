#include <zrbasic/collections/html_anchors_p.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace zr::detail {

namespace {

constexpr std::u16string_view closingTag = u"</a>";
constexpr std::size_t nowhere = std::u16string_view::npos;

// No letter of the pattern has a partner in another case beyond ASCII, unlike k and s.
constexpr char16_t lowered(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

/// What `\s` matches.
constexpr bool isBlank(char16_t unit) {
    return (unit >= 0x09 && unit <= 0x0D) || unit == 0x20 || unit == 0x85 || unit == 0xA0 || unit == 0x1680 ||
           (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F || unit == 0x205F ||
           unit == 0x3000;
}

/// What `.` does not match.
constexpr bool isLineEnd(char16_t unit) {
    return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

constexpr bool isQuote(char16_t unit) {
    return unit == u'"' || unit == u'\'';
}

bool standsAt(std::u16string_view text, std::size_t place, std::u16string_view small) {
    return text.size() - place >= small.size() &&
           std::equal(small.begin(), small.end(), text.begin() + static_cast<std::ptrdiff_t>(place),
                      [](char16_t wanted, char16_t unit) { return lowered(unit) == wanted; });
}

/// The next place at which something stands, asked for from left to right.
///
/// Remembers its last answer, which holds for all places up to it, so that a whole walk reads the text once however
/// often it asks.
template <class StandsAt>
class Lookout {
  public:
    Lookout(std::u16string_view text, StandsAt standsAt) : m_text(text), m_standsAt(standsAt) {}

    /// The first place at or behind `from`, the end of the text when there is none.
    std::size_t from(std::size_t from) {
        for (m_place = std::max(m_place, from); m_place < m_text.size() && !m_standsAt(m_place);) {
            ++m_place;
        }
        return m_place;
    }

  private:
    std::u16string_view m_text;
    StandsAt m_standsAt;
    std::size_t m_place = 0;
};

/// Where the target begins when the head of an anchor, up to the opening quote, begins at `start`.
std::size_t targetBehindHead(std::u16string_view text, std::size_t start) {
    constexpr std::u16string_view tag = u"<a";
    constexpr std::u16string_view attribute = u"href=";
    if (!standsAt(text, start, tag)) {
        return nowhere;
    }
    const std::size_t blanks = start + tag.size();
    std::size_t place = blanks;
    while (place < text.size() && isBlank(text[place])) {
        ++place;
    }
    if (place == blanks || !standsAt(text, place, attribute)) {
        return nowhere;
    }
    place += attribute.size();
    return place < text.size() && isQuote(text[place]) ? place + 1 : nowhere;
}

} // namespace

std::vector<HtmlAnchor> htmlAnchors(std::u16string_view text) {
    Lookout lineEnd(text, [text](std::size_t place) { return isLineEnd(text[place]); });
    Lookout headEnd(text, [text](std::size_t place) {
        return isQuote(text[place]) && place + 1 < text.size() && text[place + 1] == u'>';
    });
    Lookout close(text, [text](std::size_t place) { return text[place] == u'<' && standsAt(text, place, closingTag); });

    std::vector<HtmlAnchor> anchors;
    for (std::size_t start = text.find(u'<'); start != nowhere; start = text.find(u'<', start)) {
        const std::size_t href = targetBehindHead(text, start);
        ++start;
        if (href == nowhere) {
            continue;
        }
        // Both groups end as early as they can, and neither reaches beyond the line. Ending the first one later would
        // not help the second, which only gets less of the line to find its end in.
        const std::size_t hrefEnd = headEnd.from(href);
        const std::size_t linkText = hrefEnd + 2;
        const std::size_t linkTextEnd = close.from(linkText);
        if (linkTextEnd >= lineEnd.from(href)) {
            continue;
        }
        const std::size_t whole = start - 1;
        start = linkTextEnd + closingTag.size();
        anchors.push_back({{whole, start - whole}, {href, hrefEnd - href}, {linkText, linkTextEnd - linkText}});
    }
    return anchors;
}

} // namespace zr::detail
