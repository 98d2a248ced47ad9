#include <zrbasic/model/user_notification_actions.h>

#include <zrbasic/core/tools.h>

namespace zr {

_ZRPrivateUserNotificationActions::~_ZRPrivateUserNotificationActions() = default;

Ref<_ZRPrivateUserNotificationActions> _ZRPrivateUserNotificationActions::notification() {
    return make<_ZRPrivateUserNotificationActions>();
}

Ref<NSString> _ZRPrivateUserNotificationActions::notificationID() {
    if (!m_notificationID) {
        m_notificationID = ZRXTools::genUUID();
    }
    return m_notificationID;
}

void _ZRPrivateUserNotificationActions::setNotificationID(NSString* notificationID) {
    m_notificationID = notificationID ? Ref<NSString>(cast<NSString>(notificationID->copy())) : nullptr;
}

} // namespace zr
