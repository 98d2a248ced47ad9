#pragma once

#include <zrbasic/platform/runtime/types.h>

#include <string_view>
#include <vector>

namespace zr::detail {

/// What an anchor looks like, letter case aside: the pattern that defines `htmlAnchors`.
inline constexpr std::u16string_view htmlAnchorPattern = uR"(<a\s+href=["'](.*?)["']>(.*?)</a>)";

/// One anchor: where it lies in the text, and where its two groups do.
struct HtmlAnchor {
    NSRange whole;
    NSRange href;
    NSRange text;

    friend bool operator==(const HtmlAnchor&, const HtmlAnchor&) = default;
};

/// All matches of the pattern in order, none overlapping, as the pattern engine would give them had it all the time in
/// the world: this takes time proportional to the text, whatever stands in it.
[[nodiscard]] std::vector<HtmlAnchor> htmlAnchors(std::u16string_view text);

} // namespace zr::detail
