#include <zrbasic/platform/foundation/notification.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_DEFINE_CLASS(NSNotification) {
    is.classMethod<&NSNotification::notificationWithName_object>("notificationWithName:object:");
    is.classMethod<&NSNotification::notificationWithName_object_userInfo>("notificationWithName:object:userInfo:");
    is.method<&NSNotification::initWithName_object_userInfo>("initWithName:object:userInfo:");
    is.method<&NSNotification::name>("name");
    is.method<&NSNotification::object>("object");
    is.method<&NSNotification::userInfo>("userInfo");
}

NSNotification::~NSNotification() = default;

Ref<NSNotification> NSNotification::notificationWithName_object(NSString* name, NSObject* object) {
    return notificationWithName_object_userInfo(name, object, nullptr);
}

Ref<NSNotification> NSNotification::notificationWithName_object_userInfo(NSString* name, NSObject* object,
                                                                         NSDictionary* userInfo) {
    return make<NSNotification>(&NSNotification::initWithName_object_userInfo, name, object, userInfo);
}

id NSNotification::initWithName_object_userInfo(NSString* name, NSObject* object, NSDictionary* userInfo) {
    m_name = name ? cast<NSString>(name->copy()) : nullptr;
    m_object = object;
    m_userInfo = userInfo;
    return id(this);
}

Ref<NSString> NSNotification::name() const {
    return m_name;
}

Ref<NSDictionary> NSNotification::userInfo() const {
    return m_userInfo;
}

id NSNotification::copy() const {
    return id(const_cast<NSNotification*>(this));
}

} // namespace zr
