#include <zrbasic/platform/foundation/enumerator.h>

#include "checks.h"

#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_set.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

Ref<NSMutableArray> letters() {
    return NSMutableArray::arrayWithObjects({"a"_ns, "b"_ns, "c"_ns});
}

/// What a walk delivers: descriptions with a blank behind each, then "!" when it raises. `change` runs in every pass
/// with the number of the pass, from 1 on.
template <class Collection, class Change>
std::string walk(const Collection& collection, Change change) {
    std::string log;
    int pass = 0;
    try {
        for (const id& object : collection) {
            log += object->description()->utf8() + ' ';
            change(++pass);
        }
    } catch (const NSException& exception) {
        log += exception.name() == NSGenericException ? "!" : "?";
    }
    return log;
}

constexpr auto unchanged = [](int) {};

TEST(Enumeration, deliversEveryObjectInOrder) {
    EXPECT_EQ(walk(array({"a"_ns, "b"_ns, "c"_ns}), unchanged), "a b c ");
    EXPECT_EQ(walk(array({"a"_ns}), unchanged), "a ");
    EXPECT_EQ(walk(array({}), unchanged), "");
    EXPECT_EQ(walk(letters(), unchanged), "a b c ");
    EXPECT_EQ(walk(dictionary({{"x"_ns, box(1)}, {"a"_ns, box(2)}}), unchanged), "x a ");
    EXPECT_EQ(walk(NSSet::setWithObjects({"s"_ns, "r"_ns, "s"_ns}), unchanged), "s r ");
}

TEST(Enumeration, aNullCollectionHasNothing) {
    EXPECT_EQ(walk(Ref<NSArray>(), unchanged), "");
    EXPECT_EQ(walk(Ref<NSMutableArray>(), unchanged), "");
    EXPECT_EQ(walk(Ref<NSDictionary>(), unchanged), "");
    EXPECT_EQ(walk(static_cast<NSSet*>(nullptr), unchanged), "");
}

TEST(Enumeration, takesReferencesPointersAndObjects) {
    const Ref<NSMutableArray> list = letters();
    EXPECT_EQ(walk(list, unchanged), "a b c ");
    EXPECT_EQ(walk(list.get(), unchanged), "a b c ");
    EXPECT_EQ(walk(*list, unchanged), "a b c ");
    std::string borrowed;
    for (NSObject* const object : *list) {
        borrowed += object->description()->utf8();
    }
    EXPECT_EQ(borrowed, "abc");
}

TEST(EnumerationGuard, aChangeIsNoticedBeforeTheNextObject) {
    const Ref<NSMutableArray> list = letters();
    EXPECT_EQ(walk(list, [&](int) { list->addObject("x"_ns); }), "a !");
    EXPECT_EQ(walk(list, [&](int) { list->removeLastObject(); }), "a !");
    EXPECT_EQ(walk(list, [&](int pass) { pass == 2 ? list->insertObject_atIndex("y"_ns, 0) : void(); }), "a b !");
    EXPECT_EQ(walk(list, [&](int) { list->removeAllObjects(); }), "y !");
    const Ref<NSMutableArray> again = letters();
    EXPECT_EQ(walk(again, [&](int) { again->exchangeObjectAtIndex_withObjectAtIndex(0, 1); }), "a !");
}

TEST(EnumerationGuard, replacingCountsAsAChange) {
    const Ref<NSMutableArray> list = letters();
    EXPECT_EQ(walk(list, [&](int) { list->replaceObjectAtIndex_withObject(2, "x"_ns); }), "a !");
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, box(1)}, {"b"_ns, box(2)}});
    EXPECT_EQ(walk(entries, [&](int) { entries->setObject_forKey(box(1), "a"_ns); }), "a !");
    const Ref<NSMutableSet> members = NSMutableSet::setWithObjects({"a"_ns, "b"_ns});
    // Adding what is there already changes nothing.
    EXPECT_EQ(walk(members, [&](int) { members->addObject("a"_ns); }), "a b ");
}

TEST(EnumerationGuard, theLastPassMayRemoveButNotAdd) {
    const Ref<NSMutableArray> list = letters();
    EXPECT_EQ(walk(list, [&](int pass) { pass == 3 ? list->removeLastObject() : void(); }), "a b c ");
    EXPECT_EQ(walk(list, [&](int pass) { pass == 2 ? list->addObject("z"_ns) : void(); }), "a b !");
    const Ref<NSMutableArray> one = NSMutableArray::arrayWithObject("a"_ns);
    EXPECT_EQ(walk(one, [&](int) { one->replaceObjectAtIndex_withObject(0, "b"_ns); }), "a ");
    EXPECT_EQ(walk(one, [&](int) { one->removeAllObjects(); }), "b ");
    EXPECT_EQ(one->count(), 0U);
}

