#include <zrbasic/platform/foundation/dictionary.h>

#include "checks.h"
#include "listing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>

namespace zr {

namespace {

using test::listing;
using test::raised;
using test::raisedName;

Ref<NSDictionary> prices() {
    return dictionary({{"gold"_ns, box(12.5)}, {"silver"_ns, box(3)}, {"none"_ns, NSNull::null()}});
}

/// A key whose hash is whatever it was made with; equal to those of the same number.
class Key : public NSObject {
    ZR_OBJECT(Key, NSObject)

  public:
    id initWithNumber_hash(int number, NSUInteger hash) {
        m_number = number;
        m_hash = hash;
        return id(this);
    }
    [[nodiscard]] bool isEqual(NSObject* other) const override {
        const Key* const key = cast<Key>(other);
        return key && key->m_number == m_number;
    }
    [[nodiscard]] NSUInteger hash() const override { return m_hash; }
    [[nodiscard]] id copy() const override { return id(const_cast<Key*>(this)); }

  private:
    int m_number = 0;
    NSUInteger m_hash = 0;
};

id collidingKey(int number) {
    return make<Key>(&Key::initWithNumber_hash, number, NSUInteger(7));
}

TEST(DictionaryMaking, entriesAreListedInOrder) {
    EXPECT_EQ(listing(prices()), "gold=12.5 silver=3 none=<null>");
    EXPECT_EQ(prices()->allKeys()->componentsJoinedByString(" "_ns)->utf8(), "gold silver none");
    EXPECT_EQ(prices()->allValues()->componentsJoinedByString(" "_ns)->utf8(), "12.5 3 <null>");
    EXPECT_EQ(prices()->count(), 3U);
    EXPECT_EQ(dictionary({})->count(), 0U);
    EXPECT_EQ(dictionary({})->allKeys()->count(), 0U);
}

TEST(DictionaryMaking, kindsAndSingletons) {
    EXPECT_EQ(dictionary({}).get(), NSDictionary::dictionary().get());
    EXPECT_EQ(make<NSDictionary>().get(), NSDictionary::dictionary().get());
    EXPECT_STREQ(object_getClassName(prices()), "__NSDictionaryI");
    EXPECT_STREQ(object_getClassName(make<NSMutableDictionary>()), "__NSDictionaryM");
    EXPECT_TRUE(make<NSMutableDictionary>()->isKindOfClass(NSDictionary::classObject()));
    EXPECT_EQ(cast<NSMutableDictionary>(prices().get()), nullptr);
}

TEST(DictionaryMaking, ofEqualKeysTheLastValueStaysInTheFirstPlace) {
    EXPECT_EQ(listing(dictionary({{"a"_ns, box(1)}, {"b"_ns, box(2)}, {"a"_ns, box(3)}})), "a=3 b=2");
    EXPECT_EQ(listing(dictionary({{box(1), "x"_ns}, {box(1.0), "y"_ns}, {box(true), "z"_ns}})), "1=z");
    EXPECT_EQ(listing(NSDictionary::dictionaryWithObjects_forKeys(array({box(1), box(2)}), array({"a"_ns, "a"_ns}))),
              "a=2");
}

TEST(DictionaryMaking, fromListsOfObjectsAndKeys) {
    EXPECT_EQ(listing(NSDictionary::dictionaryWithObject_forKey(box(1), "a"_ns)), "a=1");
    EXPECT_EQ(listing(NSDictionary::dictionaryWithObjects_forKeys(array({box(1), box(2)}), array({"a"_ns, "b"_ns}))),
              "a=1 b=2");
    EXPECT_EQ(NSDictionary::dictionaryWithObjects_forKeys(nullptr, nullptr)->count(), 0U);
    EXPECT_EQ(NSDictionary::dictionaryWithDictionary(nullptr)->count(), 0U);
    EXPECT_EQ(listing(NSDictionary::dictionaryWithDictionary(prices())), listing(prices()));
    EXPECT_EQ(listing(make<NSDictionary>(&NSDictionary::initWithDictionary, prices())), listing(prices()));
}

TEST(DictionaryMaking, unequalListsRaise) {
    EXPECT_NE(raised([] {
                  static_cast<void>(NSDictionary::dictionaryWithObjects_forKeys(array({box(1)}), array({})));
              }).find("count of objects (1) differs from count of keys (0)"),
              std::string::npos);
    EXPECT_EQ(
        raisedName([] { static_cast<void>(NSDictionary::dictionaryWithObjects_forKeys(nullptr, array({"a"_ns}))); }),
        NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] {
                  static_cast<void>(NSMutableDictionary::dictionaryWithObjects_forKeys(array({"a"_ns}), nullptr));
              }),
              NSInvalidArgumentException);
}

