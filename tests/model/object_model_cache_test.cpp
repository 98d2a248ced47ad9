#include <zrbasic/model/object_model_cache.h>

#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

class CachedBase : public NSObject {
    ZR_OBJECT(CachedBase, NSObject)

  public:
    ZR_PROPERTY(Ref<NSString>, symbol, setSymbol)
    ZR_READONLY(Ref<NSString>, code)
};

class CachedQuote : public CachedBase {
    ZR_OBJECT(CachedQuote, CachedBase)

  public:
    ZR_PROPERTY(double, price, setPrice)
    ZR_READONLY(int, rank)
    // Declared again, writable this time.
    ZR_PROPERTY(Ref<NSString>, code, setCode)
    ZR_PROPERTY(bool, isHidden, setHidden)
};

class NoProperties : public CachedBase {
    ZR_OBJECT(NoProperties, CachedBase)
};

class ReadByHand : public NSObject {
    ZR_OBJECT(ReadByHand, NSObject)
};

class GrownLater : public NSObject {
    ZR_OBJECT(GrownLater, NSObject)

  public:
    ZR_PROPERTY(int, early, setEarly)
};

std::string listed(_ZRObjectModelCache* cache) {
    std::string text;
    for (const id& element : cache->propertiesCache().get()) {
        const auto* const record = cast<_ZRObjectPropertyCache>(element);
        text += record->property()->utf8() + (record->isReadonly() ? "(r) " : " ");
    }
    return text;
}

Ref<_ZRObjectModelCache> cacheOf(Class* modelClass) {
    return make<_ZRObjectModelCache>(&_ZRObjectModelCache::initWithClass, modelClass);
}

bool isReadonlyByName(_ZRObjectModelCache* cache, NSString* name) {
    return cast<_ZRObjectPropertyCache>(cache->propertiesMap()->objectForKey(name))->isReadonly();
}

TEST(ObjectModelCache, listsTheClassFirstThenItsAncestorsInDeclarationOrder) {
    const auto cache = cacheOf(CachedQuote::classObject());
    EXPECT_EQ(listed(cache), "price rank(r) code hidden symbol code(r) ");
    EXPECT_EQ(cache->name()->utf8(), "CachedQuote");
    EXPECT_EQ(cache->modelClass(), CachedQuote::classObject());
    EXPECT_EQ(listed(cacheOf(NoProperties::classObject())), "symbol code(r) ");
}

TEST(ObjectModelCache, theMostDistantAncestorsRecordAnswersByName) {
    const auto cache = cacheOf(CachedQuote::classObject());
    EXPECT_EQ(cache->propertiesCache()->count(), 6U);
    EXPECT_EQ(cache->propertiesMap()->count(), 5U);
    EXPECT_TRUE(isReadonlyByName(cache, "code"_ns)) << "although the subclass made it writable";
    EXPECT_FALSE(isReadonlyByName(cache, "symbol"_ns));
    EXPECT_EQ(cache->propertiesMap()->objectForKey("code"_ns), cache->propertiesCache()->objectAtIndex(5));
}

TEST(ObjectModelCache, onlyAttributesBehindTheFirstMakeAPropertyReadOnly) {
    Class* const modelClass = ReadByHand::classObject();
    class_addProperty(modelClass, "typeOnly", {{"T", "i"}});
    class_addProperty(modelClass, "noAttributes", {});
    class_addProperty(modelClass, "firstIsR", {{"R", ""}, {"T", "i"}});
    class_addProperty(modelClass, "lastIsR", {{"T", "i"}, {"N", ""}, {"R", ""}});
    class_addProperty(modelClass, "valueIsR", {{"T", "i"}, {"V", "R"}});
    class_addProperty(modelClass, "not\xFFtext", {{"T", "i"}});
    EXPECT_EQ(listed(cacheOf(modelClass)), "typeOnly noAttributes firstIsR lastIsR(r) valueIsR ");
}

TEST(ObjectModelCache, nullAndTheRootGiveEmptyTables) {
    const auto ofNull = cacheOf(nullptr);
    EXPECT_EQ(ofNull->name(), nullptr);
    EXPECT_EQ(ofNull->modelClass(), nullptr);
    EXPECT_EQ(ofNull->propertiesCache()->count(), 0U);
    EXPECT_EQ(ofNull->propertiesMap()->count(), 0U);
    EXPECT_EQ(cacheOf(NSObject::classObject())->propertiesCache()->count(), 0U);
    EXPECT_EQ(make<_ZRObjectModelCache>()->propertiesMap()->count(), 0U);
}

TEST(ObjectModelCache, everyFieldCanBeSet) {
    const auto cache = make<_ZRObjectModelCache>();
    const auto properties = NSMutableArray::array();
    const auto map = NSMutableDictionary::dictionary();
    cache->setPropertiesCache(properties);
    cache->setPropertiesMap(map);
    cache->setName("x"_ns);
    cache->setModelClass(CachedBase::classObject());
    EXPECT_EQ(cache->propertiesCache(), properties);
    EXPECT_EQ(cache->propertiesMap(), map);
    EXPECT_EQ(send<Ref<NSString>>(cache, "name"_sel), "x"_ns);
    EXPECT_EQ(send<Class*>(cache, "modelClass"_sel), CachedBase::classObject());
    cache->setPropertiesCache(nullptr);
    EXPECT_NE(cache->propertiesCache(), nullptr);
    const auto record = make<_ZRObjectPropertyCache>();
    EXPECT_EQ(record->property(), nullptr);
    EXPECT_FALSE(record->isReadonly());
}

TEST(ObjectModelCacheManager, keepsOneTableForEveryClassName) {
    auto* const manager = _ZRObjectModelCacheManager::sharedManager();
    EXPECT_EQ(manager, _ZRObjectModelCacheManager::sharedManager());
    const auto cache = manager->modelCacheOfClass(CachedQuote::classObject());
    EXPECT_EQ(cache, manager->modelCacheOfClass(CachedQuote::classObject()));
    EXPECT_EQ(manager->modelCaches()->objectForKey("CachedQuote"_ns), cache);
    EXPECT_NE(cache, manager->modelCacheOfClass(CachedBase::classObject()));
    EXPECT_EQ(send<id>(_ZRObjectModelCacheManager::classObject(), "sharedManager"_sel), manager);
}

TEST(ObjectModelCacheManager, neverSeesPropertiesAddedLater) {
    auto* const manager = _ZRObjectModelCacheManager::sharedManager();
    EXPECT_EQ(listed(manager->modelCacheOfClass(GrownLater::classObject())), "early ");
    ASSERT_TRUE(class_addProperty(GrownLater::classObject(), "late", {{"T", "i"}}));
    EXPECT_EQ(listed(manager->modelCacheOfClass(GrownLater::classObject())), "early ");
    EXPECT_EQ(listed(cacheOf(GrownLater::classObject())), "early late ");
}

TEST(ObjectModelCacheManager, aNullClassIsAnsweredButNotKept) {
    auto* const manager = _ZRObjectModelCacheManager::sharedManager();
    const NSUInteger before = manager->modelCaches()->count();
    const auto cache = manager->modelCacheOfClass(nullptr);
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(cache->propertiesCache()->count(), 0U);
    EXPECT_EQ(manager->modelCaches()->count(), before);
}

} // namespace
