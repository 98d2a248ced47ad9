#include <zrbasic/collections/sequence_editing.h>

#include "../foundation/checks.h"
#include "elements.h"

#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace zr {

namespace {

using test::countedTo;
using test::elements;
using test::Forgetful;
using test::intOf;
using test::OneSided;
using test::raisedName;

constexpr NSUInteger hugeIndex = std::numeric_limits<NSUInteger>::max();
const Ref<NSArray> noArray;
const Ref<NSMutableArray> noMutableArray;

Ref<NSArray> letters() {
    return array({"a"_ns, "b"_ns, "c"_ns});
}
Ref<NSMutableArray> mutableLetters() {
    return NSMutableArray::arrayWithArray(letters());
}

/// True for the element at one index.
auto at(NSUInteger wanted) {
    return [wanted](NSObject*, NSUInteger index) { return index == wanted; };
}

TEST(ArrayWithoutObjects, goesByValueAndNotByIndex) {
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(array({"a"_ns, "b"_ns, "a"_ns}), at(0))), "b");
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(array({"a"_ns, "b"_ns, NSString::fromUtf8("a")}), at(2))), "b");
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(array({box(1), box(2), box(1.0), box(true)}), at(0))), "2");
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(array({box(1), "1"_ns}), at(0))), "1");
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(array({array({box(1)}), "x"_ns, array({box(1.0)})}), at(2))), "x");
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(array({NSNull::null(), "x"_ns, NSNull::null()}), at(0))), "x");
}

TEST(ArrayWithoutObjects, givesANewMutableArrayInAnyCase) {
    const Ref<NSMutableArray> list = mutableLetters();
    const Ref<NSMutableArray> unchanged = arrayByRemoveObjectsWhere(list, [](NSObject*, NSUInteger) { return false; });
    EXPECT_NE(unchanged, list);
    EXPECT_EQ(elements(unchanged), "a b c");
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(list, [](NSObject*, NSUInteger) { return true; })), "");
    EXPECT_EQ(elements(list), "a b c");
    bool wasCalled = false;
    const Ref<NSMutableArray> empty =
        arrayByRemoveObjectsWhere(array({}), [&](NSObject*, NSUInteger) { return wasCalled = true; });
    EXPECT_STREQ(object_getClassName(empty), "__NSArrayM");
    EXPECT_FALSE(wasCalled);
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(list, nullptr)), "a b c");
    EXPECT_FALSE(arrayByRemoveObjectsWhere(noArray, at(0)));
}

TEST(ArrayWithoutObjects, asksEveryElementBeforeItRemovesAny) {
    std::string seen;
    static_cast<void>(arrayByRemoveObjectsWhere(array({"a"_ns, "a"_ns, "b"_ns}), [&](NSObject* element, NSUInteger i) {
        seen += element->description()->utf8() + std::to_string(i) + ' ';
        return true;
    }));
    EXPECT_EQ(seen, "a0 a1 b2 ");
}

TEST(RemovalByValue, asksTheUnwantedElementAndNoHash) {
    const id sameNumber = Forgetful::of(7);
    EXPECT_EQ(
        elements(arrayByRemoveObjectsWhere(array({Forgetful::of(7), "x"_ns, sameNumber, Forgetful::of(8)}), at(0))),
        "x 8");
    const id oneSided = make<OneSided>();
    // It says that it equals the strings, while they say no.
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(array({"x"_ns, oneSided, "y"_ns, box(1)}), at(1))), "1");
    EXPECT_EQ(elements(arrayByRemoveObjectsWhere(array({"x"_ns, oneSided, "y"_ns, box(1)}), at(0))), "? y 1");
    const Ref<NSMutableArray> list = NSMutableArray::arrayWithObjects({"x"_ns, oneSided, box(1)});
    removeObjectsWhere(list, [&](NSObject* element) { return element == oneSided; });
    EXPECT_EQ(elements(list), "1");
}

