#include <zrbasic/platform/foundation/url.h>

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url_parts_p.h>

namespace zr {

namespace {

detail::UrlParts partsOf(const NSString* text) {
    return detail::splitUrl(text->view());
}

} // namespace

ZR_DEFINE_CLASS(NSURL) {
    is.classMethod<&NSURL::URLWithString>("URLWithString:");
    is.classMethod<&NSURL::URLWithString_relativeToURL>("URLWithString:relativeToURL:");
    is.method<&NSURL::initWithString>("initWithString:");
    is.method<&NSURL::initWithString_relativeToURL>("initWithString:relativeToURL:");
    is.method<&NSURL::absoluteString>("absoluteString");
    is.method<&NSURL::relativeString>("relativeString");
    is.method<&NSURL::absoluteURL>("absoluteURL");
    is.method<&NSURL::baseURL>("baseURL");
    is.method<&NSURL::scheme>("scheme");
    is.method<&NSURL::host>("host");
    is.method<&NSURL::port>("port");
    is.method<&NSURL::user>("user");
    is.method<&NSURL::password>("password");
    is.method<&NSURL::path>("path");
    is.method<&NSURL::query>("query");
    is.method<&NSURL::fragment>("fragment");
    is.method<&NSURL::lastPathComponent>("lastPathComponent");
    is.method<&NSURL::pathExtension>("pathExtension");
}

NSURL::NSURL() : m_text(NSString::string()), m_absolute(m_text) {}
NSURL::~NSURL() = default;

Ref<NSURL> NSURL::URLWithString(NSString* text) {
    return URLWithString_relativeToURL(text, nullptr);
}

Ref<NSURL> NSURL::URLWithString_relativeToURL(NSString* text, NSURL* base) {
    return make<NSURL>(&NSURL::initWithString_relativeToURL, text, base);
}

id NSURL::initWithString(NSString* text) {
    return initWithString_relativeToURL(text, nullptr);
}

id NSURL::initWithString_relativeToURL(NSString* text, NSURL* base) {
    if (text == nullptr) {
        NSException::raise(NSInvalidArgumentException,
                           "*** -[NSURL initWithString:relativeToURL:]: nil string parameter");
    }
    if (!detail::hasUrlCharacters(text->view())) {
        return nullptr;
    }
    m_text = Ref<NSString>(cast<NSString>(text->copy()));
    m_absolute = m_text;
    if (base != nullptr && !detail::splitUrl(m_text->view()).scheme) {
        m_base = base->absoluteURL();
        m_absolute = NSString::fromUtf16(detail::resolvedUrl(m_text->view(), base->m_absolute->view()));
    }
    return id(this);
}

Ref<NSURL> NSURL::absoluteURL() const {
    return m_base ? URLWithString(m_absolute) : Ref<NSURL>(const_cast<NSURL*>(this));
}

Ref<NSString> NSURL::scheme() const {
    return detail::plainPart(partsOf(m_absolute).scheme);
}

Ref<NSString> NSURL::host() const {
    std::optional<std::u16string_view> host = partsOf(m_absolute).host;
    if (!host || host->empty()) {
        return nullptr;
    }
    if (host->starts_with(u'[') && host->ends_with(u']')) {
        host = host->substr(1, host->size() - 2);
    }
    return detail::decodedPart(host);
}

Ref<NSNumber> NSURL::port() const {
    return detail::portNumber(partsOf(m_absolute).port);
}

Ref<NSString> NSURL::user() const {
    return detail::decodedPart(partsOf(m_absolute).user);
}

Ref<NSString> NSURL::password() const {
    return detail::plainPart(partsOf(m_absolute).password);
}

Ref<NSString> NSURL::path() const {
    const detail::UrlParts parts = partsOf(m_absolute);
    if (parts.isOpaque()) {
        return nullptr;
    }
    std::u16string_view path = parts.path;
    if (path.size() > 1 && path.ends_with(u'/')) {
        path.remove_suffix(1);
    }
    return detail::decodedPart(path);
}

Ref<NSString> NSURL::query() const {
    const detail::UrlParts parts = partsOf(m_absolute);
    return parts.isOpaque() ? nullptr : detail::plainPart(parts.query);
}

Ref<NSString> NSURL::fragment() const {
    return detail::plainPart(partsOf(m_absolute).fragment);
}

Ref<NSString> NSURL::lastPathComponent() const {
    const Ref<NSString> whole = path();
    return whole ? whole->lastPathComponent() : nullptr;
}

Ref<NSString> NSURL::pathExtension() const {
    const Ref<NSString> whole = path();
    return whole ? whole->pathExtension() : nullptr;
}

bool NSURL::isEqual(NSObject* other) const {
    const auto* const url = cast<NSURL>(other);
    return url != nullptr && m_text->isEqual(url->m_text) &&
           (m_base == url->m_base || (m_base && m_base->isEqual(url->m_base)));
}

NSUInteger NSURL::hash() const {
    return m_text->hash();
}

Ref<NSString> NSURL::description() const {
    return m_base ? NSString::stringWithFormat("%@ -- %@"_ns, m_text, m_base) : m_text;
}

id NSURL::copy() const {
    return id(const_cast<NSURL*>(this));
}

Ref<NSURL> detail::urlOfCheckedText(Ref<NSString> text) {
    Ref<NSURL> url = alloc<NSURL>();
    url->m_text = text;
    url->m_absolute = std::move(text);
    return url;
}

} // namespace zr
