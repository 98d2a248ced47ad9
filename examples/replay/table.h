#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace replay {

/// Rows of text in aligned columns, as wide as the widest cell on a terminal.
class Table {
  public:
    enum class Side { Left, Right };

    explicit Table(std::vector<Side> columns) : m_columns(std::move(columns)) {}

    /// One cell a column.
    void add(std::vector<std::string> row) { m_rows.push_back(std::move(row)); }
    /// All rows, each a line that begins with `indent` blanks.
    [[nodiscard]] std::string text(std::size_t indent = 0) const;

  private:
    std::vector<Side> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

} // namespace replay
