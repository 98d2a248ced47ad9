#pragma once

#include "tracker.h"

#include <string>
#include <string_view>

namespace replay {

/// One thing that a table can say of an instrument.
struct Field {
    const char* identifier;
    const char* title;
    /// Counts are grouped, prices have as many decimals as the instrument's others; "-" for a price that is not known.
    std::string (*text)(const Tracker& tracker);
};

/// By its identifier, "instrument", "tick", "quotes", "changes", "offTick", "low", "high", "last", "change" or "volume".
/// Aborts for another one.
[[nodiscard]] const Field& fieldNamed(std::string_view identifier);

/// From the opening price to the present one, in percent; 0 when one of the two is not known.
[[nodiscard]] double changeOf(const Tracker& tracker);

} // namespace replay