TEST(DictionaryMaking, nullKeysAndValuesRaise) {
    EXPECT_EQ(raised([] {
                  static_cast<void>(dictionary({{"a"_ns, box(1)}, {"b"_ns, nullptr}}));
              }),
              "NSInvalidArgumentException: *** -[__NSPlaceholderDictionary initWithObjects:forKeys:count:]: attempt to "
              "insert nil object from objects[1]");
    EXPECT_EQ(raised([] {
                  static_cast<void>(dictionary({{nullptr, box(1)}}));
              }),
              "NSInvalidArgumentException: *** -[__NSPlaceholderDictionary initWithObjects:forKeys:count:]: attempt to "
              "insert nil object from keys[0]");
    EXPECT_EQ(raisedName([] { static_cast<void>(NSDictionary::dictionaryWithObject_forKey(nullptr, "a"_ns)); }),
              NSInvalidArgumentException);
    EXPECT_EQ(dictionary({{NSNull::null(), NSNull::null()}})->count(), 1U);
}

TEST(DictionaryReading, byEqualKey) {
    const Ref<NSDictionary> entries = prices();
    EXPECT_TRUE(box(12.5)->isEqual(entries->objectForKey("gold"_ns)));
    EXPECT_TRUE(box(12.5)->isEqual(entries->objectForKey(NSString::fromUtf8("gold"))));
    EXPECT_EQ(entries->objectForKey("none"_ns).get(), NSNull::null());
    EXPECT_FALSE(entries->objectForKey("copper"_ns));
    EXPECT_EQ(entries->objectForKeyedSubscript("silver"_ns).get(), entries->peek("silver"_ns));
    EXPECT_TRUE(dictionary({{box(1), "x"_ns}})->objectForKey(box(true)));
    EXPECT_FALSE(dictionary({{box(1), "x"_ns}})->objectForKey("1"_ns));
}

TEST(DictionaryReading, theNullKeyFindsNothing) {
    EXPECT_FALSE(prices()->objectForKey(nullptr));
    EXPECT_FALSE(prices()->objectForKeyedSubscript(nullptr));
    EXPECT_EQ(prices()->peek(nullptr), nullptr);
    EXPECT_FALSE(dictionary({})->objectForKey(nullptr));
    EXPECT_FALSE(dictionary({{NSNull::null(), box(1)}})->objectForKey(nullptr));
    EXPECT_TRUE(dictionary({{NSNull::null(), box(1)}})->objectForKey(NSNull::null()));
}

TEST(DictionaryReading, keysOfAValue) {
    const Ref<NSDictionary> entries = dictionary({{"a"_ns, box(1)}, {"b"_ns, box(2)}, {"c"_ns, box(1.0)}});
    EXPECT_EQ(entries->allKeysForObject(box(1))->componentsJoinedByString(" "_ns)->utf8(), "a c");
    EXPECT_EQ(entries->allKeysForObject("1"_ns)->count(), 0U);
    EXPECT_EQ(entries->allKeysForObject(nullptr)->count(), 0U);
    EXPECT_EQ(dictionary({})->allKeysForObject(box(1))->count(), 0U);
}

TEST(DictionaryEquality, orderAndMutabilityDoNotMatter) {
    const Ref<NSDictionary> ab = dictionary({{"a"_ns, box(1)}, {"b"_ns, box(2)}});
    const Ref<NSDictionary> ba = dictionary({{"b"_ns, box(2.0)}, {"a"_ns, box(true)}});
    EXPECT_TRUE(ab->isEqual(ba));
    EXPECT_TRUE(ab->isEqual(ba->mutableCopy()));
    EXPECT_TRUE(cast<NSDictionary>(ba->mutableCopy())->isEqualToDictionary(ab));
    EXPECT_EQ(ab->hash(), ba->hash());
    EXPECT_EQ(ab->hash(), 2U);
}

