#pragma once

#include <zrbasic/platform/runtime/ref.h>

#include <filesystem>
#include <string_view>

namespace zr {

class NSString;

} // namespace zr

namespace zr::detail {

/// What this machine's system says; null when it says nothing.
[[nodiscard]] Ref<NSString> hardwareIdentifier();

/// The identifier that belongs to the system whose own is `text`: 32 hexadecimal digits, with or without a line feed.
/// Null for anything else, and for zeros alone.
[[nodiscard]] Ref<NSString> identifierFromMachineId(std::string_view text);
/// The same with the contents of a file; null when it cannot be read.
[[nodiscard]] Ref<NSString> identifierFromMachineIdFile(const std::filesystem::path& path);

} // namespace zr::detail
