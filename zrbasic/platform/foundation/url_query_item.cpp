#include <zrbasic/platform/foundation/url_query_item.h>

#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_DEFINE_CLASS(NSURLQueryItem) {
    is.classMethod<&NSURLQueryItem::queryItemWithName_value>("queryItemWithName:value:");
    is.method<&NSURLQueryItem::initWithName_value>("initWithName:value:");
    is.method<&NSURLQueryItem::name>("name");
    is.method<&NSURLQueryItem::value>("value");
}

NSURLQueryItem::NSURLQueryItem() : m_name(NSString::string()) {}
NSURLQueryItem::~NSURLQueryItem() = default;

Ref<NSURLQueryItem> NSURLQueryItem::queryItemWithName_value(NSString* name, NSString* value) {
    return make<NSURLQueryItem>(&NSURLQueryItem::initWithName_value, name, value);
}

id NSURLQueryItem::initWithName_value(NSString* name, NSString* value) {
    if (name != nullptr) {
        m_name = Ref<NSString>(cast<NSString>(name->copy()));
    }
    m_value = value != nullptr ? Ref<NSString>(cast<NSString>(value->copy())) : nullptr;
    return id(this);
}

bool NSURLQueryItem::isEqual(NSObject* other) const {
    const auto* const item = cast<NSURLQueryItem>(other);
    return item != nullptr && m_name->isEqual(item->m_name) &&
           (m_value == item->m_value || (m_value && m_value->isEqual(item->m_value)));
}

NSUInteger NSURLQueryItem::hash() const {
    return m_name->hash() ^ (m_value ? m_value->hash() * 31 : 0);
}

Ref<NSString> NSURLQueryItem::description() const {
    return NSString::stringWithFormat("%@ {name = %@, value = %@}"_ns, NSObject::description(), m_name, m_value);
}

id NSURLQueryItem::copy() const {
    return id(const_cast<NSURLQueryItem*>(this));
}

} // namespace zr
