#pragma once

#include "console.h"

#include <zrbasic/platform/foundation/dictionary.h>

#include <optional>
#include <string>

namespace replay {

/// All bytes of a file. Nothing, after a message, when it cannot be read.
[[nodiscard]] std::optional<std::string> contentOf(const std::string& file, Console& console);

/// The object that `content`, the text of `file`, describes. Null, after a message that names the line, when it is not
/// JSON or no object.
[[nodiscard]] zr::Ref<zr::NSDictionary> objectIn(const std::string& content, const std::string& file, Console& console);

} // namespace replay
