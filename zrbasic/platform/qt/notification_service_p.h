#pragma once

#include <zrbasic/platform/appkit/notification_service.h>

#include <memory>

namespace zr::qt {

/// Delivers through the desktop's notification server on the session bus, whichever that is. Never null: without a bus
/// or a server, posting answers false.
[[nodiscard]] std::unique_ptr<NotificationService> makeNotificationService();

} // namespace zr::qt
