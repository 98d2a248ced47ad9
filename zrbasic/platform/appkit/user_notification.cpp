#include <zrbasic/platform/appkit/user_notification.h>

namespace zr {

NSUserNotification::~NSUserNotification() = default;

id NSUserNotification::init() {
    m_hasActionButton = true;
    return id(this);
}

id NSUserNotification::copy() const {
    const Ref<NSUserNotification> made = alloc<NSUserNotification>();
    made->m_title.set(m_title.getObject());
    made->m_subtitle.set(m_subtitle.getObject());
    made->m_informativeText.set(m_informativeText.getObject());
    made->m_identifier.set(m_identifier.getObject());
    made->m_soundName.set(m_soundName.getObject());
    made->m_hasActionButton = m_hasActionButton.get();
    made->m_actionButtonTitle.set(m_actionButtonTitle.getObject());
    made->m_deliveryDate.set(m_deliveryDate.getObject());
    made->m_userInfo.set(m_userInfo.getObject());
    made->m_activationType = m_activationType.get();
    made->m_actualDeliveryDate.set(m_actualDeliveryDate.getObject());
    made->m_isPresented = m_isPresented.get();
    return made;
}

Ref<NSString> NSUserNotificationDefaultSoundName() {
    return "DefaultSoundName"_ns;
}

} // namespace zr
