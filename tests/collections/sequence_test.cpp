#include <zrbasic/collections/sequence.h>

#include "../foundation/checks.h"
#include "elements.h"

#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {

namespace {

using test::countedTo;
using test::elements;
using test::intOf;
using test::raisedName;

constexpr NSUInteger hugeIndex = std::numeric_limits<NSUInteger>::max();

id doubled(NSObject* number) {
    return box(2 * intOf(number));
}

id sum(NSObject* accumulated, NSObject* number) {
    return box(intOf(accumulated) + intOf(number));
}

Ref<NSArray> letters() {
    return array({"p"_ns, "q"_ns, "r"_ns});
}

id upperCase(NSObject* text) {
    return cast<NSString>(text)->uppercaseString();
}

TEST(SequenceMap, leavesOutWhatTheTransformGivesNullFor) {
    EXPECT_EQ(elements(zr_map(letters(), [](NSObject* text) { return text == "q"_ns ? id() : upperCase(text); })),
              "P R");
    EXPECT_EQ(elements(zr_mapI(letters(),
                               [](NSObject* text, NSUInteger index) {
                                   return index == 1
                                              ? id()
                                              : id(cast<NSString>(text)->stringByAppendingFormat("%@"_ns, box(index)));
                               })),
              "p0 r2");
    EXPECT_EQ(zr_map(letters(), [](NSObject*) { return nullptr; })->count(), 0U);
    // The null object is an object.
    EXPECT_EQ(zr_map(letters(), [](NSObject*) { return NSNull::null(); })->count(), 3U);
    EXPECT_EQ(elements(letters()), "p q r");
}

TEST(SequenceMap, givesANewMutableArray) {
    const Ref<NSMutableArray> list = NSMutableArray::arrayWithArray(letters());
    const Ref<NSMutableArray> mapped = zr_map(list, upperCase);
    mapped->addObject("S"_ns);
    EXPECT_EQ(elements(mapped), "P Q R S");
    EXPECT_EQ(elements(list), "p q r");
    EXPECT_NE(zr_map(array({}), upperCase).get(), zr_map(array({}), upperCase).get());
    EXPECT_STREQ(object_getClassName(zr_mapI(array({}), [](NSObject*, NSUInteger) { return id(); })), "__NSArrayM");
}

TEST(SequenceMap, hasNothingToDoForNullAndNothing) {
    const Ref<NSArray> none;
    EXPECT_FALSE(zr_map(none, upperCase));
    EXPECT_FALSE(zr_mapI(none, [](NSObject*, NSUInteger) { return id(); }));
    EXPECT_EQ(elements(zr_map(letters(), nullptr)), "");
    EXPECT_EQ(elements(zr_mapI(letters(), nullptr)), "");
    bool wasCalled = false;
    EXPECT_EQ(zr_map(array({}), [&](NSObject* element) { return wasCalled = true, id(element); })->count(), 0U);
    EXPECT_FALSE(wasCalled);
}

TEST(SequenceFlatMap, appendsTheElementsOfArraysOneLevelDeep) {
    const Ref<NSArray> nested = array({"y"_ns});
    const Ref<NSMutableArray> result = zr_flatMap(array({box(1), box(2)}), [&](NSObject* number) {
        return intOf(number) == 1 ? id(array({"x"_ns, nested})) : id("z"_ns);
    });
    ASSERT_EQ(result->count(), 3U);
    EXPECT_EQ(result->objectAtIndex(0), "x"_ns);
    EXPECT_EQ(result->objectAtIndex(1), nested);
    EXPECT_EQ(result->objectAtIndex(2), "z"_ns);
    EXPECT_STREQ(object_getClassName(result), "__NSArrayM");
}

TEST(SequenceFlatMap, takesAnyKindOfArrayApartAndNothingElse) {
    const auto mappedTo = [](const id& object) {
        return elements(zr_flatMap(array({box(1), box(2)}), [&](NSObject*) { return object; }));
    };
    EXPECT_EQ(mappedTo(nullptr), "");
    EXPECT_EQ(mappedTo(array({})), "");
    EXPECT_EQ(mappedTo(NSMutableArray::arrayWithArray(letters())), "p q r p q r");
    EXPECT_EQ(mappedTo(letters()->mutableCopy()->copy()), "p q r p q r");
    EXPECT_EQ(mappedTo(NSNull::null()), "<null> <null>");
    const Ref<NSArray> receiver = letters();
    EXPECT_EQ(elements(zr_flatMap(receiver, [&](NSObject*) { return receiver; })), "p q r p q r p q r");
    EXPECT_EQ(elements(zr_flatMap(receiver, nullptr)), "");
    EXPECT_FALSE(zr_flatMap(Ref<NSArray>(), upperCase));
}

TEST(SequenceRepeat, callsTheTransformWithEachIndex) {
    EXPECT_EQ(elements(zr_repeat_map(4, [](NSUInteger index) { return index == 2 ? id() : id(box(index)); })), "0 1 3");
    bool wasCalled = false;
    const auto note = [&](NSUInteger) { return wasCalled = true, id(); };
    EXPECT_EQ(zr_repeat_map<NSMutableArray>(0, note)->count(), 0U);
    EXPECT_FALSE(wasCalled);
    EXPECT_EQ(zr_repeat_map(hugeIndex, nullptr)->count(), 0U);
    // Room is not set aside for as many as somebody asks for.
    EXPECT_EQ(raisedName([] {
                  static_cast<void>(zr_repeat_map(hugeIndex, [](NSUInteger index) {
                      if (index == 3) {
                          NSException::raise(NSGenericException, "enough");
                      }
                      return id(box(index));
                  }));
              }),
              NSGenericException);
}

TEST(SequenceExists, givesTheElementItself) {
    const Ref<NSArray> list = countedTo(5);
    int calls = 0;
    const id found = zr_exists(list, [&](NSObject* number) { return ++calls, intOf(number) >= 2; });
    EXPECT_EQ(found, list->objectAtIndex(2));
    EXPECT_EQ(calls, 3);
    EXPECT_FALSE(zr_exists(list, [](NSObject*) { return false; }));
    EXPECT_FALSE(zr_exists(array({}), [](NSObject*) { return true; }));
    EXPECT_FALSE(zr_exists(list, nullptr));
    EXPECT_FALSE(zr_exists(Ref<NSArray>(), [](NSObject*) { return true; }));
}

TEST(SequenceReduce, combinesFromTheFirstElementOn) {
    EXPECT_EQ(intOf(zr_reduce(countedTo(5), sum)), 10);
    int calls = 0;
    const auto count = [&](NSObject* accumulated, NSObject*) { return ++calls, id(accumulated); };
    EXPECT_FALSE(zr_reduce(array({}), count));
    EXPECT_EQ(zr_reduce(array({"a"_ns}), count), "a"_ns);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(zr_reduce(letters(), count), "p"_ns);
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(zr_reduce(Ref<NSArray>(), count));
}

TEST(SequenceReduce, takesNullForAnAccumulatedValueLikeAnyOther) {
    std::string seen;
    const id result = zr_reduce(array({"a"_ns, "b"_ns, "c"_ns}), [&](NSObject* accumulated, NSObject* element) {
        seen += (accumulated ? accumulated->description()->utf8() : "null") + element->description()->utf8() + ' ';
        return element == "b"_ns ? id() : id("end"_ns);
    });
    EXPECT_EQ(seen, "ab nullc ");
    EXPECT_EQ(result, "end"_ns);
    EXPECT_FALSE(zr_reduce(letters(), [](NSObject*, NSObject*) { return nullptr; }));
    EXPECT_FALSE(zr_reduce(letters(), nullptr));
    EXPECT_EQ(zr_reduce(array({"a"_ns}), nullptr), "a"_ns);
}

TEST(SequenceFilter, keepsTheOrder) {
    EXPECT_EQ(elements(zr_filter(countedTo(6), [](NSObject* number, NSUInteger) { return intOf(number) % 2 == 1; })),
              "1 3 5");
    EXPECT_EQ(elements(zr_filter(letters(), [](NSObject*, NSUInteger index) { return index != 1; })), "p r");
    EXPECT_EQ(elements(zr_filter(letters(), nullptr)), "");
    EXPECT_FALSE(zr_filter(Ref<NSArray>(), [](NSObject*, NSUInteger) { return true; }));
    const Ref<NSMutableArray> all = zr_filter(letters(), [](NSObject*, NSUInteger) { return true; });
    EXPECT_STREQ(object_getClassName(all), "__NSArrayM");
    EXPECT_EQ(elements(all), "p q r");
}

TEST(SequenceDistinct, dropsEqualElements) {
    const Ref<NSArray> distinct = zr_distinct(array({"b"_ns, "a"_ns, NSString::fromUtf8("b")}));
    EXPECT_EQ(distinct->count(), 2U);
    EXPECT_TRUE(distinct->containsObject("a"_ns));
    EXPECT_TRUE(distinct->containsObject("b"_ns));
    EXPECT_EQ(zr_distinct(array({box(1), box(1.0), box(true), "1"_ns}))->count(), 2U);
    EXPECT_EQ(zr_distinct(array({}))->count(), 0U);
    EXPECT_EQ(zr_distinct(array({NSNull::null(), NSNull::null()}))->count(), 1U);
    EXPECT_FALSE(zr_distinct(nullptr));
}

TEST(SequenceObjectAtIndex, isNullPastTheEnd) {
    EXPECT_EQ(zr_objectAtIndex(letters(), 0), "p"_ns);
    EXPECT_EQ(zr_objectAtIndex(letters(), 2), "r"_ns);
    EXPECT_FALSE(zr_objectAtIndex(letters(), 3));
    EXPECT_FALSE(zr_objectAtIndex(letters(), NSNotFound));
    EXPECT_FALSE(zr_objectAtIndex(letters(), hugeIndex));
    EXPECT_FALSE(zr_objectAtIndex(array({}), 0));
    EXPECT_FALSE(zr_objectAtIndex(NSMutableArray::array(), 0));
    EXPECT_FALSE(zr_objectAtIndex(nullptr, 0));
}

TEST(SequenceReverse, givesANewArrayFromLastToFirst) {
    const Ref<NSArray> list = letters();
    const Ref<NSMutableArray> reversed = zr_reverse(list);
    EXPECT_EQ(elements(reversed), "r q p");
    EXPECT_STREQ(object_getClassName(reversed), "__NSArrayM");
    EXPECT_EQ(elements(list), "p q r");
    EXPECT_EQ(elements(zr_reverse(array({}))), "");
    EXPECT_EQ(elements(zr_reverse(array({"a"_ns}))), "a");
    EXPECT_FALSE(zr_reverse(nullptr));
}

TEST(SequenceMessages, areAnsweredByEveryKindOfArray) {
    const Ref<NSArray> kinds[] = {countedTo(3), countedTo<NSMutableArray>(3),
                                  Ref<NSArray>(cast<NSArray>(countedTo<NSMutableArray>(3)->copy()))};
    for (const Ref<NSArray>& list : kinds) {
        SCOPED_TRACE(object_getClassName(list));
        EXPECT_EQ(elements(send<Ref<NSArray>>(list, "zr_map:"_sel, ElementTransform(doubled))), "0 2 4");
        EXPECT_EQ(elements(send<Ref<NSArray>>(list, "zr_flatMap:"_sel, ElementTransform(doubled))), "0 2 4");
        EXPECT_EQ(intOf(send<id>(list, "zr_reduce:"_sel, ElementCombiner(sum))), 3);
        EXPECT_EQ(elements(send<Ref<NSArray>>(list, "zr_reverse"_sel)), "2 1 0");
        EXPECT_EQ(send<Ref<NSArray>>(list, "zr_distinct"_sel)->count(), 3U);
        EXPECT_EQ(intOf(send<id>(list, "zr_objectAtIndex:"_sel, 2)), 2);
        EXPECT_FALSE(send<id>(list, "zr_objectAtIndex:"_sel, 3));
    }
    const auto second = [](NSObject*, NSUInteger index) { return index == 1; };
    EXPECT_EQ(elements(send<Ref<NSArray>>(kinds[0], "zr_filter:"_sel, IndexedPredicate(second))), "1");
    const auto withIndex = [](NSObject*, NSUInteger index) { return id(box(index)); };
    EXPECT_EQ(elements(send<Ref<NSArray>>(kinds[0], "zr_mapI:"_sel, IndexedTransform(withIndex))), "0 1 2");
    const auto isTwo = [](NSObject* number) { return intOf(number) == 2; };
    EXPECT_EQ(send<id>(kinds[0], "zr_exists:"_sel, ElementPredicate(isTwo)), kinds[0]->lastObject());
    const auto boxed = [](NSUInteger index) { return id(box(index)); };
    EXPECT_EQ(elements(send<Ref<NSArray>>(NSMutableArray::classObject(), "zr_repeat:map:"_sel, NSUInteger(2),
                                          IndexTransform(boxed))),
              "0 1");
}

TEST(SequenceMessages, refuseWhatIsNoCallback) {
    EXPECT_EQ(raisedName([] { send(letters(), "zr_map:"_sel, "no callback"_ns); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { send("text"_ns, "zr_map:"_sel, ElementTransform(upperCase)); }),
              NSInvalidArgumentException);
    EXPECT_EQ(elements(send<Ref<NSArray>>(letters(), "zr_map:"_sel, ElementTransform())), "");
    EXPECT_FALSE(send<id>(nullptr, "zr_reverse"_sel));
}

TEST(SequenceSize, aHundredThousandElementsAreNothingSpecial) {
    constexpr int count = 100'000;
    const Ref<NSArray> list = countedTo(count);
    const Ref<NSArray> mapped = zr_map(list, doubled);
    EXPECT_EQ(mapped->count(), NSUInteger(count));
    EXPECT_EQ(intOf(mapped->lastObject()), 2 * (count - 1));
    EXPECT_EQ(zr_flatMap(list, [](NSObject* number) { return array({id(number), id(number)}); })->count(), 2U * count);
    EXPECT_EQ(zr_filter(list, [](NSObject*, NSUInteger index) { return index % 2 == 0; })->count(), count / 2U);
    EXPECT_EQ(zr_reduce(list, [](NSObject*, NSObject* number) { return id(number); }), list->lastObject());
    EXPECT_EQ(zr_reverse(list)->firstObject(), list->lastObject());
    EXPECT_EQ(zr_distinct(mapped->arrayByAddingObjectsFromArray(list))->count(), count + count / 2U);
    EXPECT_EQ(zr_repeat_map(count, [](NSUInteger index) { return id(box(index)); })->count(), NSUInteger(count));
}

} // namespace

} // namespace zr
