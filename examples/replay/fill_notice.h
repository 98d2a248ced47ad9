#pragma once

#include "price_entry.h"

#include <zrbasic/model/user_notification_info.h>

#include <string>

namespace replay {

/// A notification that an order was filled, as the desktop showed it, and what became of it.
struct FillNotice {
    std::string title;
    std::string text;
    std::string button;
    /// What the user's click on the button came back as.
    zr::Ref<zr::ZRUserNotificationInfo> response;
};

/// Posts the notification to a desktop on which somebody clicks its button at once.
[[nodiscard]] FillNotice notifyOfFill(const PriceEntry& entry);

} // namespace replay