TEST(EnumerationGuard, shrinkingBelowTheWalkIsNoticed) {
    // The walk stands at the second of three when the array becomes too short for a third.
    const Ref<NSMutableArray> list = letters();
    EXPECT_EQ(walk(list, [&](int pass) { pass == 2 ? list->setArray(array({"x"_ns})) : void(); }), "a b !");
    const Ref<NSMutableDictionary> entries =
        NSMutableDictionary::fromEntries({{"a"_ns, box(1)}, {"b"_ns, box(2)}, {"c"_ns, box(3)}});
    EXPECT_EQ(walk(entries, [&](int pass) { pass == 2 ? entries->removeObjectForKey("c"_ns) : void(); }), "a b !");
}

TEST(EnumerationGuard, watchesDictionariesAndSets) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, box(1)}, {"b"_ns, box(2)}});
    EXPECT_EQ(walk(entries, [&](int) { entries->setObject_forKey(box(3), "c"_ns); }), "a !");
    EXPECT_EQ(walk(entries, [&](int pass) { pass == 3 ? entries->removeObjectForKey("a"_ns) : void(); }), "a b c ");
    EXPECT_EQ(walk(entries, [&](int pass) { pass == 2 ? entries->setObject_forKey(box(3), "d"_ns) : void(); }),
              "b c !");
    const Ref<NSMutableSet> members = NSMutableSet::setWithObjects({"a"_ns, "b"_ns});
    EXPECT_EQ(walk(members, [&](int) { members->removeObject("b"_ns); }), "a !");
    EXPECT_EQ(walk(members, [&](int) { members->addObject("c"_ns); }), "a !");
}

TEST(EnumerationGuard, namesTheCollection) {
    const Ref<NSMutableArray> list = letters();
    const std::string message = raised([&] {
        for (const id& object : list) {
            list->removeObject(object);
        }
    });
    EXPECT_TRUE(message.starts_with("NSGenericException: *** Collection <__NSArrayM: 0x")) << message;
    EXPECT_TRUE(message.ends_with("> was mutated while being enumerated.")) << message;
    // The object was delivered, and removed, before the guard spoke.
    EXPECT_EQ(list->count(), 2U);
}

TEST(EnumerationGuard, indexWalksHaveNone) {
    const Ref<NSMutableArray> list = letters();
    std::string log;
    for (NSUInteger i = 0; i < list->count(); ++i) {
        log += list->objectAtIndex(i)->description()->utf8();
        if (i == 0) {
            list->removeObjectAtIndex(0);
        }
    }
    EXPECT_EQ(log, "ac");
}

TEST(EnumerationLifetime, theWalkKeepsCollectionAndCurrentObject) {
    Ref<NSMutableArray> list = NSMutableArray::array();
    list->addObject(NSString::fromUtf8("only"));
    Weak<NSObject> watched(list);
    std::string log;
    for (NSObject* const object : *list) {
        list->removeAllObjects();
        list = nullptr;
        EXPECT_FALSE(watched.expired());
        log += object->description()->utf8();
    }
    EXPECT_EQ(log, "only");
    EXPECT_TRUE(watched.expired());
}

TEST(Enumerator, handsOutOneByOne) {
    const Ref<NSEnumerator> objects = array({"a"_ns, "b"_ns})->objectEnumerator();
    EXPECT_EQ(objects->nextObject()->description()->utf8(), "a");
    EXPECT_EQ(send<id>(objects, "nextObject"_sel)->description()->utf8(), "b");
    EXPECT_FALSE(objects->nextObject());
    EXPECT_FALSE(objects->nextObject());
    EXPECT_EQ(objects->allObjects()->count(), 0U);
    EXPECT_FALSE(array({})->objectEnumerator()->nextObject());
}

TEST(Enumerator, givesWhatIsLeft) {
    const Ref<NSEnumerator> objects = array({"a"_ns, "b"_ns, "c"_ns})->objectEnumerator();
    static_cast<void>(objects->nextObject());
    EXPECT_EQ(objects->allObjects()->componentsJoinedByString(" "_ns)->utf8(), "b c");
    EXPECT_FALSE(objects->nextObject());
    const Ref<NSDictionary> entries = dictionary({{"x"_ns, box(1)}, {"y"_ns, box(2)}});
    EXPECT_EQ(entries->keyEnumerator()->allObjects()->componentsJoinedByString(" "_ns)->utf8(), "x y");
    EXPECT_EQ(entries->objectEnumerator()->allObjects()->componentsJoinedByString(" "_ns)->utf8(), "1 2");
    EXPECT_EQ(NSSet::setWithObject("m"_ns)->objectEnumerator()->allObjects()->count(), 1U);
    EXPECT_EQ(make<NSEnumerator>()->allObjects()->count(), 0U);
}

