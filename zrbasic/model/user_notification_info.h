#pragma once

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>

#include <concepts>

namespace zr {

/// What a user's response to a notification amounts to, whichever of the two interfaces it came by. Used on the main
/// thread.
class ZR_EXPORT ZRUserNotificationInfo : public NSObject {
    ZR_OBJECT(ZRUserNotificationInfo, NSObject)

  public:
    ~ZRUserNotificationInfo() override;

    /// Reads a response. On macOS 10.15 and later, and on every other system, `data` counts when it is a
    /// `UNNotificationContent`: the button was clicked when `actionIdentifier` is
    /// `ZRCustomUserNotificationReplayButtonID`, else the notification itself. On an earlier macOS it counts when it is
    /// an `NSUserNotification`, which knows itself what was clicked.
    ///
    /// What does not count, null included, gives a record of an unknown response that holds nothing but `data`. Never
    /// null; the record is new, of the class `T`.
    template <std::derived_from<ZRUserNotificationInfo> T = ZRUserNotificationInfo>
    [[nodiscard]] static Ref<T> infoWithData_withActionIdentifier(NSObject* data, NSString* actionIdentifier) {
        Ref<T> info = make<T>();
        if (info) {
            info->decode(data, actionIdentifier);
        }
        return info;
    }

    /// The notification or content that was handed in.
    ZR_PROPERTY(Ref<NSObject>, data, setData)
    /// One of `NSUserNotificationActivationType`: 1 for a click on the notification itself, 2 for one on its button, 0
    /// when it is not known.
    ZR_PROPERTY(NSInteger, activationType, setActivationType)
    /// What the application gave the notification; null when it is not known.
    ZR_PROPERTY(Ref<NSDictionary>, userInfo, setUserInfo)

  private:
    friend Ref<ZRUserNotificationInfo> infoOfClass(Class* infoClass, NSObject* data, NSString* actionIdentifier);
    void decode(NSObject* data, NSString* actionIdentifier);
};

} // namespace zr
