#pragma once

#include <zrbasic/platform/runtime/object.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace zr::detail {

/// What is wrong with a JSON text.
struct JsonFault {
    static constexpr std::size_t nowhere = std::string_view::npos;

    /// A clause for people, without a full stop; empty while nothing is wrong.
    std::string reason;
    /// The byte where reading stopped, or `nowhere` when that cannot be told.
    std::size_t offset = nowhere;
};

/// Arrays and objects may lie this deep in each other, when read and when written.
inline constexpr unsigned jsonDepthLimit = 512;

/// Reads one JSON text in UTF-8; a byte order mark is skipped.
///
/// `readable` says how many bytes from the start of `text` on may be looked at; with 64 or more behind the text it is
/// read where it is, otherwise from a copy. Null, and `fault` filled in, when the text is not JSON.
[[nodiscard]] id readJson(std::string_view text, std::size_t readable, NSUInteger options, JsonFault& fault);

} // namespace zr::detail