TEST(DictionaryEquality, keysValuesAndKindDo) {
    const Ref<NSDictionary> one = dictionary({{"a"_ns, box(1)}});
    EXPECT_FALSE(one->isEqual(dictionary({{"a"_ns, box(2)}})));
    EXPECT_FALSE(one->isEqual(dictionary({{"b"_ns, box(1)}})));
    EXPECT_FALSE(one->isEqual(dictionary({})));
    EXPECT_FALSE(one->isEqual(nullptr));
    EXPECT_FALSE(one->isEqualToDictionary(nullptr));
    EXPECT_FALSE(one->isEqual(array({"a"_ns})));
    EXPECT_FALSE(dictionary({})->isEqual(NSNull::null()));
}

TEST(DictionaryDescription, stringKeysAscend) {
    EXPECT_EQ(dictionary({})->description()->utf8(), "{\n}");
    EXPECT_EQ(dictionary({{"b"_ns, box(2)}, {"a"_ns, "x y"_ns}})->description()->utf8(),
              "{\n    a = \"x y\";\n    b = 2;\n}");
    EXPECT_EQ(dictionary({{"zr_a"_ns, NSNull::null()}})->description()->utf8(), "{\n    \"zr_a\" = \"<null>\";\n}");
    EXPECT_EQ(dictionary({{box(2), "x"_ns}, {box(1), "y"_ns}})->description()->utf8(), "{\n    2 = x;\n    1 = y;\n}");
}

TEST(DictionaryDescription, indentsNestedCollections) {
    const Ref<NSDictionary> nested =
        dictionary({{"list"_ns, array({"a"_ns, "b"_ns})}, {"inner"_ns, dictionary({{"k"_ns, box(1)}})}});
    EXPECT_EQ(nested->description()->utf8(),
              "{\n"
              "    inner =     {\n"
              "        k = 1;\n"
              "    };\n"
              "    list =     (\n"
              "        a,\n"
              "        b\n"
              "    );\n"
              "}");
}

TEST(DictionaryCopying, immutableOnesAreTheirOwnCopies) {
    const Ref<NSDictionary> entries = prices();
    EXPECT_EQ(entries->copy().get(), entries.get());
    const Ref<NSMutableDictionary> changing(cast<NSMutableDictionary>(entries->mutableCopy()));
    ASSERT_TRUE(changing);
    changing->removeObjectForKey("gold"_ns);
    EXPECT_EQ(entries->count(), 3U);
    const id frozen = changing->copy();
    changing->removeAllObjects();
    EXPECT_EQ(listing(Ref<NSDictionary>(cast<NSDictionary>(frozen))), "silver=3 none=<null>");
    EXPECT_EQ(cast<NSMutableDictionary>(frozen), nullptr);
}

TEST(DictionaryKeys, areCopiedWhenTheyComeIn) {
    const Ref<NSMutableString> key = NSMutableString::stringWithString("a"_ns);
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    entries->setObject_forKey(box(1), key);
    const Ref<NSDictionary> literal = dictionary({{key, box(1)}});
    key->appendString("b"_ns);
    EXPECT_EQ(listing(entries), "a=1");
    EXPECT_EQ(listing(literal), "a=1");
    EXPECT_FALSE(entries->objectForKey(key));
    // Values are kept as they are.
    entries->setObject_forKey(key, "value"_ns);
    EXPECT_EQ(entries->objectForKey("value"_ns).get(), key.get());
}

TEST(DictionaryKeys, onesThatCannotBeCopiedRaiseAndChangeNothing) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    const Ref<NSObject> odd = make<NSObject>();
    EXPECT_NE(raised([&] { entries->setObject_forKey(box(1), odd); }).find("copyWithZone:]: unrecognized selector"),
              std::string::npos);
    EXPECT_EQ(raisedName([&] { static_cast<void>(dictionary({{odd, box(1)}})); }), NSInvalidArgumentException);
    EXPECT_EQ(entries->count(), 0U);
    EXPECT_FALSE(entries->objectForKey(odd));
}

