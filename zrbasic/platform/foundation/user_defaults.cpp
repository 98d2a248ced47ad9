#include <zrbasic/platform/foundation/user_defaults.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/property_list_p.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/user_defaults_domains_p.h>

#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>

namespace zr {
namespace {

using detail::UserDefaultsDomains;

/// Domains of this process alone.
struct VolatileDomains {
    std::mutex mutex;
    Ref<NSMutableDictionary> byName = NSMutableDictionary::dictionary();

    static VolatileDomains& shared() {
        static auto* const domains = new VolatileDomains;
        return *domains;
    }

    [[nodiscard]] Ref<NSDictionary> find(NSString* name) {
        const std::lock_guard lock(mutex);
        return Ref<NSDictionary>(cast<NSDictionary>(byName->peek(name)));
    }
};

std::shared_ptr<detail::UserDefaultsDomain> written(NSString* name) {
    return UserDefaultsDomains::current()->domainNamed(name);
}

Ref<NSString> requiredName(NSString* name, const char* operation) {
    if (!name) {
        NSException::raise(NSInvalidArgumentException,
                           std::string("*** -[NSUserDefaults ") + operation + "]: key cannot be nil");
    }
    return detail::plainString(name);
}

id requiredCopy(NSObject* value, const char* operation) {
    id copy = detail::propertyListCopy(value);
    if (!copy) {
        NSException::raise(NSInvalidArgumentException, std::string("*** -[NSUserDefaults ") + operation +
                                                           "]: the value, of class " + object_getClassName(value) +
                                                           ", cannot be stored");
    }
    return copy;
}

Ref<NSDictionary> requiredValues(NSDictionary* values, const char* operation) {
    const id copy = requiredCopy(values ? values : NSDictionary::dictionary().get(), operation);
    return Ref<NSDictionary>(cast<NSDictionary>(copy));
}

} // namespace

Ref<NSString> NSArgumentDomain() {
    return "NSArgumentDomain"_ns;
}

Ref<NSString> NSGlobalDomain() {
    return "NSGlobalDomain"_ns;
}

Ref<NSString> NSRegistrationDomain() {
    return "NSRegistrationDomain"_ns;
}

ZR_DEFINE_CLASS(NSUserDefaults) {
    is.classMethod<&NSUserDefaults::standardUserDefaults>("standardUserDefaults");
    is.method<&NSUserDefaults::initWithSuiteName>("initWithSuiteName:");
    is.method<&NSUserDefaults::objectForKey>("objectForKey:");
    is.method<&NSUserDefaults::stringForKey>("stringForKey:");
    is.method<&NSUserDefaults::arrayForKey>("arrayForKey:");
    is.method<&NSUserDefaults::stringArrayForKey>("stringArrayForKey:");
    is.method<&NSUserDefaults::dictionaryForKey>("dictionaryForKey:");
    is.method<&NSUserDefaults::dataForKey>("dataForKey:");
    is.method<&NSUserDefaults::integerForKey>("integerForKey:");
    is.method<&NSUserDefaults::floatForKey>("floatForKey:");
    is.method<&NSUserDefaults::doubleForKey>("doubleForKey:");
    is.method<&NSUserDefaults::boolForKey>("boolForKey:");
    is.method<&NSUserDefaults::setObject_forKey>("setObject:forKey:");
    is.method<&NSUserDefaults::setInteger_forKey>("setInteger:forKey:");
    is.method<&NSUserDefaults::setFloat_forKey>("setFloat:forKey:");
    is.method<&NSUserDefaults::setDouble_forKey>("setDouble:forKey:");
    is.method<&NSUserDefaults::setBool_forKey>("setBool:forKey:");
    is.method<&NSUserDefaults::removeObjectForKey>("removeObjectForKey:");
    is.method<&NSUserDefaults::registerDefaults>("registerDefaults:");
    is.method<&NSUserDefaults::dictionaryRepresentation>("dictionaryRepresentation");
    is.method<&NSUserDefaults::synchronize>("synchronize");
    is.method<&NSUserDefaults::persistentDomainForName>("persistentDomainForName:");
    is.method<&NSUserDefaults::setPersistentDomain_forName>("setPersistentDomain:forName:");
    is.method<&NSUserDefaults::removePersistentDomainForName>("removePersistentDomainForName:");
    is.method<&NSUserDefaults::volatileDomainForName>("volatileDomainForName:");
    is.method<&NSUserDefaults::setVolatileDomain_forName>("setVolatileDomain:forName:");
    is.method<&NSUserDefaults::removeVolatileDomainForName>("removeVolatileDomainForName:");
}

NSUserDefaults::~NSUserDefaults() = default;

Ref<NSUserDefaults> NSUserDefaults::standardUserDefaults() {
    static NSUserDefaults* const shared = make<NSUserDefaults>().leak();
    return shared;
}

id NSUserDefaults::init() {
    return id(this);
}

id NSUserDefaults::initWithSuiteName(NSString* name) {
    if (name) {
        m_suite = detail::plainString(name);
        if (m_suite->length() == 0 || m_suite->isEqual(NSGlobalDomain())) {
            return {};
        }
    }
    return id(this);
}

Ref<NSString> NSUserDefaults::domain() const {
    return m_suite ? m_suite : detail::applicationDomain();
}

id NSUserDefaults::objectForKey(NSString* key) const {
    if (!key) {
        return {};
    }
    const Ref<NSString> name = detail::plainString(key);
    VolatileDomains& volatiles = VolatileDomains::shared();
    if (const Ref<NSDictionary> arguments = volatiles.find(NSArgumentDomain())) {
        if (id value = arguments->objectForKey(name)) {
            return value;
        }
    }
    for (const Ref<NSString>& place : {domain(), NSGlobalDomain()}) {
        if (id value = written(place)->objectForKey(name)) {
            return value;
        }
    }
    const Ref<NSDictionary> registered = volatiles.find(NSRegistrationDomain());
    return registered ? registered->objectForKey(name) : id();
}

Ref<NSString> NSUserDefaults::stringForKey(NSString* key) const {
    const id value = objectForKey(key);
    if (auto* const number = cast<NSNumber>(value)) {
        return number->stringValue();
    }
    return Ref<NSString>(cast<NSString>(value));
}

Ref<NSArray> NSUserDefaults::arrayForKey(NSString* key) const {
    return cast<NSArray>(objectForKey(key));
}

Ref<NSArray> NSUserDefaults::stringArrayForKey(NSString* key) const {
    Ref<NSArray> list = arrayForKey(key);
    for (const id& element : list) {
        if (!cast<NSString>(element)) {
            return {};
        }
    }
    return list;
}

Ref<NSDictionary> NSUserDefaults::dictionaryForKey(NSString* key) const {
    return cast<NSDictionary>(objectForKey(key));
}

Ref<NSData> NSUserDefaults::dataForKey(NSString* key) const {
    return cast<NSData>(objectForKey(key));
}

NSInteger NSUserDefaults::integerForKey(NSString* key) const {
    const id value = objectForKey(key);
    if (auto* const number = cast<NSNumber>(value)) {
        return number->integerValue();
    }
    auto* const text = cast<NSString>(value);
    return text ? text->integerValue() : 0;
}

float NSUserDefaults::floatForKey(NSString* key) const {
    const id value = objectForKey(key);
    if (auto* const number = cast<NSNumber>(value)) {
        return number->floatValue();
    }
    auto* const text = cast<NSString>(value);
    return text ? text->floatValue() : 0;
}

double NSUserDefaults::doubleForKey(NSString* key) const {
    const id value = objectForKey(key);
    if (auto* const number = cast<NSNumber>(value)) {
        return number->doubleValue();
    }
    auto* const text = cast<NSString>(value);
    return text ? text->doubleValue() : 0;
}

bool NSUserDefaults::boolForKey(NSString* key) const {
    const id value = objectForKey(key);
    if (auto* const number = cast<NSNumber>(value)) {
        return number->boolValue();
    }
    auto* const text = cast<NSString>(value);
    return text && text->boolValue();
}

void NSUserDefaults::setObject_forKey(NSObject* value, NSString* key) {
    const Ref<NSString> name = requiredName(key, "setObject:forKey:");
    written(domain())->setObject(value ? requiredCopy(value, "setObject:forKey:") : id(), name);
}

void NSUserDefaults::setInteger_forKey(NSInteger value, NSString* key) {
    setObject_forKey(box(value), key);
}

void NSUserDefaults::setFloat_forKey(float value, NSString* key) {
    setObject_forKey(box(value), key);
}

void NSUserDefaults::setDouble_forKey(double value, NSString* key) {
    setObject_forKey(box(value), key);
}

void NSUserDefaults::setBool_forKey(bool value, NSString* key) {
    setObject_forKey(box(value), key);
}

void NSUserDefaults::removeObjectForKey(NSString* key) {
    written(domain())->setObject(nullptr, requiredName(key, "removeObjectForKey:"));
}

void NSUserDefaults::registerDefaults(NSDictionary* defaults) {
    const Ref<NSDictionary> added = requiredValues(defaults, "registerDefaults:");
    VolatileDomains& volatiles = VolatileDomains::shared();
    const std::lock_guard lock(volatiles.mutex);
    auto* const present = cast<NSDictionary>(volatiles.byName->peek(NSRegistrationDomain()));
    const auto merged = NSMutableDictionary::dictionaryWithDictionary(present);
    merged->addEntriesFromDictionary(added);
    volatiles.byName->setObject_forKey(merged->copy(), NSRegistrationDomain());
}

Ref<NSDictionary> NSUserDefaults::dictionaryRepresentation() const {
    VolatileDomains& volatiles = VolatileDomains::shared();
    const auto all = NSMutableDictionary::dictionaryWithDictionary(volatiles.find(NSRegistrationDomain()));
    all->addEntriesFromDictionary(written(NSGlobalDomain())->values());
    all->addEntriesFromDictionary(written(domain())->values());
    all->addEntriesFromDictionary(volatiles.find(NSArgumentDomain()));
    return NSDictionary::dictionaryWithDictionary(all);
}

bool NSUserDefaults::synchronize() {
    const bool own = written(domain())->synchronize();
    const bool global = written(NSGlobalDomain())->synchronize();
    return own && global;
}

Ref<NSDictionary> NSUserDefaults::persistentDomainForName(NSString* name) const {
    return name ? written(name)->values() : nullptr;
}

void NSUserDefaults::setPersistentDomain_forName(NSDictionary* values, NSString* name) {
    const Ref<NSString> place = requiredName(name, "setPersistentDomain:forName:");
    written(place)->setValues(requiredValues(values, "setPersistentDomain:forName:"));
}

void NSUserDefaults::removePersistentDomainForName(NSString* name) {
    written(requiredName(name, "removePersistentDomainForName:"))->setValues(NSDictionary::dictionary());
}

Ref<NSDictionary> NSUserDefaults::volatileDomainForName(NSString* name) const {
    return name ? VolatileDomains::shared().find(detail::plainString(name)) : nullptr;
}

void NSUserDefaults::setVolatileDomain_forName(NSDictionary* values, NSString* name) {
    const Ref<NSString> place = requiredName(name, "setVolatileDomain:forName:");
    const Ref<NSDictionary> copy = requiredValues(values, "setVolatileDomain:forName:");
    VolatileDomains& volatiles = VolatileDomains::shared();
    const std::lock_guard lock(volatiles.mutex);
    if (volatiles.byName->peek(place)) {
        NSException::raise(NSInvalidArgumentException, "*** -[NSUserDefaults setVolatileDomain:forName:]: the domain " +
                                                           place->utf8() + " exists already");
    }
    volatiles.byName->setObject_forKey(copy, place);
}

void NSUserDefaults::removeVolatileDomainForName(NSString* name) {
    const Ref<NSString> place = requiredName(name, "removeVolatileDomainForName:");
    VolatileDomains& volatiles = VolatileDomains::shared();
    const std::lock_guard lock(volatiles.mutex);
    volatiles.byName->removeObjectForKey(place);
}

UserDefaultsFolderOverride::UserDefaultsFolderOverride(const std::string& folder) {
    // The current directory may become another one. Without it there is no folder.
    std::error_code reason;
    std::filesystem::path place = folder.empty() ? std::filesystem::path() : std::filesystem::absolute(folder, reason);
    m_previous = UserDefaultsDomains::exchangeCurrent(std::make_shared<UserDefaultsDomains>(std::move(place)));
}

UserDefaultsFolderOverride::~UserDefaultsFolderOverride() {
    UserDefaultsDomains::exchangeCurrent(std::move(m_previous))->saveAll();
}

} // namespace zr
