#pragma once

#include <tests/vectors/vectors.h>
#include <zrbasic/platform/foundation/string.h>

#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zr::test {

/// The rows of url_vectors.txt that begin with `kind`, split into their other fields.
inline std::vector<std::vector<std::string>> urlVectors(std::string_view kind) {
    std::vector<std::vector<std::string>> rows;
    for (const auto& [line, fields] : vectorRows("url")) {
        if (fields.front() == kind) {
            rows.emplace_back(fields.begin() + 1, fields.end());
        }
    }
    return rows;
}

/// The text that is written in hexadecimal UTF-8.
inline Ref<NSString> fromHex(std::string_view hex) {
    return NSString::fromUtf8(bytesOfHex(hex));
}

/// Names and values of a list "name=value name=value" in hexadecimal.
inline std::vector<std::pair<Ref<NSString>, Ref<NSString>>> pairsFromHex(const std::string& list) {
    std::vector<std::pair<Ref<NSString>, Ref<NSString>>> pairs;
    std::istringstream pieces(list);
    for (std::string piece; pieces >> piece;) {
        const std::size_t equals = piece.find('=');
        pairs.emplace_back(fromHex(std::string_view(piece).substr(0, equals)),
                           fromHex(std::string_view(piece).substr(equals + 1)));
    }
    return pairs;
}

} // namespace zr::test