TEST(MutableDictionary, storesReplacesAndRemoves) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    entries->setObject_forKey(box(1), "a"_ns);
    entries->setObject_forKey(box(2), "b"_ns);
    entries->setObject_forKey(box(3), "a"_ns);
    EXPECT_EQ(listing(entries), "a=3 b=2");
    entries->removeObjectForKey("a"_ns);
    entries->removeObjectForKey("a"_ns);
    EXPECT_EQ(listing(entries), "b=2");
    entries->setObject_forKey(box(4), "a"_ns);
    EXPECT_EQ(listing(entries), "b=2 a=4");
    entries->removeObjectsForKeys(array({"a"_ns, "z"_ns}));
    entries->removeObjectsForKeys(nullptr);
    EXPECT_EQ(listing(entries), "b=2");
    entries->removeAllObjects();
    EXPECT_EQ(entries->count(), 0U);
}

TEST(MutableDictionary, nullRaises) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, box(1)}});
    EXPECT_EQ(raised([&] { entries->setObject_forKey(nullptr, "a"_ns); }),
              "NSInvalidArgumentException: *** -[__NSDictionaryM setObject:forKey:]: object cannot be nil (key: a)");
    EXPECT_EQ(raised([&] { entries->setObject_forKey(box(1), nullptr); }),
              "NSInvalidArgumentException: *** -[__NSDictionaryM setObject:forKey:]: key cannot be nil");
    EXPECT_EQ(raised([&] { entries->removeObjectForKey(nullptr); }),
              "NSInvalidArgumentException: *** -[__NSDictionaryM removeObjectForKey:]: key cannot be nil");
    EXPECT_EQ(raised([&] { entries->setObject_forKeyedSubscript(box(1), nullptr); }),
              "NSInvalidArgumentException: *** -[__NSDictionaryM setObject:forKeyedSubscript:]: key cannot be nil");
    EXPECT_EQ(listing(entries), "a=1");
}

TEST(MutableDictionary, theSubscriptRemovesForNull) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, box(1)}, {"b"_ns, box(2)}});
    entries->setObject_forKeyedSubscript(nullptr, "a"_ns);
    entries->setObject_forKeyedSubscript(box(3), "c"_ns);
    entries->setObject_forKeyedSubscript(NSNull::null(), "b"_ns);
    EXPECT_EQ(listing(entries), "b=<null> c=3");
}

TEST(MutableDictionary, takesOtherDictionaries) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, box(1)}, {"b"_ns, box(2)}});
    entries->addEntriesFromDictionary(dictionary({{"b"_ns, NSNull::null()}, {"c"_ns, box(3)}}));
    EXPECT_EQ(listing(entries), "a=1 b=<null> c=3");
    entries->addEntriesFromDictionary(nullptr);
    entries->addEntriesFromDictionary(entries);
    entries->setDictionary(entries);
    EXPECT_EQ(listing(entries), "a=1 b=<null> c=3");
    entries->setDictionary(dictionary({{"x"_ns, box(9)}}));
    EXPECT_EQ(listing(entries), "x=9");
    entries->setDictionary(nullptr);
    EXPECT_EQ(entries->count(), 0U);
}

TEST(MutableDictionary, capacityIsOnlyAHint) {
    const NSUInteger huge = std::numeric_limits<NSUInteger>::max();
    EXPECT_EQ(NSMutableDictionary::dictionaryWithCapacity(huge)->count(), 0U);
    EXPECT_EQ(NSMutableDictionary::dictionaryWithCapacity(0)->count(), 0U);
    const Ref<NSMutableDictionary> entries = make<NSMutableDictionary>(&NSMutableDictionary::initWithCapacity, 2);
    entries->addEntriesFromDictionary(prices());
    EXPECT_EQ(entries->count(), 3U);
}

TEST(MutableDictionary, answersMessages) {
    const id entries = send<id>(NSMutableDictionary::classObject(), "dictionary"_sel);
    send<void>(entries, "setObject:forKey:"_sel, box(1), "a"_ns);
    send<void>(entries, "setObject:forKeyedSubscript:"_sel, box(2), "b"_ns);
    EXPECT_EQ(send<NSUInteger>(entries, "count"_sel), 2U);
    EXPECT_TRUE(send<id>(entries, "objectForKey:"_sel, "a"_ns));
    EXPECT_EQ(send<Ref<NSArray>>(entries, "allKeys"_sel)->count(), 2U);
    EXPECT_FALSE(prices()->respondsToSelector("setObject:forKey:"_sel));
    EXPECT_EQ(raisedName([] { send<void>(prices(), "setObject:forKey:"_sel, box(1), "a"_ns); }),
              NSInvalidArgumentException);
}