TEST(RemovalByValue, comparesNumbersExactlyAcrossKinds) {
    // The double equals the integer as well as the decimal, which do not equal each other.
    const std::int64_t wide = 1152921504606846976;
    const id integer = box(wide);
    const id fraction = box(static_cast<double>(wide));
    const id decimal = NSDecimalNumber::decimalNumberWithString("1152921504606847000"_ns);
    ASSERT_TRUE(fraction->isEqual(integer));
    ASSERT_TRUE(fraction->isEqual(decimal));
    ASSERT_FALSE(integer->isEqual(decimal));
    EXPECT_EQ(arrayByRemoveObjectsWhere(array({integer, decimal, fraction}), at(0))->count(), 1U);
    EXPECT_EQ(arrayByRemoveObjectsWhere(array({integer, decimal, fraction}), at(2))->count(), 0U);
    // Both integer and double are unwanted, and of two equal ones the second is not forgotten.
    EXPECT_EQ(arrayByRemoveObjectsWhere(array({integer, fraction, decimal}),
                                        [](NSObject*, NSUInteger index) { return index < 2; })
                  ->count(),
              0U);
}

TEST(ArrayUpToIndex, isTheReceiverItselfWhenNothingGoes) {
    const Ref<NSArray> list = letters();
    EXPECT_EQ(zr_removeObjectsFromIndex(list, 3), list);
    EXPECT_EQ(zr_removeObjectsFromIndex(list, hugeIndex), list);
    EXPECT_EQ(elements(zr_removeObjectsFromIndex(list, 2)), "a b");
    EXPECT_EQ(elements(zr_removeObjectsFromIndex(list, 0)), "");
    const Ref<NSMutableArray> changeable = mutableLetters();
    EXPECT_EQ(zr_removeObjectsFromIndex(changeable, 3), changeable);
    EXPECT_EQ(cast<NSMutableArray>(zr_removeObjectsFromIndex(changeable, 1)), nullptr);
    EXPECT_EQ(elements(changeable), "a b c");
    EXPECT_FALSE(zr_removeObjectsFromIndex(nullptr, 0));
}

