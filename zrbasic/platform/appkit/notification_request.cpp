#include <zrbasic/platform/appkit/notification_request.h>

namespace zr {

UNNotificationTrigger::~UNNotificationTrigger() = default;

UNTimeIntervalNotificationTrigger::~UNTimeIntervalNotificationTrigger() = default;

Ref<UNTimeIntervalNotificationTrigger> UNTimeIntervalNotificationTrigger::triggerWithTimeInterval_repeats(
    NSTimeInterval timeInterval, bool repeats) {
    // Written so that what is no number fails too.
    if (!(timeInterval > 0)) {
        NSException::raise(NSInternalInconsistencyException, "time interval must be greater than 0");
    }
    if (repeats && timeInterval < 60) {
        NSException::raise(NSInternalInconsistencyException, "time interval must be at least 60 if repeating");
    }
    Ref<UNTimeIntervalNotificationTrigger> made = make<UNTimeIntervalNotificationTrigger>();
    made->m_timeInterval = timeInterval;
    made->m_repeats = repeats;
    return made;
}

UNNotificationRequest::~UNNotificationRequest() = default;

Ref<UNNotificationRequest> UNNotificationRequest::requestWithIdentifier_content_trigger(
    NSString* identifier, UNNotificationContent* content, UNNotificationTrigger* trigger) {
    Ref<UNNotificationRequest> made = make<UNNotificationRequest>();
    made->m_identifier = identifier;
    made->m_content = content;
    made->m_trigger = trigger;
    return made;
}

UNNotification::~UNNotification() = default;

UNNotificationResponse::~UNNotificationResponse() = default;

Ref<NSString> UNNotificationDefaultActionIdentifier() {
    return "com.apple.UNNotificationDefaultActionIdentifier"_ns;
}

} // namespace zr
