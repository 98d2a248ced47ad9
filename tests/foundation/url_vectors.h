#pragma once

#include <zrbasic/platform/foundation/string.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zr::test {

/// The rows of url_vectors.txt that begin with `kind`, split into their other fields.
inline std::vector<std::vector<std::string>> urlVectors(std::string_view kind) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream file(ZR_TEST_VECTORS_DIR "/url_vectors.txt");
    for (std::string line; std::getline(file, line);) {
        std::vector<std::string> fields;
        std::size_t start = 0;
        for (std::size_t end = 0; end != std::string::npos; start = end + 1) {
            end = line.find('|', start);
            fields.push_back(line.substr(start, end - start));
        }
        if (fields.front() == kind) {
            rows.emplace_back(fields.begin() + 1, fields.end());
        }
    }
    return rows;
}

/// The text that is written in hexadecimal UTF-8.
inline Ref<NSString> fromHex(std::string_view hex) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes.push_back(static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
    }
    return NSString::fromUtf8(bytes);
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
