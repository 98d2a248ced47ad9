#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>

#include <vector>

namespace zr {

class NSString;

/// A button below a notification.
struct NotificationButton {
    /// Comes back when it is clicked; never null.
    Ref<NSString> identifier;
    /// What it says; never null or empty.
    Ref<NSString> title;
};

/// What a notification service shows the user.
struct NotificationPosting {
    /// Tells it from everything else that is shown; never null. Posting with a key that is shown already replaces that.
    Ref<NSString> key;
    /// Plain text; each may be null or empty.
    Ref<NSString> title;
    Ref<NSString> subtitle;
    Ref<NSString> body;
    std::vector<NotificationButton> buttons;
    /// Whether it is announced by the desktop's sound.
    bool hasSound = false;
};

/// Hears what became of a posted notification: a notification centre. Lives as long as the process.
///
/// May be called at any time on the main thread, from within `post` too. Keys that it does not know do nothing.
class ZR_EXPORT NotificationReceiver {
  public:
    NotificationReceiver() = default;
    NotificationReceiver(const NotificationReceiver&) = delete;
    NotificationReceiver& operator=(const NotificationReceiver&) = delete;
    virtual ~NotificationReceiver();

    /// The user clicked the notification itself.
    virtual void notificationWasClicked(NSString* key) = 0;
    virtual void notificationButtonWasClicked(NSString* key, NSString* buttonIdentifier) = 0;
    /// It is not shown any more, whoever closed it; after a click it comes behind that.
    virtual void notificationWasClosed(NSString* key) = 0;
};

/// Delivers notifications over the desktop; a toolkit has one (see toolkit.h). Used on the main thread.
class ZR_EXPORT NotificationService {
  public:
    NotificationService() = default;
    NotificationService(const NotificationService&) = delete;
    NotificationService& operator=(const NotificationService&) = delete;
    virtual ~NotificationService();

    /// Shows a notification and says whether it could. What becomes of it is told to `receiver`.
    virtual bool post(const NotificationPosting& posting, NotificationReceiver& receiver) = 0;
    /// Takes it away again; a key that is not shown does nothing.
    virtual void withdraw(NSString* key) = 0;
};

} // namespace zr
