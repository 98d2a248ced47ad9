#include <zrbasic/platform/foundation/url_components.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/foundation/url_parts_p.h>
#include <zrbasic/platform/foundation/url_query_item.h>

#include <vector>

namespace zr {

namespace {

using detail::AsciiSet;
using detail::queryCharacters;
using detail::unreservedAnd;

constexpr AsciiSet userCharacters = unreservedAnd("!$&'()*+,;=");
constexpr AsciiSet hostCharacters = unreservedAnd("!$&'()*+,;=");
constexpr AsciiSet addressCharacters = unreservedAnd("!$&'()*+,;=:[]");
constexpr AsciiSet pathCharacters = unreservedAnd("!$&'()*+,;=:@/");

// An address in brackets may hold what a name may not.
const AsciiSet& hostCharactersFor(const NSString* host) {
    const bool isAddress = host != nullptr && host->view().starts_with(u'[') && host->view().ends_with(u']');
    return isAddress ? addressCharacters : hostCharacters;
}

[[noreturn]] void raiseInvalid(const std::string& operation, const std::string& reason) {
    NSException::raise(NSInvalidArgumentException, "*** -[NSURLComponents " + operation + "]: " + reason);
}

void requireEncoded(NSString* text, const AsciiSet& allowed, const char* operation) {
    if (!detail::isEncodedText(text->view(), allowed)) {
        raiseInvalid(operation, "invalid characters in escaped text");
    }
}

} // namespace

ZR_DEFINE_CLASS(NSURLComponents) {
    is.classMethod<&NSURLComponents::components>("components");
    is.classMethod<&NSURLComponents::componentsWithString>("componentsWithString:");
    is.classMethod<&NSURLComponents::componentsWithURL_resolvingAgainstBaseURL>(
        "componentsWithURL:resolvingAgainstBaseURL:");
    is.method<&NSURLComponents::initWithString>("initWithString:");
    is.method<&NSURLComponents::initWithURL_resolvingAgainstBaseURL>("initWithURL:resolvingAgainstBaseURL:");
    is.method<&NSURLComponents::string>("string");
    is.method<&NSURLComponents::URL>("URL");
    is.method<&NSURLComponents::URLRelativeToURL>("URLRelativeToURL:");
    is.method<&NSURLComponents::scheme>("scheme");
    is.method<&NSURLComponents::setScheme>("setScheme:");
    is.method<&NSURLComponents::port>("port");
    is.method<&NSURLComponents::setPort>("setPort:");
    is.method<&NSURLComponents::user>("user");
    is.method<&NSURLComponents::setUser>("setUser:");
    is.method<&NSURLComponents::password>("password");
    is.method<&NSURLComponents::setPassword>("setPassword:");
    is.method<&NSURLComponents::host>("host");
    is.method<&NSURLComponents::setHost>("setHost:");
    is.method<&NSURLComponents::path>("path");
    is.method<&NSURLComponents::setPath>("setPath:");
    is.method<&NSURLComponents::query>("query");
    is.method<&NSURLComponents::setQuery>("setQuery:");
    is.method<&NSURLComponents::fragment>("fragment");
    is.method<&NSURLComponents::setFragment>("setFragment:");
    is.method<&NSURLComponents::percentEncodedUser>("percentEncodedUser");
    is.method<&NSURLComponents::setPercentEncodedUser>("setPercentEncodedUser:");
    is.method<&NSURLComponents::percentEncodedPassword>("percentEncodedPassword");
    is.method<&NSURLComponents::setPercentEncodedPassword>("setPercentEncodedPassword:");
    is.method<&NSURLComponents::percentEncodedHost>("percentEncodedHost");
    is.method<&NSURLComponents::setPercentEncodedHost>("setPercentEncodedHost:");
    is.method<&NSURLComponents::percentEncodedPath>("percentEncodedPath");
    is.method<&NSURLComponents::setPercentEncodedPath>("setPercentEncodedPath:");
    is.method<&NSURLComponents::percentEncodedQuery>("percentEncodedQuery");
    is.method<&NSURLComponents::setPercentEncodedQuery>("setPercentEncodedQuery:");
    is.method<&NSURLComponents::percentEncodedFragment>("percentEncodedFragment");
    is.method<&NSURLComponents::setPercentEncodedFragment>("setPercentEncodedFragment:");
    is.method<&NSURLComponents::queryItems>("queryItems");
    is.method<&NSURLComponents::setQueryItems>("setQueryItems:");
}

NSURLComponents::NSURLComponents() = default;
NSURLComponents::~NSURLComponents() = default;

Ref<NSURLComponents> NSURLComponents::components() {
    return make<NSURLComponents>();
}

Ref<NSURLComponents> NSURLComponents::componentsWithString(NSString* text) {
    return make<NSURLComponents>(&NSURLComponents::initWithString, text);
}

Ref<NSURLComponents> NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(NSURL* url, bool resolve) {
    return make<NSURLComponents>(&NSURLComponents::initWithURL_resolvingAgainstBaseURL, url, resolve);
}

id NSURLComponents::initWithString(NSString* text) {
    if (text == nullptr) {
        raiseInvalid("initWithString:", "nil string parameter");
    }
    return read(Ref<NSString>(cast<NSString>(text->copy()))) ? id(this) : id();
}

id NSURLComponents::initWithURL_resolvingAgainstBaseURL(NSURL* url, bool resolve) {
    if (url == nullptr) {
        raiseInvalid("initWithURL:resolvingAgainstBaseURL:", "nil URL parameter");
    }
    return read(resolve ? url->absoluteString() : url->relativeString()) ? id(this) : id();
}

bool NSURLComponents::read(NSString* text) {
    if (!detail::isStrictUrl(text->view())) {
        return false;
    }
    const detail::UrlParts parts = detail::splitUrl(text->view());
    const auto take = [text](Part& part, std::optional<std::u16string_view> units) {
        if (units) {
            part = {Ref<NSString>(text), *units};
        }
    };
    take(m_parts.scheme, parts.scheme);
    take(m_parts.user, parts.user);
    take(m_parts.password, parts.password);
    take(m_parts.host, parts.host);
    take(m_parts.port, parts.port);
    take(m_parts.path, parts.path);
    take(m_parts.query, parts.query);
    take(m_parts.fragment, parts.fragment);
    return true;
}

Ref<NSString> NSURLComponents::Part::string() const {
    return text.size() == (holder ? holder->length() : 0) ? holder : NSString::fromUtf16(text);
}

Ref<NSString> NSURLComponents::Part::decoded() const {
    return text.find(u'%') == std::u16string_view::npos ? string() : detail::decodedPart(text);
}

bool NSURLComponents::Part::operator==(const Part& other) const {
    return (holder == nullptr) == (other.holder == nullptr) && text == other.text;
}

NSURLComponents::Part NSURLComponents::partOf(std::u16string&& text) {
    const Ref<NSString> holder = NSString::fromUtf16(std::move(text));
    return {holder, holder->view()};
}

void NSURLComponents::setDecoded(Part& part, NSString* text, const AsciiSet& allowed) {
    if (text == nullptr) {
        part = {};
        return;
    }
    std::u16string escaped;
    escaped.reserve(text->length());
    detail::appendEncoded(escaped, text->view(), allowed);
    part = partOf(std::move(escaped));
}

void NSURLComponents::setEncoded(Part& part, NSString* text, const AsciiSet& allowed, const char* operation) {
    if (text == nullptr) {
        part = {};
        return;
    }
    requireEncoded(text, allowed, operation);
    part = partOf(std::u16string(text->view()));
}

Ref<NSString> NSURLComponents::string() const {
    const bool isReadable = m_parts.hasAuthority() ? m_parts.path.text.empty() || m_parts.path.text.starts_with(u'/')
                                                   : !m_parts.path.text.starts_with(u"//");
    if (!isReadable) {
        return nullptr;
    }
    std::u16string whole;
    whole.reserve(m_parts.scheme.text.size() + m_parts.user.text.size() + m_parts.password.text.size() +
                  m_parts.host.text.size() + m_parts.port.text.size() + m_parts.path.text.size() +
                  m_parts.query.text.size() + m_parts.fragment.text.size() + 8);
    const auto append = [&whole](const Part& part, std::u16string_view before, std::u16string_view behind) {
        if (part) {
            whole += before;
            whole += part.text;
            whole += behind;
        }
    };
    append(m_parts.scheme, u"", u":");
    if (m_parts.hasAuthority()) {
        whole += u"//";
        append(m_parts.user, u"", u"");
        append(m_parts.password, u":", u"");
        whole += m_parts.user || m_parts.password ? u"@" : u"";
        append(m_parts.host, u"", u"");
        append(m_parts.port, u":", u"");
    }
    append(m_parts.path, u"", u"");
    append(m_parts.query, u"?", u"");
    append(m_parts.fragment, u"#", u"");
    return NSString::fromUtf16(std::move(whole));
}

Ref<NSURL> NSURLComponents::URL() const {
    return URLRelativeToURL(nullptr);
}

Ref<NSURL> NSURLComponents::URLRelativeToURL(NSURL* base) const {
    const Ref<NSString> whole = string();
    return whole ? NSURL::URLWithString_relativeToURL(whole, base) : nullptr;
}

Ref<NSString> NSURLComponents::scheme() const {
    return m_parts.scheme.string();
}

void NSURLComponents::setScheme(NSString* scheme) {
    if (scheme != nullptr && !detail::isUrlScheme(scheme->view())) {
        raiseInvalid("setScheme:", "invalid characters in scheme");
    }
    m_parts.scheme = scheme != nullptr ? partOf(std::u16string(scheme->view())) : Part();
}

Ref<NSNumber> NSURLComponents::port() const {
    return detail::portNumber(m_parts.port.text);
}

void NSURLComponents::setPort(NSNumber* port) {
    if (port == nullptr) {
        m_parts.port = {};
        return;
    }
    const NSInteger number = port->integerValue();
    if (number < 0) {
        raiseInvalid("setPort:", "negative port number");
    }
    const std::string digits = std::to_string(number);
    m_parts.port = partOf(std::u16string(digits.begin(), digits.end()));
}

Ref<NSString> NSURLComponents::user() const {
    return m_parts.user.decoded();
}

void NSURLComponents::setUser(NSString* user) {
    setDecoded(m_parts.user, user, userCharacters);
}

Ref<NSString> NSURLComponents::password() const {
    return m_parts.password.decoded();
}

void NSURLComponents::setPassword(NSString* password) {
    setDecoded(m_parts.password, password, userCharacters);
}

Ref<NSString> NSURLComponents::host() const {
    return m_parts.host.decoded();
}

void NSURLComponents::setHost(NSString* host) {
    setDecoded(m_parts.host, host, hostCharactersFor(host));
}

Ref<NSString> NSURLComponents::path() const {
    return m_parts.path ? m_parts.path.decoded() : NSString::string();
}

void NSURLComponents::setPath(NSString* path) {
    setDecoded(m_parts.path, path, pathCharacters);
}

Ref<NSString> NSURLComponents::query() const {
    return m_parts.query.decoded();
}

void NSURLComponents::setQuery(NSString* query) {
    setDecoded(m_parts.query, query, queryCharacters);
}

Ref<NSString> NSURLComponents::fragment() const {
    return m_parts.fragment.decoded();
}

void NSURLComponents::setFragment(NSString* fragment) {
    setDecoded(m_parts.fragment, fragment, queryCharacters);
}

Ref<NSString> NSURLComponents::percentEncodedUser() const {
    return m_parts.user.string();
}

void NSURLComponents::setPercentEncodedUser(NSString* user) {
    setEncoded(m_parts.user, user, userCharacters, "setPercentEncodedUser:");
}

Ref<NSString> NSURLComponents::percentEncodedPassword() const {
    return m_parts.password.string();
}

void NSURLComponents::setPercentEncodedPassword(NSString* password) {
    setEncoded(m_parts.password, password, userCharacters, "setPercentEncodedPassword:");
}

Ref<NSString> NSURLComponents::percentEncodedHost() const {
    return m_parts.host.string();
}

void NSURLComponents::setPercentEncodedHost(NSString* host) {
    setEncoded(m_parts.host, host, hostCharactersFor(host), "setPercentEncodedHost:");
}

Ref<NSString> NSURLComponents::percentEncodedPath() const {
    return m_parts.path ? m_parts.path.string() : NSString::string();
}

void NSURLComponents::setPercentEncodedPath(NSString* path) {
    setEncoded(m_parts.path, path, pathCharacters, "setPercentEncodedPath:");
}

Ref<NSString> NSURLComponents::percentEncodedQuery() const {
    return m_parts.query.string();
}

void NSURLComponents::setPercentEncodedQuery(NSString* query) {
    setEncoded(m_parts.query, query, queryCharacters, "setPercentEncodedQuery:");
}

Ref<NSString> NSURLComponents::percentEncodedFragment() const {
    return m_parts.fragment.string();
}

void NSURLComponents::setPercentEncodedFragment(NSString* fragment) {
    setEncoded(m_parts.fragment, fragment, queryCharacters, "setPercentEncodedFragment:");
}

Ref<NSArray> NSURLComponents::queryItems() const {
    if (!m_parts.query) {
        return nullptr;
    }
    std::vector<id> items;
    detail::walkQuery(m_parts.query.text, [&items](std::u16string_view name, std::optional<std::u16string_view> value) {
        items.push_back(NSURLQueryItem::queryItemWithName_value(detail::decodedPart(name), detail::decodedPart(value)));
    });
    return NSArray::fromElements(std::move(items));
}

void NSURLComponents::setQueryItems(NSArray* items) {
    if (items == nullptr) {
        m_parts.query = {};
        return;
    }
    std::u16string query;
    bool isFirst = true;
    for (const id& element : items->elements()) {
        if (const auto* const item = cast<NSURLQueryItem>(element)) {
            const Ref<NSString> value = item->value();
            detail::appendQueryItem(query, isFirst, item->name()->view(),
                                    value ? std::optional(value->view()) : std::nullopt);
        }
    }
    m_parts.query = partOf(std::move(query));
}

bool NSURLComponents::isEqual(NSObject* other) const {
    const auto* const components = cast<NSURLComponents>(other);
    return components != nullptr && m_parts == components->m_parts;
}

NSUInteger NSURLComponents::hash() const {
    return detail::hashUnits(m_parts.host.text) ^ detail::hashUnits(m_parts.path.text) * 31 ^
           detail::hashUnits(m_parts.query.text) * 961;
}

Ref<NSString> NSURLComponents::description() const {
    return NSString::stringWithFormat(
        "%@ {scheme = %@, user = %@, password = %@, host = %@, port = %@, path = %@, "
        "query = %@, fragment = %@}"_ns,
        NSObject::description(), m_parts.scheme.string(), m_parts.user.string(), m_parts.password.string(),
        m_parts.host.string(), m_parts.port.string(), percentEncodedPath(), m_parts.query.string(),
        m_parts.fragment.string());
}

id NSURLComponents::copy() const {
    const Ref<NSURLComponents> twin = alloc<NSURLComponents>();
    twin->m_parts = m_parts;
    return twin;
}

} // namespace zr
