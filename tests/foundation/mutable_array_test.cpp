#include <zrbasic/platform/foundation/mutable_array.h>

#include "checks.h"

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

constexpr NSUInteger hugeIndex = std::numeric_limits<NSUInteger>::max();

std::string listing(const Ref<NSArray>& list) {
    return list ? list->componentsJoinedByString(" "_ns)->utf8() : "no array";
}

Ref<NSMutableArray> letters() {
    return NSMutableArray::arrayWithObjects({"a"_ns, "b"_ns, "c"_ns});
}

/// Writes down what an array looks like at the moment when an element of it ends.
class Farewell : public NSObject {
    ZR_OBJECT(Farewell, NSObject)

  public:
    ~Farewell() override {
        if (m_array) {
            *m_seen += std::to_string(m_array->count()) + ' ';
        }
    }
    void watch(NSMutableArray* watched, std::string* seen) {
        m_array = watched;
        m_seen = seen;
    }
    /// Whatever its class says of equality.
    [[nodiscard]] Ref<NSString> description() const override { return "farewell"_ns; }

  private:
    NSMutableArray* m_array = nullptr;
    std::string* m_seen = nullptr;
};

id farewell(NSMutableArray* watched, std::string& seen) {
    const Ref<Farewell> made = make<Farewell>();
    made->watch(watched, &seen);
    return made;
}

TEST(MutableArrayAdding, appendsAndInserts) {
    const Ref<NSMutableArray> list = NSMutableArray::array();
    list->addObject("b"_ns);
    list->insertObject_atIndex("a"_ns, 0);
    list->insertObject_atIndex("d"_ns, 2);
    list->insertObject_atIndex("c"_ns, 2);
    EXPECT_EQ(listing(list), "a b c d");
    list->addObjectsFromArray(array({"e"_ns, "f"_ns}));
    list->addObjectsFromArray(array({}));
    EXPECT_EQ(listing(list), "a b c d e f");
    list->addObject(NSNull::null());
    EXPECT_EQ(list->count(), 7U);
}

TEST(MutableArrayAdding, anArrayAddedToItselfDoubles) {
    const Ref<NSMutableArray> list = letters();
    list->addObjectsFromArray(list);
    EXPECT_EQ(listing(list), "a b c a b c");
    list->addObjectsFromArray(list);
    EXPECT_EQ(list->count(), 12U);
    list->setArray(list);
    EXPECT_EQ(list->count(), 12U);
}

