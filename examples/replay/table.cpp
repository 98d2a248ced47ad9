#include "table.h"

#include <zrbasic/core/text.h>

#include <algorithm>

namespace replay {

namespace {

constexpr std::size_t gap = 3;

/// Full-width characters take two places.
std::size_t widthOf(const std::string& text) {
    return zr::characterLength(zr::NSString::fromUtf8(text));
}

} // namespace

std::string Table::text(std::size_t indent) const {
    std::vector<std::size_t> widths(m_columns.size());
    for (const auto& row : m_rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], widthOf(row[column]));
        }
    }
    std::string text;
    for (const auto& row : m_rows) {
        std::string line(indent, ' ');
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string blanks(widths[column] - widthOf(row[column]), ' ');
            line.append(column == 0 ? 0 : gap, ' ');
            line += m_columns[column] == Side::Left ? row[column] + blanks : blanks + row[column];
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

} // namespace replay
