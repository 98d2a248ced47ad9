#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

class NSDictionary;
class NSString;

/// What a notification centre hands around: that something happened, and to which object. Never changes.
///
/// For notices on the user's desktop see appkit/user_notification.h.
class ZR_EXPORT NSNotification : public NSObject {
    ZR_DECLARE_CLASS(NSNotification, NSObject)
  public:
    ~NSNotification() override;

    /// A new notification. All three may be null; one without a name reaches those that listen to every name.
    [[nodiscard]] static Ref<NSNotification> notificationWithName_object(NSString* name, NSObject* object);
    [[nodiscard]] static Ref<NSNotification> notificationWithName_object_userInfo(NSString* name, NSObject* object,
                                                                                  NSDictionary* userInfo);

    id initWithName_object_userInfo(NSString* name, NSObject* object, NSDictionary* userInfo);

    /// What happened; copied.
    [[nodiscard]] Ref<NSString> name() const;
    /// To whom; kept for as long as the notification lives.
    [[nodiscard]] id object() const { return m_object; }
    /// What else there is to know; kept.
    [[nodiscard]] Ref<NSDictionary> userInfo() const;

    /// The notification itself.
    [[nodiscard]] id copy() const override;

  private:
    Ref<NSString> m_name;
    id m_object;
    Ref<NSDictionary> m_userInfo;
};

} // namespace zr
