#include <zrbasic/model/user_notification_info.h>

#include <zrbasic/model/user_notification.h>
#include <zrbasic/platform/foundation/process_info.h>

namespace zr {

ZRUserNotificationInfo::~ZRUserNotificationInfo() = default;

void ZRUserNotificationInfo::decode(NSObject* data, NSString* actionIdentifier) {
    setData(data);
    // Asked every time; only what the running system delivers is looked at.
    if (isMacOSAtLeast(10, 15)) {
        if (const auto* const content = cast<UNNotificationContent>(data)) {
            const bool isButton = ZRCustomUserNotificationReplayButtonID()->isEqual(actionIdentifier);
            setUserInfo(content->userInfo());
            setActivationType(isButton ? NSUserNotificationActivationTypeActionButtonClicked
                                       : NSUserNotificationActivationTypeContentsClicked);
        }
    } else if (const auto* const notification = cast<NSUserNotification>(data)) {
        setUserInfo(notification->userInfo());
        setActivationType(notification->activationType());
    }
}

Ref<ZRUserNotificationInfo> infoOfClass(Class* infoClass, NSObject* data, NSString* actionIdentifier) {
    const id fresh = send<id>(class_createInstance(infoClass), "init"_sel);
    Ref<ZRUserNotificationInfo> info(cast<ZRUserNotificationInfo>(fresh));
    if (info) {
        info->decode(data, actionIdentifier);
    }
    return info;
}

ZR_GROUP(ZRUserNotificationInfo, Creation) {
    is.receivingClassMethod<&infoOfClass>("infoWithData:withActionIdentifier:");
}

} // namespace zr
