#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace replay {

/// In `json`, which must be a valid text: the line, counted from 1, on which each element of the array under `key` of
/// the outermost object begins. Objects know nothing of the text that they came from, but messages should.
///
/// Fewer than there are elements, or none, when the key is spelled with escapes.
[[nodiscard]] std::vector<std::size_t> linesOfEntries(std::string_view json, std::string_view key);

} // namespace replay
