#pragma once

#include "console.h"

#include <array>
#include <cstddef>
#include <string>

namespace replay {

/// Why a line of quotes, or an entry of the instrument list, was skipped.
enum class Problem {
    DamagedLine,       ///< not JSON, or JSON but no object
    UnknownInstrument, ///< names no instrument of the list
    AbsentPrice,       ///< has no price, or null for one
    WrongField,        ///< a field holds something of the wrong kind
    BadInstrument,     ///< an entry of the instrument list that cannot be used
};

/// Something that cannot be used, and why.
struct Fault {
    Problem kind;
    std::string what;
};

/// Counts what was skipped and names it, with file and line, on the console.
class Problems {
  public:
    explicit Problems(Console& console) : m_console(console) {}

    /// `line` counts from 1; 0 when it is not known.
    void add(const Fault& fault, const std::string& file, std::size_t line);

    [[nodiscard]] std::size_t count(Problem kind) const { return m_counts[static_cast<std::size_t>(kind)]; }
    /// Lines of quotes, whatever was wrong with them.
    [[nodiscard]] std::size_t skippedLines() const;

  private:
    Console& m_console;
    std::array<std::size_t, 5> m_counts{};
};

} // namespace replay
