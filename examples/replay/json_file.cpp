#include "json_file.h"

#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/number.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace replay {

using namespace zr;

std::optional<std::string> contentOf(const std::string& file, Console& console) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> input(std::fopen(file.c_str(), "rb"), &std::fclose);
    std::string content;
    if (input) {
        char block[65536];
        while (const std::size_t length = std::fread(block, 1, sizeof block, input.get())) {
            content.append(block, length);
        }
    }
    if (!input || std::ferror(input.get())) {
        console.say(file + ": cannot be read: " + std::strerror(errno));
        return std::nullopt;
    }
    return content;
}

Ref<NSDictionary> objectIn(const std::string& content, const std::string& file, Console& console) {
    Ref<NSError> error;
    const id root = NSJSONSerialization::objectWithText(content, 0, &error);
    if (!root) {
        auto* const place = cast<NSNumber>(error->userInfo()->peek(NSJSONSerializationErrorIndex()));
        const auto offset = place ? static_cast<std::ptrdiff_t>(place->longLongValue()) : 0;
        const auto line = 1 + std::count(content.begin(), content.begin() + offset, '\n');
        console.say(file + ':' + std::to_string(line) + ": " + error->localizedDescription()->utf8());
        return nullptr;
    }
    Ref<NSDictionary> object(cast<NSDictionary>(root));
    if (!object) {
        console.say(file + ": holds no object");
    }
    return object;
}

} // namespace replay
