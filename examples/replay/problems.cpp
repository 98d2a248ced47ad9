#include "problems.h"

namespace replay {

void Problems::add(const Fault& fault, const std::string& file, std::size_t line) {
    ++m_counts[static_cast<std::size_t>(fault.kind)];
    std::string place = file + ':';
    if (line != 0) {
        place += std::to_string(line) + ':';
    }
    m_console.complain(place + " skipped: " + printable(fault.what));
}

std::size_t Problems::skippedLines() const {
    return count(Problem::DamagedLine) + count(Problem::UnknownInstrument) + count(Problem::AbsentPrice) +
           count(Problem::WrongField);
}

} // namespace replay