TEST(ArrayWithReplacement, replacesDeletesOrAppends) {
    const struct {
        const char* name;
        NSUInteger index;
        id object;
        const char* result;
    } rows[] = {
        {"first", 0, "x"_ns, "x b c"},
        {"last", 2, "x"_ns, "a b x"},
        {"the count appends", 3, "x"_ns, "a b c x"},
        {"null deletes", 1, nullptr, "a c"},
        {"null at the count", 3, nullptr, "a b c"},
        {"null past the end", 5, nullptr, "a b c"},
        {"null far away", hugeIndex, nullptr, "a b c"},
        {"the null object is an object", 1, NSNull::null(), "a <null> c"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Ref<NSArray> list = letters();
        const Ref<NSMutableArray> replaced = replaceObjectAtIndex_withObject(list, row.index, row.object);
        EXPECT_EQ(elements(replaced), row.result);
        EXPECT_EQ(elements(list), "a b c");
        EXPECT_STREQ(object_getClassName(replaced), "__NSArrayM");
    }
}

TEST(ArrayWithReplacement, raisesForAnObjectBeyondTheCount) {
    const auto replaceAt = [](NSUInteger index) {
        return raisedName([&] { replaceObjectAtIndex_withObject(array({"a"_ns, "b"_ns}), index, "x"_ns); });
    };
    EXPECT_EQ(replaceAt(5), NSRangeException);
    EXPECT_EQ(replaceAt(3), NSRangeException);
    EXPECT_EQ(replaceAt(hugeIndex), NSRangeException);
    EXPECT_EQ(replaceAt(2), "");
    EXPECT_EQ(elements(replaceObjectAtIndex_withObject(array({}), 0, "x"_ns)), "x");
    EXPECT_FALSE(replaceObjectAtIndex_withObject(nullptr, 0, "x"_ns));
}

TEST(ArrayWithReplacement, changesAMutableReceiverItself) {
    const Ref<NSMutableArray> list = mutableLetters();
    EXPECT_EQ(replaceObjectAtIndex_withObject(list, 1, "x"_ns), list);
    EXPECT_EQ(elements(list), "a x c");
    // Neither appending nor deleting belongs to the mutable array's own operation.
    EXPECT_EQ(raisedName([&] { replaceObjectAtIndex_withObject(list, 3, "y"_ns); }), NSRangeException);
    EXPECT_EQ(raisedName([&] { replaceObjectAtIndex_withObject(list, 0, nullptr); }), NSInvalidArgumentException);
    send(list, "replaceObjectAtIndex:withObject:"_sel, NSUInteger(0), "y"_ns);
    EXPECT_EQ(elements(list), "y x c");
    const id copy = list->copy();
    EXPECT_EQ(elements(send<Ref<NSArray>>(copy, "replaceObjectAtIndex:withObject:"_sel, NSUInteger(0), nullptr)),
              "x c");
    EXPECT_EQ(elements(Ref<NSArray>(cast<NSArray>(copy))), "y x c");
}

TEST(ArrayWithReplacedEnd, cutsAndAppends) {
    const struct {
        const char* name;
        NSUInteger index;
        id objects;
        const char* result;
    } rows[] = {
        {"from the middle", 1, array({"x"_ns, "y"_ns}), "a x y"},
        {"all", 0, array({"x"_ns}), "x"},
        {"at the count", 3, array({"x"_ns}), "a b c x"},
        {"past the end", 9, array({"x"_ns}), "a b c x"},
        {"far past the end", hugeIndex, array({"x"_ns}), "a b c x"},
        {"null only cuts", 1, nullptr, "a"},
        {"null past the end", 9, nullptr, "a b c"},
        {"an empty array only cuts", 2, array({}), "a b"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        NSArray* const objects = cast<NSArray>(row.objects);
        const Ref<NSArray> list = letters();
        const Ref<NSMutableArray> result = zr_replaceObjectsFromIndex_withObjects(list, row.index, objects);
        EXPECT_EQ(elements(result), row.result);
        EXPECT_EQ(elements(list), "a b c");
        const Ref<NSMutableArray> changeable = mutableLetters();
        EXPECT_NE(zr_replaceObjectsFromIndex_withObjects(changeable, row.index, objects), changeable);
        EXPECT_EQ(elements(changeable), "a b c");
        replaceObjectsFromIndex_withObjects(changeable, row.index, objects);
        EXPECT_EQ(elements(changeable), row.result);
    }
    EXPECT_FALSE(zr_replaceObjectsFromIndex_withObjects(nullptr, 0, letters()));
    replaceObjectsFromIndex_withObjects(nullptr, 0, letters());
}

TEST(ArrayWithReplacedEnd, mayBeItsOwnSource) {
    const Ref<NSMutableArray> list = mutableLetters();
    replaceObjectsFromIndex_withObjects(list, 2, list);
    EXPECT_EQ(elements(list), "a b a b");
    EXPECT_EQ(elements(zr_replaceObjectsFromIndex_withObjects(list, 1, list)), "a a b a b");
    // The list that is appended goes with the element that held it.
    const Ref<NSMutableArray> outer = NSMutableArray::arrayWithObject(NSMutableArray::arrayWithArray(letters()));
    replaceObjectsFromIndex_withObjects(outer, 0, cast<NSArray>(outer->elements()[0]));
    EXPECT_EQ(elements(outer), "a b c");
}

TEST(RemovingFromIndex, doesNothingPastTheEnd) {
    const Ref<NSMutableArray> list = mutableLetters();
    removeObjectsFromIndex(list, 3);
    removeObjectsFromIndex(list, hugeIndex);
    removeObjectsFromIndex(nullptr, 0);
    EXPECT_EQ(elements(list), "a b c");
    removeObjectsFromIndex(list, 1);
    EXPECT_EQ(elements(list), "a");
    removeObjectsFromIndex(list, 0);
    removeObjectsFromIndex(list, 0);
    EXPECT_EQ(elements(list), "");
}

TEST(AddingToAnArray, ignoresNullOnly) {
    const Ref<NSMutableArray> list = NSMutableArray::array();
    zr_addObject(list, nullptr);
    EXPECT_EQ(list->count(), 0U);
    zr_addObject(list, "a"_ns);
    zr_addObject(list, NSNull::null());
    zr_addObject(noMutableArray, "a"_ns);
    EXPECT_EQ(elements(list), "a <null>");
}

TEST(RemovingWhere, removesEqualElementsToo) {
    const Ref<NSMutableArray> list = NSMutableArray::arrayWithObjects({"a"_ns, "b"_ns, "a"_ns, "c"_ns});
    bool isFirst = true;
    removeObjectsWhere(list, [&](NSObject* element) { return std::exchange(isFirst, false) && element == "a"_ns; });
    EXPECT_EQ(elements(list), "b c");
    removeObjectsWhere(list, [](NSObject*) { return false; });
    removeObjectsWhere(list, nullptr);
    EXPECT_EQ(elements(list), "b c");
    removeObjectsWhere(list, [](NSObject*) { return true; });
    EXPECT_EQ(elements(list), "");
    bool wasCalled = false;
    removeObjectsWhere(list, [&](NSObject*) { return wasCalled = true; });
    EXPECT_FALSE(wasCalled);
    removeObjectsWhere(nullptr, [](NSObject*) { return true; });
}

TEST(EditingMessages, areAnswered) {
    const auto isB = [](NSObject* element, NSUInteger) { return element == "b"_ns; };
    EXPECT_EQ(elements(send<Ref<NSArray>>(letters(), "arrayByRemoveObjectsWhere:"_sel, IndexedPredicate(isB))), "a c");
    EXPECT_EQ(elements(send<Ref<NSArray>>(letters(), "zr_removeObjectsFromIndex:"_sel, 1)), "a");
    EXPECT_EQ(elements(send<Ref<NSArray>>(letters(), "zr_replaceObjectsFromIndex:withObjects:"_sel, 1, letters())),
              "a a b c");
    // What is no array counts as null.
    EXPECT_EQ(elements(send<Ref<NSArray>>(letters(), "zr_replaceObjectsFromIndex:withObjects:"_sel, 1, "text"_ns)),
              "a");
    const Ref<NSMutableArray> list = mutableLetters();
    const auto isC = [](NSObject* element) { return element == "c"_ns; };
    send(list, "removeObjectsWhere:"_sel, ElementPredicate(isC));
    send(list, "zr_addObject:"_sel, nullptr);
    send(list, "zr_addObject:"_sel, "d"_ns);
    EXPECT_EQ(elements(list), "a b d");
    send(list, "replaceObjectsFromIndex:withObjects:"_sel, 2, array({"x"_ns, "y"_ns}));
    send(list, "removeObjectsFromIndex:"_sel, 3);
    EXPECT_EQ(elements(list), "a b x");
    EXPECT_FALSE(letters()->respondsToSelector("removeObjectsWhere:"_sel));
}

TEST(RemovalByValue, takesATimeInProportionToTheLengthForPlainValues) {
    constexpr int count = 100'000;
    const auto isOdd = [](NSObject* number, NSUInteger) { return intOf(number) % 2 == 1; };
    const Ref<NSMutableArray> numbers = countedTo<NSMutableArray>(count);
    EXPECT_EQ(arrayByRemoveObjectsWhere(numbers, isOdd)->count(), count / 2U);
    removeObjectsWhere(numbers, [&](NSObject* number) { return isOdd(number, 0); });
    EXPECT_EQ(numbers->count(), count / 2U);
    std::vector<id> texts;
    for (int i = 0; i < count; ++i) {
        texts.push_back(box(i % 50'000)->stringValue());
    }
    EXPECT_EQ(arrayByRemoveObjectsWhere(NSArray::fromElements(std::move(texts)),
                                        [](NSObject*, NSUInteger index) { return index < 40'000; })
                  ->count(),
              20'000U);
    std::vector<id> same(count, "same"_ns);
    EXPECT_EQ(arrayByRemoveObjectsWhere(NSArray::fromElements(std::move(same)), at(7))->count(), 0U);
    // Objects of other classes cost nothing either when all that are unwanted are among them.
    std::vector<id> objects;
    for (int i = 0; i < count; ++i) {
        objects.push_back(Forgetful::of(i));
    }
    EXPECT_EQ(
        arrayByRemoveObjectsWhere(NSArray::fromElements(std::move(objects)), [](NSObject*, NSUInteger) { return true; })
            ->count(),
        0U);
}

} // namespace

} // namespace zr