TEST(Enumerator, isGuardedFromItsFirstObjectOn) {
    const Ref<NSMutableArray> list = letters();
    const Ref<NSEnumerator> objects = list->objectEnumerator();
    list->addObject("d"_ns);
    EXPECT_EQ(objects->nextObject()->description()->utf8(), "a");
    list->addObject("e"_ns);
    EXPECT_EQ(raisedName([&] { static_cast<void>(objects->nextObject()); }), NSGenericException);
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, box(1)}, {"b"_ns, box(2)}});
    const Ref<NSEnumerator> keys = entries->keyEnumerator();
    static_cast<void>(keys->nextObject());
    entries->removeAllObjects();
    EXPECT_EQ(raisedName([&] { static_cast<void>(keys->nextObject()); }), NSGenericException);
}

TEST(Enumerator, backwardsMayRemoveWhatItHasPassed) {
    const Ref<NSMutableArray> list = letters();
    const Ref<NSEnumerator> objects = list->reverseObjectEnumerator();
    std::string log;
    while (const id object = objects->nextObject()) {
        log += object->description()->utf8();
        list->removeObject(object);
    }
    EXPECT_EQ(log, "cba");
    EXPECT_EQ(list->count(), 0U);
    const Ref<NSMutableArray> shrinking = letters();
    const Ref<NSEnumerator> rest = shrinking->reverseObjectEnumerator();
    shrinking->removeObjectsInRange({1, 2});
    EXPECT_EQ(rest->nextObject()->description()->utf8(), "a");
    EXPECT_FALSE(rest->nextObject());
}

TEST(Enumerator, keepsItsCollection) {
    Ref<NSMutableArray> list = letters();
    const Ref<NSEnumerator> forwards = list->objectEnumerator();
    const Ref<NSEnumerator> backwards = list->reverseObjectEnumerator();
    Weak<NSObject> watched(list);
    list = nullptr;
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(forwards->nextObject()->description()->utf8(), "a");
    EXPECT_EQ(backwards->nextObject()->description()->utf8(), "c");
}

TEST(BlockEnumeration, stopsWhenToldTo) {
    std::string log;
    array({"a"_ns, "b"_ns, "c"_ns})->enumerateObjectsUsingBlock([&](NSObject* object, NSUInteger index, bool& stop) {
        log += std::to_string(index) + object->description()->utf8();
        stop = index == 1;
    });
    EXPECT_EQ(log, "0a1b");
    log.clear();
    dictionary({{"k"_ns, box(1)}, {"l"_ns, box(2)}})
        ->enumerateKeysAndObjectsUsingBlock([&](NSObject* key, NSObject* value, bool& stop) {
            log += key->description()->utf8() + value->description()->utf8();
            stop = true;
        });
    EXPECT_EQ(log, "k1");
    log.clear();
    NSSet::setWithObjects({"m"_ns, "n"_ns})->enumerateObjectsUsingBlock([&](NSObject* object, bool&) {
        log += object->description()->utf8();
    });
    EXPECT_EQ(log, "mn");
}

TEST(BlockEnumeration, withoutABlockThereIsNoWalk) {
    letters()->enumerateObjectsUsingBlock(nullptr);
    dictionary({{"k"_ns, box(1)}})->enumerateKeysAndObjectsUsingBlock(nullptr);
    NSSet::setWithObject("m"_ns)->enumerateObjectsUsingBlock(nullptr);
    array({})->enumerateObjectsUsingBlock([](NSObject*, NSUInteger, bool&) { ADD_FAILURE() << "nothing to visit"; });
}

TEST(BlockEnumeration, isGuardedAndPassesExceptionsOn) {
    const Ref<NSMutableArray> list = letters();
    EXPECT_EQ(raisedName([&] {
                  list->enumerateObjectsUsingBlock([&](NSObject*, NSUInteger, bool&) { list->addObject("x"_ns); });
              }),
              NSGenericException);
    EXPECT_EQ(list->count(), 4U);
    EXPECT_EQ(raised([&] {
                  list->enumerateObjectsUsingBlock(
                      [](NSObject*, NSUInteger, bool&) { NSException::raise(NSRangeException, "mine"); });
              }),
              "NSRangeException: mine");
}

TEST(BlockEnumeration, theValueOutlivesItsRemoval) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    entries->setObject_forKey(NSString::fromUtf8("value"), NSString::fromUtf8("key"));
    std::string log;
    entries->enumerateKeysAndObjectsUsingBlock([&](NSObject* key, NSObject* value, bool&) {
        entries->removeAllObjects();
        log += key->description()->utf8() + '=' + value->description()->utf8();
    });
    EXPECT_EQ(log, "key=value");
}

} // namespace

} // namespace zr
