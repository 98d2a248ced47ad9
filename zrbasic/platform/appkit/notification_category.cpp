#include <zrbasic/platform/appkit/notification_category.h>

namespace zr {

UNNotificationAction::~UNNotificationAction() = default;

Ref<UNNotificationAction> UNNotificationAction::actionWithIdentifier_title_options(
    NSString* identifier, NSString* title, UNNotificationActionOptions options) {
    Ref<UNNotificationAction> made = make<UNNotificationAction>();
    made->m_identifier = identifier;
    made->m_title = title;
    made->m_options = options;
    return made;
}

id UNNotificationAction::copy() const {
    return id(const_cast<UNNotificationAction*>(this));
}

UNNotificationCategory::~UNNotificationCategory() = default;

Ref<UNNotificationCategory> UNNotificationCategory::categoryWithIdentifier_actions_intentIdentifiers_options(
    NSString* identifier, NSArray* actions, NSArray* intentIdentifiers, UNNotificationCategoryOptions options) {
    Ref<UNNotificationCategory> made = make<UNNotificationCategory>();
    made->m_identifier = identifier;
    made->m_actions = actions ? actions : NSArray::array().get();
    made->m_intentIdentifiers = intentIdentifiers ? intentIdentifiers : NSArray::array().get();
    made->m_options = options;
    return made;
}

id UNNotificationCategory::copy() const {
    return id(const_cast<UNNotificationCategory*>(this));
}

} // namespace zr
