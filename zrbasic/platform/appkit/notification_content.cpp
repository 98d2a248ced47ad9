#include <zrbasic/platform/appkit/notification_content.h>

#include <zrbasic/platform/foundation/array.h>

#include <string>
#include <string_view>
#include <utility>

namespace zr {

ZR_DEFINE_CLASS(UNNotificationSound) {
    is.classMethod<&UNNotificationSound::defaultSound>("defaultSound");
}

UNNotificationSound::~UNNotificationSound() = default;

Ref<UNNotificationSound> UNNotificationSound::defaultSound() {
    static UNNotificationSound* const shared = make<UNNotificationSound>().leak();
    return shared;
}

id UNNotificationSound::copy() const {
    return id(const_cast<UNNotificationSound*>(this));
}

UNNotificationContent::~UNNotificationContent() = default;

id UNNotificationContent::init() {
    m_categoryIdentifier = ""_ns;
    m_userInfo = NSDictionary::dictionary();
    return id(this);
}

id UNNotificationContent::copy() const {
    return id(const_cast<UNNotificationContent*>(this));
}

id UNNotificationContent::mutableCopy() const {
    const Ref<UNMutableNotificationContent> made = alloc<UNMutableNotificationContent>();
    made->setValuesFrom(*this);
    return made;
}

void UNNotificationContent::setValuesFrom(const UNNotificationContent& other) {
    m_title.set(other.m_title.getObject());
    m_subtitle.set(other.m_subtitle.getObject());
    m_body.set(other.m_body.getObject());
    m_sound.set(other.m_sound.getObject());
    m_categoryIdentifier.set(other.m_categoryIdentifier.getObject());
    m_userInfo.set(other.m_userInfo.getObject());
}

UNMutableNotificationContent::~UNMutableNotificationContent() = default;

id UNMutableNotificationContent::copy() const {
    const Ref<UNNotificationContent> made = alloc<UNNotificationContent>();
    made->setValuesFrom(*this);
    return made;
}

Ref<NSString> localizedUserNotificationStringForKey_arguments(NSString* key, NSArray* arguments) {
    if (!key || !arguments || arguments->count() == 0) {
        return key;
    }
    constexpr std::u16string_view placeholder = u"%@";
    const std::u16string_view text = key->view();
    std::u16string made;
    std::size_t start = 0;
    for (const id& argument : *arguments) {
        const std::size_t place = text.find(placeholder, start);
        if (place == std::u16string_view::npos) {
            break;
        }
        made.append(text.substr(start, place - start)).append(argument->description()->view());
        start = place + placeholder.size();
    }
    made.append(text.substr(start));
    return NSString::fromUtf16(std::move(made));
}

ZR_GROUP(NSString, UNUserNotificationCenterSupport) {
    is.classMethod<&localizedUserNotificationStringForKey_arguments>(
        "localizedUserNotificationStringForKey:arguments:");
}

} // namespace zr
