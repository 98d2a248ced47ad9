#include <zrbasic/platform/foundation/error.h>

#include <zrbasic/platform/foundation/dictionary.h>

namespace zr {

ZR_DEFINE_CLASS(NSError) {
    is.classMethod<&NSError::errorWithDomain_code_userInfo>("errorWithDomain:code:userInfo:");
    is.method<&NSError::initWithDomain_code_userInfo>("initWithDomain:code:userInfo:");
    is.method<&NSError::domain>("domain");
    is.method<&NSError::code>("code");
    is.method<&NSError::userInfo>("userInfo");
    is.method<&NSError::localizedDescription>("localizedDescription");
}

NSError::NSError() = default;
NSError::~NSError() = default;

Ref<NSError> NSError::errorWithDomain_code_userInfo(NSString* domain, NSInteger code, NSDictionary* userInfo) {
    return make<NSError>(&NSError::initWithDomain_code_userInfo, domain, code, userInfo);
}

id NSError::initWithDomain_code_userInfo(NSString* domain, NSInteger code, NSDictionary* userInfo) {
    m_domain = domain ? Ref<NSString>(cast<NSString>(domain->copy())) : nullptr;
    m_userInfo = userInfo ? Ref<NSDictionary>(cast<NSDictionary>(userInfo->copy())) : nullptr;
    m_code = code;
    return id(this);
}

Ref<NSDictionary> NSError::userInfo() const {
    return m_userInfo;
}

Ref<NSString> NSError::localizedDescription() const {
    if (m_userInfo) {
        const id text = m_userInfo->objectForKey(NSLocalizedDescriptionKey());
        if (auto* string = cast<NSString>(text))
            return Ref<NSString>(string);
    }
    return NSString::stringWithFormat("The operation couldn’t be completed. (%@ error %ld.)"_ns, m_domain, m_code);
}

Ref<NSString> NSError::description() const {
    return NSString::stringWithFormat("Error Domain=%@ Code=%ld \"%@\""_ns, m_domain, m_code, localizedDescription());
}

bool NSError::isEqual(NSObject* other) const {
    const auto* error = cast<NSError>(other);
    const auto same = [](NSObject* left, NSObject* right) {
        return left == right || (left != nullptr && left->isEqual(right));
    };
    return error != nullptr && m_code == error->m_code && same(m_domain, error->m_domain) &&
           same(m_userInfo, error->m_userInfo);
}

NSUInteger NSError::hash() const {
    return static_cast<NSUInteger>(m_code) ^ (m_domain ? m_domain->hash() : 0);
}

id NSError::copy() const {
    return id(const_cast<NSError*>(this));
}

Ref<NSString> NSCocoaErrorDomain() {
    return "NSCocoaErrorDomain"_ns;
}

Ref<NSString> NSLocalizedDescriptionKey() {
    return "NSLocalizedDescription"_ns;
}

} // namespace zr
