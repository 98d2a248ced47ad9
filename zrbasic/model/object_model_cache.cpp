#include <zrbasic/model/object_model_cache.h>

#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/per_thread_p.h>
#include <zrbasic/platform/foundation/runtime_names.h>

#include <array>
#include <atomic>
#include <mutex>

namespace zr {

namespace {

/// Names of classes that were asked for lately: the same string again, whose hash is known.
struct ClassNames {
    struct Entry {
        const Class* ofClass = nullptr;
        Ref<NSString> name;
    };
    std::array<Entry, 64> entries;
};

/// The class's name, borrowed until this thread asks for another; `holder` keeps a name that nobody else does.
NSString* nameOf(const Class* ofClass, Ref<NSString>& holder) {
    ClassNames* const names = ofClass ? detail::PerThread<ClassNames>::ensure() : nullptr;
    if (!names) {
        holder = NSStringFromClass(ofClass);
        return holder;
    }
    auto& entry = names->entries[(reinterpret_cast<std::uintptr_t>(ofClass) >> 6) % names->entries.size()];
    if (entry.ofClass != ofClass) {
        entry = {ofClass, NSStringFromClass(ofClass)};
    }
    return entry.name;
}

} // namespace

_ZRObjectPropertyCache::_ZRObjectPropertyCache() {
    static constinit std::atomic<std::uint64_t> count{0};
    m_serial = count.fetch_add(1, std::memory_order_relaxed) + 1;
}

_ZRObjectPropertyCache::~_ZRObjectPropertyCache() = default;

ZR_DEFINE_CLASS(_ZRObjectModelCache) {
    is.method<&_ZRObjectModelCache::initWithClass>("initWithClass:");
    is.method<&_ZRObjectModelCache::propertiesCache>("propertiesCache");
    is.method<&_ZRObjectModelCache::setPropertiesCache>("setPropertiesCache:");
    is.method<&_ZRObjectModelCache::propertiesMap>("propertiesMap");
    is.method<&_ZRObjectModelCache::setPropertiesMap>("setPropertiesMap:");
    is.method<&_ZRObjectModelCache::name>("name");
    is.method<&_ZRObjectModelCache::setName>("setName:");
    is.method<&_ZRObjectModelCache::modelClass>("modelClass");
    is.method<&_ZRObjectModelCache::setModelClass>("setModelClass:");
}

_ZRObjectModelCache::~_ZRObjectModelCache() = default;

id _ZRObjectModelCache::initWithClass(Class* modelClass) {
    setModelClass(modelClass);
    setName(NSStringFromClass(modelClass));
    const Class* const root = NSObject::classObject();
    for (Class* searched = modelClass; searched && searched != root && searched->descendsFrom(root);
         searched = class_getSuperclass(searched)) {
        for (const Property property : class_copyPropertyList(searched)) {
            record(property);
        }
    }
    return id(this);
}

void _ZRObjectModelCache::record(Property property) {
    const Ref<NSString> name = NSString::stringWithUTF8String(property_getName(property));
    if (!name) {
        return;
    }
    const std::vector<PropertyAttribute> attributes = property_copyAttributeList(property);
    bool isReadonly = false;
    // The first attribute is the type, whatever it is called.
    for (std::size_t i = 1; i < attributes.size(); ++i) {
        isReadonly = isReadonly || attributes[i].name == "R";
    }
    const auto found = make<_ZRObjectPropertyCache>();
    found->setProperty(name);
    found->setIsReadonly(isReadonly);
    propertiesCache()->addObject(found);
    propertiesMap()->setObject_forKey(found, name);
}

Ref<NSMutableArray> _ZRObjectModelCache::propertiesCache() {
    if (!m_propertiesCache) {
        m_propertiesCache = NSMutableArray::array();
    }
    return m_propertiesCache;
}

void _ZRObjectModelCache::setPropertiesCache(NSMutableArray* propertiesCache) {
    m_propertiesCache = Ref<NSMutableArray>(propertiesCache);
}

Ref<NSMutableDictionary> _ZRObjectModelCache::propertiesMap() {
    if (!m_propertiesMap) {
        m_propertiesMap = NSMutableDictionary::dictionary();
    }
    return m_propertiesMap;
}

void _ZRObjectModelCache::setPropertiesMap(NSMutableDictionary* propertiesMap) {
    m_propertiesMap = Ref<NSMutableDictionary>(propertiesMap);
}

Ref<NSString> _ZRObjectModelCache::name() const {
    return m_name;
}

void _ZRObjectModelCache::setName(NSString* name) {
    m_name = Ref<NSString>(name ? cast<NSString>(name->copy()) : nullptr);
}

Class* _ZRObjectModelCache::modelClass() const {
    return m_modelClass;
}

void _ZRObjectModelCache::setModelClass(Class* modelClass) {
    m_modelClass = modelClass;
}

ZR_DEFINE_CLASS(_ZRObjectModelCacheManager) {
    is.classMethod<&_ZRObjectModelCacheManager::sharedManager>("sharedManager");
    is.method<&_ZRObjectModelCacheManager::modelCacheOfClass>("modelCacheOfClass:");
    is.method<&_ZRObjectModelCacheManager::modelCaches>("modelCaches");
    is.method<&_ZRObjectModelCacheManager::setModelCaches>("setModelCaches:");
}

_ZRObjectModelCacheManager::~_ZRObjectModelCacheManager() = default;

_ZRObjectModelCacheManager* _ZRObjectModelCacheManager::sharedManager() {
    static auto* const manager = make<_ZRObjectModelCacheManager>().leak();
    return manager;
}

Ref<_ZRObjectModelCache> _ZRObjectModelCacheManager::modelCacheOfClass(Class* modelClass) {
    Ref<NSString> holder;
    if (NSString* const name = nameOf(modelClass, holder)) {
        const std::lock_guard lock(m_lock);
        if (auto* const known = m_modelCaches ? cast<_ZRObjectModelCache>(m_modelCaches->peek(name)) : nullptr) {
            return Ref<_ZRObjectModelCache>(known);
        }
    }
    // Built outside the lock, because it takes its time; when two threads do, the first one's is kept.
    auto made = make<_ZRObjectModelCache>(&_ZRObjectModelCache::initWithClass, modelClass);
    NSString* const name = nameOf(modelClass, holder);
    if (!name) {
        return made;
    }
    const Ref<NSMutableDictionary> caches = modelCaches();
    const std::lock_guard lock(m_lock);
    if (auto* const known = cast<_ZRObjectModelCache>(caches->peek(name))) {
        return Ref<_ZRObjectModelCache>(known);
    }
    caches->setObject_forKey(made, name);
    return made;
}

Ref<NSMutableDictionary> _ZRObjectModelCacheManager::propertiesMapOfClass(Class* modelClass) {
    Ref<NSString> holder;
    if (NSString* const name = nameOf(modelClass, holder)) {
        const std::lock_guard lock(m_lock);
        const auto* const known = m_modelCaches ? cast<_ZRObjectModelCache>(m_modelCaches->peek(name)) : nullptr;
        if (known && known->m_propertiesMap) [[likely]] {
            return known->m_propertiesMap;
        }
    }
    return modelCacheOfClass(modelClass)->propertiesMap();
}

Ref<NSMutableDictionary> _ZRObjectModelCacheManager::modelCaches() {
    const std::lock_guard lock(m_lock);
    if (!m_modelCaches) {
        m_modelCaches = NSMutableDictionary::dictionary();
    }
    return m_modelCaches;
}

void _ZRObjectModelCacheManager::setModelCaches(NSMutableDictionary* modelCaches) {
    Ref<NSMutableDictionary> changing(modelCaches);
    const std::lock_guard lock(m_lock);
    // The old tables go when the lock is open again.
    m_modelCaches.swap(changing);
}

} // namespace zr
