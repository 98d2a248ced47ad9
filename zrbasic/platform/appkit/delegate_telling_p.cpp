#include <zrbasic/platform/appkit/delegate_telling_p.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/notification.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

void tellDelegateAndPost(NSObject* sender, const id& delegate, SEL operation, NSString* name, NSDictionary* userInfo) {
    const id keptSender(sender);
    const id told(delegate);
    const Ref<NSNotification> notification =
        NSNotification::notificationWithName_object_userInfo(name, sender, userInfo);
    if (told && told->respondsToSelector(operation)) {
        send<void>(told, operation, notification);
    }
    NSNotificationCenter::defaultCenter()->postNotification(notification);
}

} // namespace zr
