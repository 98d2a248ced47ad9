#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace replay {

/// One line of a file, borrowed until the next one is read.
struct Line {
    std::string_view text;
    /// How many bytes from the start of `text` on may be looked at.
    std::size_t readable = 0;
    /// From 1 on.
    std::size_t number = 0;
    /// Longer than any sensible line; `text` holds its beginning.
    bool isTooLong = false;
};

/// Reads a file of any length line by line, in a buffer of fixed size.
class LineReader {
  public:
    static constexpr std::size_t longestLine = std::size_t(1) << 18;

    explicit LineReader(const std::string& file);

    /// False at the end of the file, and when it cannot be read (further).
    [[nodiscard]] bool next(Line& line);
    /// What kept the file from being read to its end; empty for nothing.
    [[nodiscard]] const std::string& error() const { return m_error; }
    /// How much of the file was read, 0 to 1; below 0 when its length is not known.
    [[nodiscard]] double progress() const;

  private:
    [[nodiscard]] bool refill();
    void skipRestOfLine();

    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_file;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::size_t m_number = 0;
    double m_size = 0;
    double m_read = 0;
    bool m_isAtEnd = false;
    std::string m_error;
};

} // namespace replay
