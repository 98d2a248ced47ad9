#pragma once

#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/string.h>

#include <algorithm>
#include <string>
#include <vector>

namespace zr::test {

/// Each run's text with its attributes behind it in the order of their names: "ab{A=1 B=2}c{}". Checks on the way that
/// the runs cover the text.
inline std::string runListing(NSAttributedString* text) {
    std::string result;
    NSRange run;
    for (NSUInteger place = 0; place < text->length(); place = NSMaxRange(run)) {
        const Ref<NSDictionary> attributes = text->attributesAtIndex_effectiveRange(place, &run);
        if (run.location != place || run.length == 0) {
            return result + " broken run";
        }
        std::vector<std::string> entries;
        for (const id& key : attributes) {
            entries.push_back(key->description()->utf8() + '=' + attributes->objectForKey(key)->description()->utf8());
        }
        std::sort(entries.begin(), entries.end());
        result += text->string()->substringWithRange(run)->utf8() + '{';
        for (const std::string& entry : entries) {
            result += (entry == entries.front() ? "" : " ") + entry;
        }
        result += '}';
    }
    return result;
}

} // namespace zr::test
