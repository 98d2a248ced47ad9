#pragma once

#include "account.h"
#include "fill_notice.h"
#include "order_link.h"
#include "price_entry.h"

#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/foundation/attributed_string.h>

#include <optional>
#include <string>

namespace replay {

/// What a desk does beside following quotes.
struct Desk {
    /// The server's message, and the instrument table as the user left it; null when the server did not say.
    zr::Ref<zr::NSAttributedString> message;
    zr::Ref<zr::NSTableView> table;
    /// Nothing when no price was typed.
    std::optional<OrderLink> order;
    std::optional<FillNotice> fill;
};

/// Shows the account's message and layout, and orders at the price that was typed. `account` may be null.
[[nodiscard]] Desk openDesk(Account* account, const std::optional<PriceEntry>& entry);

/// For people; in colour when the terminal wants it.
[[nodiscard]] std::string deskText(const Desk& desk, bool isColoured);

/// For the report as JSON; what there is nothing of is the null object.
[[nodiscard]] zr::Ref<zr::NSDictionary> deskObject(const Desk& desk);

} // namespace replay
