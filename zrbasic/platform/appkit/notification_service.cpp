#include <zrbasic/platform/appkit/notification_service.h>

#include <zrbasic/platform/foundation/string.h>

namespace zr {

NotificationReceiver::~NotificationReceiver() = default;

NotificationService::~NotificationService() = default;

} // namespace zr
