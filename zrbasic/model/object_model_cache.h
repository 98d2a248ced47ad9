#pragma once

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/threading.h>

namespace zr {

class NSMutableArray;
class NSMutableDictionary;

/// One declared property of one class: its name, and whether it was declared read-only.
class ZR_EXPORT _ZRObjectPropertyCache : public NSObject {
    ZR_OBJECT(_ZRObjectPropertyCache, NSObject)

  public:
    _ZRObjectPropertyCache();
    ~_ZRObjectPropertyCache() override;

    /// Tells the record from every other one that ever was.
    [[nodiscard]] std::uint64_t serial() const { return m_serial; }

    ZR_PROPERTY(bool, isReadonly, setIsReadonly)
    ZR_PROPERTY(Copied<NSString>, property, setProperty)

  private:
    std::uint64_t m_serial;
};

/// The declared properties of a model class and its ancestors, read once through the runtime.
///
/// A name that is declared twice along the ancestors has two records in `propertiesCache`, while `propertiesMap` holds
/// the one of the most distant ancestor: a read-only property stays read-only by name even where a subclass declares
/// it writable.
class ZR_EXPORT _ZRObjectModelCache : public NSObject {
    ZR_DECLARE_CLASS(_ZRObjectModelCache, NSObject)

  public:
    ~_ZRObjectModelCache() override;

    /// Reads the properties of `modelClass` and of its ancestors below the root, each class in declaration order, the
    /// class itself first. Null, the root and classes of another root give empty tables.
    id initWithClass(Class* modelClass);

    /// Every `_ZRObjectPropertyCache`, in the order found. Made on first read, so never null.
    [[nodiscard]] Ref<NSMutableArray> propertiesCache();
    void setPropertiesCache(NSMutableArray* propertiesCache);
    /// Property name to `_ZRObjectPropertyCache`. Made on first read, so never null.
    [[nodiscard]] Ref<NSMutableDictionary> propertiesMap();
    void setPropertiesMap(NSMutableDictionary* propertiesMap);
    /// The class's name; null when there is no class.
    [[nodiscard]] Ref<NSString> name() const;
    void setName(NSString* name);
    [[nodiscard]] Class* modelClass() const;
    void setModelClass(Class* modelClass);

  private:
    friend class _ZRObjectModelCacheManager;
    void record(Property property);

    Ref<NSMutableArray> m_propertiesCache;
    Ref<NSMutableDictionary> m_propertiesMap;
    Ref<NSString> m_name;
    Class* m_modelClass = nullptr;
};

/// The process's `_ZRObjectModelCache`s, by class name. Look-ups are safe from any thread; the tables found are not
/// guarded.
class ZR_EXPORT _ZRObjectModelCacheManager : public NSObject {
    ZR_DECLARE_CLASS(_ZRObjectModelCacheManager, NSObject)

  public:
    ~_ZRObjectModelCacheManager() override;

    /// The one manager, borrowed: made on first call, never let go.
    [[nodiscard]] static _ZRObjectModelCacheManager* sharedManager();

    /// The table of the class, built on first use and then kept: properties added to the class later are never seen,
    /// and two classes of one name share the table of the first. Null gives an empty table that is not kept.
    [[nodiscard]] Ref<_ZRObjectModelCache> modelCacheOfClass(Class* modelClass);

    /// The map of `modelCacheOfClass`, for those who need nothing else of it.
    [[nodiscard]] Ref<NSMutableDictionary> propertiesMapOfClass(Class* modelClass);

    /// Class name to `_ZRObjectModelCache`. Made on first read, so never null.
    [[nodiscard]] Ref<NSMutableDictionary> modelCaches();
    void setModelCaches(NSMutableDictionary* modelCaches);

  private:
    detail::SpinLock m_lock;
    Ref<NSMutableDictionary> m_modelCaches;
};

} // namespace zr