TEST(MutableArrayAdding, nullRaisesExceptAsAWholeArray) {
    const Ref<NSMutableArray> list = letters();
    EXPECT_EQ(raised([&] { list->addObject(nullptr); }),
              "NSInvalidArgumentException: *** -[__NSArrayM insertObject:atIndex:]: object cannot be nil");
    EXPECT_EQ(raised([&] { list->insertObject_atIndex(nullptr, 9); }),
              "NSInvalidArgumentException: *** -[__NSArrayM insertObject:atIndex:]: object cannot be nil");
    EXPECT_EQ(raisedName([&] { list->replaceObjectAtIndex_withObject(0, nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { list->setObject_atIndexedSubscript(nullptr, 0); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { static_cast<void>(NSMutableArray::arrayWithObject(nullptr)); }),
              NSInvalidArgumentException);
    list->addObjectsFromArray(nullptr);
    EXPECT_EQ(listing(list), "a b c");
}

TEST(MutableArrayAdding, aPlaceBehindTheEndRaises) {
    const Ref<NSMutableArray> two = NSMutableArray::arrayWithObjects({"a"_ns, "b"_ns});
    EXPECT_EQ(raised([&] { two->insertObject_atIndex("x"_ns, 5); }),
              "NSRangeException: *** -[__NSArrayM insertObject:atIndex:]: index 5 beyond bounds [0 .. 1]");
    EXPECT_EQ(raised([] { NSMutableArray::array()->insertObject_atIndex("x"_ns, 1); }),
              "NSRangeException: *** -[__NSArrayM insertObject:atIndex:]: index 1 beyond bounds for empty array");
    EXPECT_EQ(raisedName([&] { two->insertObject_atIndex("x"_ns, hugeIndex); }), NSRangeException);
    two->insertObject_atIndex("c"_ns, 2);
    EXPECT_EQ(listing(two), "a b c");
}

TEST(MutableArrayRemoving, byIndexAndRange) {
    const Ref<NSMutableArray> list = NSMutableArray::arrayWithObjects({"a"_ns, "b"_ns, "c"_ns, "d"_ns, "e"_ns});
    list->removeObjectAtIndex(1);
    EXPECT_EQ(listing(list), "a c d e");
    list->removeLastObject();
    EXPECT_EQ(listing(list), "a c d");
    list->removeObjectsInRange({1, 2});
    EXPECT_EQ(listing(list), "a");
    list->removeObjectsInRange({1, 0});
    EXPECT_EQ(listing(list), "a");
    list->removeAllObjects();
    list->removeAllObjects();
    EXPECT_EQ(list->count(), 0U);
}

TEST(MutableArrayRemoving, badIndicesAndRangesRaise) {
    const Ref<NSMutableArray> list = letters();
    EXPECT_EQ(raised([&] { list->removeObjectAtIndex(3); }),
              "NSRangeException: *** -[__NSArrayM removeObjectAtIndex:]: index 3 beyond bounds [0 .. 2]");
    EXPECT_EQ(raised([&] {
                  list->removeObjectsInRange({2, 2});
              }),
              "NSRangeException: *** -[__NSArrayM removeObjectsInRange:]: range {2, 2} extends beyond bounds [0 .. 2]");
    EXPECT_EQ(raisedName([&] { list->removeObjectsInRange({1, hugeIndex}); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { list->exchangeObjectAtIndex_withObjectAtIndex(0, 3); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { list->exchangeObjectAtIndex_withObjectAtIndex(3, 0); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { list->replaceObjectAtIndex_withObject(3, "x"_ns); }), NSRangeException);
    EXPECT_EQ(listing(list), "a b c");
}

TEST(MutableArrayRemoving, theLastOfNoneIsNoMistake) {
    const Ref<NSMutableArray> list = NSMutableArray::array();
    list->removeLastObject();
    EXPECT_EQ(list->count(), 0U);
    EXPECT_FALSE(list->lastObject());
}

TEST(MutableArrayRemoving, everyEqualOccurrenceGoes) {
    const Ref<NSMutableArray> list = NSMutableArray::arrayWithObjects({"a"_ns, "b"_ns, "a"_ns, "c"_ns});
    list->removeObject(NSString::fromUtf8("a"));
    EXPECT_EQ(listing(list), "b c");
    const Ref<NSMutableArray> again = NSMutableArray::arrayWithObjects({"a"_ns, "b"_ns, "a"_ns, "c"_ns});
    again->removeObjectsInArray(array({"a"_ns}));
    EXPECT_EQ(listing(again), "b c");
    again->removeObjectsInArray(again);
    EXPECT_EQ(again->count(), 0U);
}

TEST(MutableArrayRemoving, numbersOfAnyKindAreOneValue) {
    const Ref<NSMutableArray> numbers = NSMutableArray::arrayWithObjects({box(1), box(1.0), box(true), box(2), "1"_ns});
    numbers->removeObject(box(1));
    EXPECT_EQ(listing(numbers), "2 1");
    EXPECT_TRUE(numbers->containsObject("1"_ns));
}

TEST(MutableArrayRemoving, identityAndUnknownObjects) {
    const Ref<NSString> twin = NSString::fromUtf8("a");
    const Ref<NSMutableArray> list = NSMutableArray::arrayWithObjects({"a"_ns, twin, "b"_ns});
    list->removeObjectIdenticalTo(twin);
    EXPECT_EQ(list->count(), 2U);
    EXPECT_EQ(list->objectAtIndex(0).get(), ("a"_ns).get());
    list->removeObject("z"_ns);
    list->removeObject(nullptr);
    list->removeObjectIdenticalTo(nullptr);
    list->removeObjectsInArray(nullptr);
    EXPECT_EQ(listing(list), "a b");
}

TEST(MutableArrayReplacing, inPlace) {
    const Ref<NSMutableArray> list = letters();
    list->replaceObjectAtIndex_withObject(1, "x"_ns);
    EXPECT_EQ(listing(list), "a x c");
    list->exchangeObjectAtIndex_withObjectAtIndex(0, 2);
    EXPECT_EQ(listing(list), "c x a");
    list->exchangeObjectAtIndex_withObjectAtIndex(1, 1);
    EXPECT_EQ(listing(list), "c x a");
    list->setArray(array({"q"_ns}));
    EXPECT_EQ(listing(list), "q");
    list->setArray(nullptr);
    EXPECT_EQ(list->count(), 0U);
}

TEST(MutableArrayReplacing, theSubscriptReplacesOrAppends) {
    const Ref<NSMutableArray> list = letters();
    list->setObject_atIndexedSubscript("x"_ns, 0);
    list->setObject_atIndexedSubscript("d"_ns, 3);
    EXPECT_EQ(listing(list), "x b c d");
    EXPECT_EQ(raised([&] { list->setObject_atIndexedSubscript("z"_ns, 9); }),
              "NSRangeException: *** -[__NSArrayM setObject:atIndexedSubscript:]: index 9 beyond bounds [0 .. 3]");
    EXPECT_EQ(listing(list), "x b c d");
}

TEST(MutableArrayCopying, copiesDoNotChangeAnyMore) {
    const Ref<NSMutableArray> list = letters();
    const id copied = list->copy();
    const id changing = list->mutableCopy();
    list->addObject("d"_ns);
    EXPECT_EQ(listing(Ref<NSArray>(cast<NSArray>(copied))), "a b c");
    EXPECT_STREQ(object_getClassName(copied), "__NSFrozenArrayM");
    EXPECT_EQ(copied->copy().get(), copied.get());
    EXPECT_EQ(listing(Ref<NSArray>(cast<NSArray>(changing))), "a b c");
    EXPECT_STREQ(object_getClassName(NSMutableArray::array()->copy()), "__NSFrozenArrayM");
    EXPECT_FALSE(copied->respondsToSelector("addObject:"_sel));
}

TEST(MutableArrayCapacity, isOnlyAHint) {
    EXPECT_EQ(NSMutableArray::arrayWithCapacity(0)->count(), 0U);
    EXPECT_EQ(NSMutableArray::arrayWithCapacity(hugeIndex)->count(), 0U);
    EXPECT_STREQ(object_getClassName(make<NSMutableArray>(&NSMutableArray::initWithCapacity, 3)), "__NSArrayM");
    const Ref<NSMutableArray> list = NSMutableArray::arrayWithCapacity(1);
    list->addObjectsFromArray(letters());
    EXPECT_EQ(list->count(), 3U);
}

TEST(MutableArrayLifetimes, anElementEndsWhenTheArrayStandsAsItWillBe) {
    std::string seen;
    const Ref<NSMutableArray> list = NSMutableArray::array();
    for (int i = 0; i < 6; ++i) {
        list->addObject(farewell(list, seen));
    }
    list->removeObjectAtIndex(0);
    EXPECT_EQ(seen, "5 ");
    list->replaceObjectAtIndex_withObject(0, "x"_ns);
    EXPECT_EQ(seen, "5 5 ");
    list->removeObjectsInRange({1, 2});
    EXPECT_EQ(seen, "5 5 3 3 ");
    list->removeObject(list->lastObject());
    EXPECT_EQ(seen, "5 5 3 3 2 ");
    list->removeAllObjects();
    EXPECT_EQ(seen, "5 5 3 3 2 0 ");
}

TEST(MutableArrayLifetimes, elementsAreKept) {
    std::string seen;
    const Ref<NSMutableArray> list = NSMutableArray::array();
    Weak<NSObject> watched;
    {
        const id object = farewell(nullptr, seen);
        watched = Weak<NSObject>(object);
        list->addObject(object);
    }
    EXPECT_FALSE(watched.expired());
    const Ref<NSArray> copied(cast<NSArray>(list->copy()));
    list->removeAllObjects();
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(copied->objectAtIndex(0).get(), watched.lock().get());
}

TEST(MutableArrayMessages, operationsAnswerUnderTheirNames) {
    const id list = NSMutableArray::array();
    send<void>(list, "addObject:"_sel, "b"_ns);
    send<void>(list, "insertObject:atIndex:"_sel, "a"_ns, 0);
    send<void>(list, "addObjectsFromArray:"_sel, array({"c"_ns, "d"_ns}));
    send<void>(list, "removeLastObject"_sel);
    EXPECT_EQ(send<NSUInteger>(list, "count"_sel), 3U);
    send<void>(list, "exchangeObjectAtIndex:withObjectAtIndex:"_sel, 0, 2);
    send<void>(list, "setObject:atIndexedSubscript:"_sel, "x"_ns, 1);
    EXPECT_EQ(send<Ref<NSString>>(list, "componentsJoinedByString:"_sel, " "_ns)->utf8(), "c x a");
    EXPECT_EQ(raisedName([&] { send<void>(list, "addObject:"_sel, nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { send<void>(array({}), "addObject:"_sel, "x"_ns); }), NSInvalidArgumentException);
}

/// A mutable array of one's own kind.
class Basket : public NSMutableArray {
    ZR_OBJECT(Basket, NSMutableArray)
};

TEST(MutableArraySubclass, worksInPlace) {
    const Ref<Basket> basket = make<Basket>();
    ASSERT_TRUE(basket);
    EXPECT_STREQ(object_getClassName(basket), "Basket");
    basket->addObject("a"_ns);
    EXPECT_EQ(basket->objectAtIndex(0)->description()->utf8(), "a");
    EXPECT_EQ(raised([&] { static_cast<void>(basket->objectAtIndex(1)); }),
              "NSRangeException: *** -[Basket objectAtIndex:]: index 1 beyond bounds [0 .. 0]");
    EXPECT_TRUE(basket->isEqual(array({"a"_ns})));
    EXPECT_EQ(make<Basket>(&Basket::initWithArray, letters())->count(), 3U);
}

} // namespace

} // namespace zr
