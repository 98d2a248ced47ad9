#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zr::detail {

// The first three want a string whose quotes are known to match and whose bytes are known to be UTF-8 without control
// characters, which the tokeniser has made sure of. `quote` points at the opening quote.

/// The text between the quotes when it is plain ASCII without escapes; a view of a null pointer otherwise.
[[nodiscard]] std::string_view plainJsonString(const char* quote);

/// Appends the string's text to `text`. False, and `fault` where it went wrong, for an unknown escape or half a
/// surrogate pair.
[[nodiscard]] bool decodeJsonString(const char* quote, std::u16string& text, const char*& fault);

/// How many bytes the string at the start of `text` takes, with its quotes.
[[nodiscard]] std::size_t lengthOfJsonString(std::string_view text);

/// Where the first byte lies that is not part of valid UTF-8; the length when there is none.
[[nodiscard]] std::size_t offsetOfInvalidUtf8(std::string_view text);

/// Where the first control character within a string lies, or else the opening quote of a string without an end; the
/// length when there is neither.
[[nodiscard]] std::size_t offsetOfBrokenString(std::string_view text);

/// Appends `text` as a JSON string, quotes included. False for half a surrogate pair, which UTF-8 cannot hold.
[[nodiscard]] bool appendJsonString(std::u16string_view text, std::string& json);

} // namespace zr::detail
