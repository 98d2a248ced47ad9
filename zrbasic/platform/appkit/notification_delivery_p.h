#pragma once

#include <zrbasic/platform/appkit/notification_service.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/dispatch_time.h>

#include <utility>
#include <vector>

/// What both notification centres do alike.
namespace zr::detail {

/// Posts through the toolkit's service; false when there is none or it cannot.
bool post(const NotificationPosting& posting, NotificationReceiver& receiver);
void withdraw(NSString* key);

/// The moment as a deadline: now for null and for what is no moment, never for one beyond all deadlines.
[[nodiscard]] dispatch_time_t deadlineAt(NSDate* date);

/// Member `object` of every entry.
template <class Entry, class Object>
[[nodiscard]] Ref<NSArray> listOf(const std::vector<Entry>& entries, Object Entry::*object) {
    std::vector<id> objects;
    objects.reserve(entries.size());
    for (const Entry& entry : entries) {
        objects.push_back(entry.*object);
    }
    return NSArray::fromElements(std::move(objects));
}

} // namespace zr::detail
