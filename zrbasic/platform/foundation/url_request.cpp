#include <zrbasic/platform/foundation/url_request.h>

#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <algorithm>

namespace zr {

namespace {

char16_t smallLetter(char16_t c) {
    return static_cast<char16_t>(c >= u'A' && c <= u'Z' ? c + 0x20 : c);
}

bool isSameName(std::u16string_view a, std::u16string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char16_t left, char16_t right) { return smallLetter(left) == smallLetter(right); });
}

// The spelling under which the table holds a field; null when it does not.
Ref<NSString> spellingOf(const NSString* name, const NSDictionary* fields) {
    for (const id& key : fields) {
        auto* const spelling = static_cast<NSString*>(key.get());
        if (isSameName(spelling->view(), name->view())) {
            return Ref<NSString>(spelling);
        }
    }
    return nullptr;
}

bool isSame(NSObject* a, NSObject* b) {
    return a == b || (a != nullptr && a->isEqual(b));
}

} // namespace

ZR_DEFINE_CLASS(NSURLRequest) {
    is.classMethod<&NSURLRequest::requestWithURL>("requestWithURL:");
    is.method<&NSURLRequest::initWithURL>("initWithURL:");
    is.method<&NSURLRequest::URL>("URL");
    is.method<&NSURLRequest::HTTPMethod>("HTTPMethod");
    is.method<&NSURLRequest::HTTPBody>("HTTPBody");
    is.method<&NSURLRequest::allHTTPHeaderFields>("allHTTPHeaderFields");
    is.method<&NSURLRequest::valueForHTTPHeaderField>("valueForHTTPHeaderField:");
}

ZR_DEFINE_CLASS(NSMutableURLRequest) {
    is.classMethod<&NSMutableURLRequest::requestWithURL>("requestWithURL:");
    is.method<&NSMutableURLRequest::setURL>("setURL:");
    is.method<&NSMutableURLRequest::setHTTPMethod>("setHTTPMethod:");
    is.method<&NSMutableURLRequest::setHTTPBody>("setHTTPBody:");
    is.method<&NSMutableURLRequest::setAllHTTPHeaderFields>("setAllHTTPHeaderFields:");
    is.method<&NSMutableURLRequest::setValue_forHTTPHeaderField>("setValue:forHTTPHeaderField:");
    is.method<&NSMutableURLRequest::addValue_forHTTPHeaderField>("addValue:forHTTPHeaderField:");
}

NSURLRequest::NSURLRequest() : m_method("GET"_ns) {}
NSURLRequest::~NSURLRequest() = default;

NSMutableURLRequest::NSMutableURLRequest() = default;
NSMutableURLRequest::~NSMutableURLRequest() = default;

Ref<NSURLRequest> NSURLRequest::requestWithURL(NSURL* url) {
    return make<NSURLRequest>(&NSURLRequest::initWithURL, url);
}

id NSURLRequest::initWithURL(NSURL* url) {
    m_url = Ref<NSURL>(url);
    return id(this);
}

Ref<NSString> NSURLRequest::valueForHTTPHeaderField(NSString* name) const {
    const Ref<NSString> spelling = name != nullptr ? spellingOf(name, m_fields) : nullptr;
    return spelling ? Ref<NSString>(cast<NSString>(m_fields->peek(spelling))) : nullptr;
}

bool NSURLRequest::isEqual(NSObject* other) const {
    const auto* const request = cast<NSURLRequest>(other);
    return request != nullptr && isSame(m_url, request->m_url) && isSame(m_method, request->m_method) &&
           isSame(m_fields, request->m_fields) && isSame(m_body, request->m_body);
}

NSUInteger NSURLRequest::hash() const {
    return m_url ? m_url->hash() : 0;
}

Ref<NSString> NSURLRequest::description() const {
    return NSString::stringWithFormat("%@ { URL: %@ }"_ns, NSObject::description(), m_url);
}

id NSURLRequest::copy() const {
    return id(const_cast<NSURLRequest*>(this));
}

id NSURLRequest::mutableCopy() const {
    const Ref<NSMutableURLRequest> twin = NSMutableURLRequest::requestWithURL(m_url);
    fill(*twin, *this);
    return twin;
}

void NSURLRequest::fill(NSURLRequest& fresh, const NSURLRequest& other) {
    fresh.m_url = other.m_url;
    fresh.m_method = other.m_method;
    fresh.m_body = other.m_body;
    fresh.m_fields = other.m_fields;
}

Ref<NSMutableURLRequest> NSMutableURLRequest::requestWithURL(NSURL* url) {
    return make<NSMutableURLRequest>(&NSMutableURLRequest::initWithURL, url);
}

void NSMutableURLRequest::setURL(NSURL* url) {
    m_url = Ref<NSURL>(url);
}

void NSMutableURLRequest::setHTTPMethod(NSString* method) {
    m_method = method != nullptr ? Ref<NSString>(cast<NSString>(method->copy())) : "GET"_ns;
}

void NSMutableURLRequest::setHTTPBody(NSData* body) {
    m_body = body != nullptr ? Ref<NSData>(cast<NSData>(body->copy())) : nullptr;
}

void NSMutableURLRequest::setAllHTTPHeaderFields(NSDictionary* fields) {
    if (fields == nullptr) {
        m_fields = nullptr;
        return;
    }
    const Ref<NSMutableDictionary> table = NSMutableDictionary::dictionary();
    for (const id& key : fields) {
        auto* const name = cast<NSString>(key);
        auto* const value = cast<NSString>(fields->peek(key));
        if (name == nullptr || value == nullptr) {
            continue;
        }
        if (const Ref<NSString> other = spellingOf(name, table)) {
            table->removeObjectForKey(other);
        }
        table->setObject_forKey(id(value->copy()), name);
    }
    m_fields = Ref<NSDictionary>(cast<NSDictionary>(table->copy()));
}

void NSMutableURLRequest::setValue_forHTTPHeaderField(NSString* value, NSString* name) {
    if (name == nullptr) {
        return;
    }
    const Ref<NSMutableDictionary> table = NSMutableDictionary::dictionaryWithDictionary(m_fields);
    if (const Ref<NSString> other = spellingOf(name, table)) {
        table->removeObjectForKey(other);
    }
    if (value != nullptr) {
        table->setObject_forKey(id(value->copy()), name->capitalizedString());
    }
    m_fields = Ref<NSDictionary>(cast<NSDictionary>(table->copy()));
}

void NSMutableURLRequest::addValue_forHTTPHeaderField(NSString* value, NSString* name) {
    if (value == nullptr) {
        return;
    }
    const Ref<NSString> old = valueForHTTPHeaderField(name);
    setValue_forHTTPHeaderField(old ? NSString::stringWithFormat("%@,%@"_ns, old, value) : Ref<NSString>(value), name);
}

id NSMutableURLRequest::copy() const {
    const Ref<NSURLRequest> twin = NSURLRequest::requestWithURL(m_url);
    fill(*twin, *this);
    return twin;
}

} // namespace zr
