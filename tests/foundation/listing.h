#pragma once

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>

#include <string>

namespace zr::test {

/// "key=value" for every entry, in order, one blank between them.
inline std::string listing(const Ref<NSDictionary>& entries) {
    std::string text;
    for (const id& key : entries) {
        text += (text.empty() ? "" : " ") + key->description()->utf8() + '=' +
                entries->objectForKey(key)->description()->utf8();
    }
    return text;
}

} // namespace zr::test
