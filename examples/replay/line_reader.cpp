#include "line_reader.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace replay {

namespace {

/// So that the last line can be read where it is, too.
constexpr std::size_t roomBehind = 64;

} // namespace

LineReader::LineReader(const std::string& file)
    : m_file(std::fopen(file.c_str(), "rb"), &std::fclose), m_buffer(longestLine + roomBehind) {
    if (!m_file) {
        m_error = std::strerror(errno);
        m_isAtEnd = true;
        return;
    }
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    m_size = error ? 0 : static_cast<double>(size);
}

bool LineReader::refill() {
    if (m_isAtEnd) {
        return false;
    }
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    const std::size_t length = std::fread(m_buffer.data() + m_end, 1, longestLine - m_end, m_file.get());
    m_end += length;
    m_read += static_cast<double>(length);
    if (length == 0) {
        m_isAtEnd = true;
        if (std::ferror(m_file.get())) {
            m_error = std::strerror(errno);
        }
    }
    return length > 0;
}

bool LineReader::next(Line& line) {
    const char* newline = nullptr;
    std::size_t searched = 0;
    while (true) {
        const char* const begin = m_buffer.data() + m_begin;
        newline = static_cast<const char*>(std::memchr(begin + searched, '\n', m_end - m_begin - searched));
        searched = m_end - m_begin;
        const bool isFull = searched == longestLine;
        if (newline || isFull || !refill()) {
            break;
        }
    }
    if (!newline && m_begin == m_end) {
        return false;
    }
    const char* const begin = m_buffer.data() + m_begin;
    const std::size_t length = newline ? static_cast<std::size_t>(newline - begin) : m_end - m_begin;
    line.text = std::string_view(begin, length);
    line.readable = m_buffer.size() - m_begin;
    line.number = ++m_number;
    line.isTooLong = !newline && length == longestLine;
    m_begin += length + (newline ? 1 : 0);
    if (line.isTooLong) {
        skipRestOfLine();
    }
    return true;
}

void LineReader::skipRestOfLine() {
    // The line's beginning stays where it is; what follows is looked at one byte after the other.
    for (int character = std::fgetc(m_file.get()); character != EOF; character = std::fgetc(m_file.get())) {
        m_read += 1;
        if (character == '\n') {
            return;
        }
    }
}

double LineReader::progress() const {
    return m_size > 0 ? m_read / m_size : -1;
}

} // namespace replay
