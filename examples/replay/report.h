#pragma once

#include "desk.h"
#include "price_entry.h"
#include "session.h"

#include <optional>
#include <string>

namespace replay {

/// The report for people; in colour when the terminal wants it.
[[nodiscard]] std::string textReport(const Session& session, const Problems& problems,
                                     const std::optional<PriceEntry>& entry, const Desk& desk, bool isColoured);

/// The same as one JSON text.
[[nodiscard]] std::string jsonReport(const Session& session, const Problems& problems,
                                     const std::optional<PriceEntry>& entry, const Desk& desk);

/// Quotes handled in a second; 0 when there were none.
[[nodiscard]] double quotesPerSecond(const Session& session);

/// "2021-07-27 17:52:39" for milliseconds since 1970, UTC; empty for null.
[[nodiscard]] std::string timeText(zr::NSNumber* milliseconds);

} // namespace replay
