#include <zrbasic/platform/appkit/notification_delivery_p.h>

#include <zrbasic/platform/appkit/toolkit.h>

#include <cmath>

namespace zr::detail {

bool post(const NotificationPosting& posting, NotificationReceiver& receiver) {
    NotificationService* const service = currentToolkit().notificationService();
    return service != nullptr && service->post(posting, receiver);
}

void withdraw(NSString* key) {
    if (NotificationService* const service = currentToolkit().notificationService()) {
        service->withdraw(key);
    }
}

dispatch_time_t deadlineAt(NSDate* date) {
    const double seconds = date != nullptr ? date->timeIntervalSince1970() : 0;
    // The last second that nanoseconds since 1970 can count in 63 bits.
    constexpr double lastSecond = 9223372036.0;
    if (std::isnan(seconds) || seconds <= 0) {
        return DISPATCH_TIME_NOW;
    }
    if (seconds > lastSecond) {
        return DISPATCH_TIME_FOREVER;
    }
    const double whole = std::floor(seconds);
    const std::timespec moment{static_cast<std::time_t>(whole), static_cast<long>((seconds - whole) * 1e9)};
    return dispatch_walltime(&moment, 0);
}

} // namespace zr::detail
