#pragma once

#include <zrbasic/platform/foundation/attributed_string.h>

#include <cstddef>
#include <string>
#include <vector>

namespace replay {

/// A piece of a message that leads somewhere.
struct MessageLink {
    std::string text;
    std::string target;
};

/// The server's message as styled text: grey, with blue links. Null for null.
[[nodiscard]] zr::Ref<zr::NSAttributedString> styledMessage(zr::NSString* message);

/// The text as lines that begin with `indent` blanks; in colour, with links underlined, when the terminal wants it.
[[nodiscard]] std::string messageText(zr::NSAttributedString* message, std::size_t indent, bool isColoured);

/// The links in the order of the text.
[[nodiscard]] std::vector<MessageLink> linksOf(zr::NSAttributedString* message);

} // namespace replay
