#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

// What the scripts beside this file wrote: what independent implementations make of the same questions.

namespace zr::test {

/// One line of such a file, for messages, and its fields.
struct VectorRow {
    std::string line;
    std::vector<std::string> fields;
};

/// All rows of `NAME_vectors.txt`. The test fails when there are none.
inline std::vector<VectorRow> vectorRows(const std::string& name, char separator = '|') {
    std::ifstream file(ZR_TEST_VECTORS_DIR "/" + name + "_vectors.txt");
    std::vector<VectorRow> rows;
    for (std::string line; std::getline(file, line);) {
        VectorRow row{line, {}};
        for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
            end = line.find(separator, start);
            row.fields.push_back(line.substr(start, end - start));
        }
        rows.push_back(std::move(row));
    }
    EXPECT_FALSE(rows.empty()) << "there are no " << name << " vectors";
    return rows;
}

/// The bytes that a field holds as hexadecimal digits.
inline std::string bytesOfHex(std::string_view digits) {
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16));
    return bytes;
}

} // namespace zr::test