/// Looks a key up in a dictionary at the moment when it ends.
class Farewell : public NSObject {
    ZR_OBJECT(Farewell, NSObject)

  public:
    ~Farewell() override {
        if (entries) {
            *seen = std::to_string(entries->count()) + (entries->objectForKey("k"_ns) ? " present" : " absent");
        }
    }
    NSDictionary* entries = nullptr;
    std::string* seen = nullptr;
};

TEST(MutableDictionary, aValueEndsWhenTheDictionaryStandsAsItWillBe) {
    std::string seen;
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    const auto put = [&] {
        const Ref<Farewell> value = make<Farewell>();
        value->entries = entries;
        value->seen = &seen;
        entries->setObject_forKey(value, "k"_ns);
    };
    put();
    entries->setObject_forKey(box(1), "k"_ns);
    EXPECT_EQ(seen, "1 present");
    put();
    entries->removeObjectForKey("k"_ns);
    EXPECT_EQ(seen, "0 absent");
    put();
    seen.clear();
    entries->removeAllObjects();
    EXPECT_EQ(seen, "0 absent");
    put();
    seen.clear();
    entries->setDictionary(dictionary({{"k"_ns, box(1)}, {"l"_ns, box(1)}}));
    EXPECT_EQ(seen, "2 present");
}

TEST(DictionaryTable, equalHashesAreToldApart) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    for (int i = 0; i < 100; ++i) {
        entries->setObject_forKey(box(i), collidingKey(i));
    }
    EXPECT_EQ(entries->count(), 100U);
    for (int i = 0; i < 100; i += 2) {
        entries->removeObjectForKey(collidingKey(i));
    }
    EXPECT_EQ(entries->count(), 50U);
    for (int i = 0; i < 100; ++i) {
        SCOPED_TRACE(i);
        const id found = entries->objectForKey(collidingKey(i));
        EXPECT_EQ(found ? cast<NSNumber>(found)->intValue() : -1, i % 2 == 0 ? -1 : i);
    }
}

TEST(DictionaryTable, agreesWithAMapThroughAnyHistory) {
    std::mt19937 random(11);
    for (const int range : {4, 9, 40, 3000}) {
        SCOPED_TRACE(range);
        const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
        std::map<int, int> model;
        for (int step = 0; step < 12000; ++step) {
            const int key = static_cast<int>(random() % static_cast<unsigned>(range));
            const Ref<NSString> name = NSString::fromUtf8(std::to_string(key));
            if (random() % 5 < 3) {
                entries->setObject_forKey(box(step), name);
                model[key] = step;
            } else {
                entries->removeObjectForKey(name);
                model.erase(key);
            }
            ASSERT_EQ(entries->count(), model.size());
        }
        std::map<int, int> walked;
        for (const id& key : entries) {
            walked[cast<NSString>(key)->intValue()] = cast<NSNumber>(entries->objectForKey(key))->intValue();
        }
        EXPECT_EQ(walked, model);
        for (int key = 0; key < range; ++key) {
            const id found = entries->objectForKey(NSString::fromUtf8(std::to_string(key)));
            ASSERT_EQ(found != nullptr, model.contains(key));
        }
    }
}

TEST(DictionaryTable, orderSurvivesManyRemovals) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    for (int i = 0; i < 1000; ++i) {
        entries->setObject_forKey(box(i), box(i));
    }
    for (int i = 0; i < 990; ++i) {
        entries->removeObjectForKey(box(i));
    }
    for (int i = 2000; i < 2003; ++i) {
        entries->setObject_forKey(box(i), box(i));
    }
    EXPECT_EQ(entries->allKeys()->componentsJoinedByString(" "_ns)->utf8(),
              "990 991 992 993 994 995 996 997 998 999 2000 2001 2002");
}

} // namespace

} // namespace zr
