#include <zrbasic/platform/foundation/array.h>

#include "checks.h"

#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

constexpr NSUInteger hugeIndex = std::numeric_limits<NSUInteger>::max();

/// The elements' descriptions, one blank between them.
std::string listing(const Ref<NSArray>& list) {
    return list ? list->componentsJoinedByString(" "_ns)->utf8() : "no array";
}

Ref<NSArray> letters() {
    return array({"a"_ns, "b"_ns, "c"_ns});
}

TEST(ArrayMaking, theKindFollowsTheNumberOfElements) {
    EXPECT_STREQ(object_getClassName(array({})), "__NSArray0");
    EXPECT_STREQ(object_getClassName(array({"a"_ns})), "__NSSingleObjectArrayI");
    EXPECT_STREQ(object_getClassName(array({"a"_ns, "b"_ns})), "__NSArrayI");
    EXPECT_STREQ(object_getClassName(letters()), "__NSArrayI");
    EXPECT_STREQ(object_getClassName(NSMutableArray::array()), "__NSArrayM");
    EXPECT_STREQ(object_getClassName(NSMutableArray::arrayWithArray(letters())->copy()), "__NSFrozenArrayM");
}

TEST(ArrayMaking, everyKindIsAnArrayAndOnlyOneIsMutable) {
    const id kinds[] = {array({}), array({"a"_ns}), letters(), NSMutableArray::array()->copy()};
    for (const id& kind : kinds) {
        SCOPED_TRACE(object_getClassName(kind));
        EXPECT_TRUE(kind->isKindOfClass(NSArray::classObject()));
        EXPECT_FALSE(kind->isKindOfClass(NSMutableArray::classObject()));
        EXPECT_EQ(cast<NSArray>(kind), kind.get());
        EXPECT_EQ(cast<NSMutableArray>(kind), nullptr);
    }
    const id mutableKind = NSMutableArray::array();
    EXPECT_TRUE(mutableKind->isKindOfClass(NSArray::classObject()));
    EXPECT_TRUE(mutableKind->isKindOfClass(NSMutableArray::classObject()));
    EXPECT_EQ(class_getSuperclass(NSMutableArray::classObject()), NSArray::classObject());
}

TEST(ArrayMaking, theKindsAreKnownByNameBeforeAnyArrayWasMade) {
    for (const char* const name :
         {"__NSArray0", "__NSSingleObjectArrayI", "__NSArrayI", "__NSFrozenArrayM", "__NSArrayM"}) {
        SCOPED_TRACE(name);
        ASSERT_NE(objc_getClass(name), nullptr);
        EXPECT_TRUE(objc_getClass(name)->descendsFrom(NSArray::classObject()));
    }
}

TEST(ArrayMaking, theEmptyArrayIsOneObject) {
    EXPECT_EQ(array({}).get(), NSArray::array().get());
    EXPECT_EQ(make<NSArray>().get(), NSArray::array().get());
    EXPECT_EQ(letters()->subarrayWithRange({3, 0}).get(), NSArray::array().get());
    EXPECT_EQ(NSArray::arrayWithArray(nullptr).get(), NSArray::array().get());
    EXPECT_EQ(NSArray::array()->count(), 0U);
}

TEST(ArrayMaking, anAllocatedArrayIsSetUpFromAnother) {
    EXPECT_EQ(listing(make<NSArray>(&NSArray::initWithArray, letters())), "a b c");
    EXPECT_STREQ(object_getClassName(make<NSArray>(&NSArray::initWithArray, letters())), "__NSArrayI");
    EXPECT_EQ(listing(make<NSMutableArray>(&NSMutableArray::initWithArray, letters())), "a b c");
    EXPECT_STREQ(object_getClassName(make<NSMutableArray>()), "__NSArrayM");
    EXPECT_EQ(make<NSArray>(&NSArray::initWithArray, nullptr)->count(), 0U);
}

TEST(ArrayMaking, classOperationsAnswerMessages) {
    Class* const arrays = NSArray::classObject();
    EXPECT_EQ(send<id>(arrays, "array"_sel).get(), NSArray::array().get());
    EXPECT_EQ(listing(send<Ref<NSArray>>(arrays, "arrayWithObject:"_sel, "x"_ns)), "x");
    EXPECT_EQ(listing(send<Ref<NSArray>>(arrays, "arrayWithArray:"_sel, letters())), "a b c");
    const id changing = send<id>(NSMutableArray::classObject(), "arrayWithArray:"_sel, letters());
    EXPECT_STREQ(object_getClassName(changing), "__NSArrayM");
    EXPECT_STREQ(object_getClassName(send<id>(NSMutableArray::classObject(), "array"_sel)), "__NSArrayM");
}

TEST(ArrayMaking, aNullElementRaisesAndIsNamedByItsIndex) {
    EXPECT_EQ(raised([] {
                  static_cast<void>(array({"a"_ns, nullptr}));
              }),
              "NSInvalidArgumentException: *** -[__NSPlaceholderArray initWithObjects:count:]: attempt to insert nil "
              "object from objects[1]");
    EXPECT_EQ(raisedName([] { static_cast<void>(array({nullptr})); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { static_cast<void>(NSArray::arrayWithObject(nullptr)); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { static_cast<void>(letters()->arrayByAddingObject(nullptr)); }),
              NSInvalidArgumentException);
    EXPECT_EQ(array({NSNull::null()})->count(), 1U);
}

TEST(ArrayReading, elementsAreReadByIndex) {
    const Ref<NSArray> list = letters();
    EXPECT_EQ(list->count(), 3U);
    EXPECT_EQ(list->objectAtIndex(0)->description()->utf8(), "a");
    EXPECT_EQ(list->objectAtIndex(2)->description()->utf8(), "c");
    EXPECT_EQ(list->objectAtIndexedSubscript(1)->description()->utf8(), "b");
    EXPECT_EQ(send<id>(list, "objectAtIndex:"_sel, 1).get(), list->objectAtIndex(1).get());
    EXPECT_EQ(send<id>(list, "objectAtIndexedSubscript:"_sel, 1).get(), list->objectAtIndex(1).get());
}

TEST(ArrayReading, anIndexPastTheEndRaisesAndNamesKindAndBounds) {
    const Ref<NSArray> two = array({"a"_ns, "b"_ns});
    EXPECT_EQ(raised([&] { static_cast<void>(two->objectAtIndex(5)); }),
              "NSRangeException: *** -[__NSArrayI objectAtIndex:]: index 5 beyond bounds [0 .. 1]");
    EXPECT_EQ(raised([&] { static_cast<void>(two->objectAtIndexedSubscript(2)); }),
              "NSRangeException: *** -[__NSArrayI objectAtIndexedSubscript:]: index 2 beyond bounds [0 .. 1]");
    EXPECT_EQ(raised([] { static_cast<void>(array({})->objectAtIndex(0)); }),
              "NSRangeException: *** -[__NSArray0 objectAtIndex:]: index 0 beyond bounds for empty NSArray");
    EXPECT_EQ(raised([] { static_cast<void>(array({"a"_ns})->objectAtIndex(1)); }),
              "NSRangeException: *** -[__NSSingleObjectArrayI objectAtIndex:]: index 1 beyond bounds [0 .. 0]");
    EXPECT_EQ(raised([] { static_cast<void>(NSMutableArray::array()->objectAtIndex(0)); }),
              "NSRangeException: *** -[__NSArrayM objectAtIndex:]: index 0 beyond bounds for empty array");
    EXPECT_EQ(raisedName([&] { static_cast<void>(two->objectAtIndex(hugeIndex)); }), NSRangeException);
}

TEST(ArrayReading, aMessageRaisesAsTheCallDoes) {
    const Ref<NSArray> two = array({"a"_ns, "b"_ns});
    EXPECT_EQ(raised([&] { send<id>(two, "objectAtIndex:"_sel, 5); }),
              "NSRangeException: *** -[__NSArrayI objectAtIndex:]: index 5 beyond bounds [0 .. 1]");
    EXPECT_EQ(raisedName([&] { send<id>(two, "objectAtIndexedSubscript:"_sel, 2); }), NSRangeException);
    // A negative index arrives as a huge one.
    EXPECT_EQ(raisedName([&] { send<id>(two, "objectAtIndex:"_sel, -1); }), NSRangeException);
}

TEST(ArrayReading, theEndsOfAnEmptyArrayAreNull) {
    EXPECT_FALSE(array({})->firstObject());
    EXPECT_FALSE(array({})->lastObject());
    EXPECT_EQ(letters()->firstObject()->description()->utf8(), "a");
    EXPECT_EQ(letters()->lastObject()->description()->utf8(), "c");
    EXPECT_EQ(array({"x"_ns})->firstObject().get(), array({"x"_ns})->lastObject().get());
}

TEST(ArrayReading, aReplacedImplementationIsHonouredByDirectCalls) {
    // Both entries have implementations of their own: replacing one leaves the other alone.
    const Ref<NSArray> two = array({"a"_ns, "b"_ns});
    const IMP original = class_replaceMethod(objc_getClass("__NSArrayI"), "objectAtIndex:"_sel,
                                             imp(+[](NSObject*, SEL, std::uint64_t) { return id("replaced"_ns); }));
    EXPECT_EQ(two->objectAtIndex(7)->description()->utf8(), "replaced");
    EXPECT_EQ(two->objectAtIndexedSubscript(0)->description()->utf8(), "a");
    EXPECT_EQ(raisedName([&] { static_cast<void>(two->objectAtIndexedSubscript(7)); }), NSRangeException);
    EXPECT_EQ(array({"a"_ns})->objectAtIndex(0)->description()->utf8(), "a");
    EXPECT_EQ(NSMutableArray::arrayWithArray(two)->objectAtIndex(1)->description()->utf8(), "b");
    class_replaceMethod(objc_getClass("__NSArrayI"), "objectAtIndex:"_sel, original);
    EXPECT_EQ(two->objectAtIndex(1)->description()->utf8(), "b");
}

TEST(ArraySearching, isByEquality) {
    const Ref<NSArray> list = array({"a"_ns, box(1), NSNull::null(), "a"_ns});
    EXPECT_TRUE(list->containsObject(NSString::fromUtf8("a")));
    EXPECT_EQ(list->indexOfObject(NSString::fromUtf8("a")), 0U);
    EXPECT_EQ(list->indexOfObject(box(1.0)), 1U);
    EXPECT_EQ(list->indexOfObject(NSNull::null()), 2U);
    EXPECT_EQ(list->indexOfObject("z"_ns), NSNotFound);
    EXPECT_FALSE(list->containsObject("1"_ns));
}

TEST(ArraySearching, numbersOfAnyKindAreOneValue) {
    EXPECT_TRUE(array({box(true)})->containsObject(box(1)));
    EXPECT_TRUE(array({box(1.0)})->containsObject(box(true)));
    EXPECT_FALSE(array({box(1)})->containsObject(box(2)));
    EXPECT_FALSE(array({box(1)})->containsObject("1"_ns));
}

TEST(ArraySearching, nullIsNeverFound) {
    const Ref<NSArray> list = array({"a"_ns, NSNull::null()});
    EXPECT_FALSE(list->containsObject(nullptr));
    EXPECT_EQ(list->indexOfObject(nullptr), NSNotFound);
    EXPECT_EQ(list->indexOfObjectIdenticalTo(nullptr), NSNotFound);
    EXPECT_FALSE(array({})->containsObject(nullptr));
}

TEST(ArraySearching, identityTellsEqualObjectsApart) {
    const Ref<NSString> other = NSString::fromUtf8("a");
    const Ref<NSArray> list = array({"a"_ns, other});
    EXPECT_EQ(list->indexOfObject(other), 0U);
    EXPECT_EQ(list->indexOfObjectIdenticalTo(other), 1U);
    EXPECT_EQ(list->indexOfObjectIdenticalTo("a"_ns), 0U);
    EXPECT_EQ(list->indexOfObjectIdenticalTo(NSString::fromUtf8("a")), NSNotFound);
}

TEST(ArrayEquality, isThatOfTheElementsWhateverTheKind) {
    const Ref<NSMutableArray> changing = NSMutableArray::arrayWithArray(letters());
    EXPECT_TRUE(letters()->isEqual(letters()));
    EXPECT_TRUE(letters()->isEqual(changing));
    EXPECT_TRUE(changing->isEqual(letters()));
    EXPECT_TRUE(letters()->isEqualToArray(NSArray::arrayWithArray(changing)));
    EXPECT_EQ(letters()->hash(), changing->hash());
    EXPECT_EQ(letters()->hash(), 3U);
}

TEST(ArrayEquality, orderCountAndKindMatter) {
    EXPECT_FALSE(letters()->isEqual(array({"a"_ns, "c"_ns, "b"_ns})));
    EXPECT_FALSE(letters()->isEqual(array({"a"_ns, "b"_ns})));
    EXPECT_FALSE(array({"a"_ns})->isEqual(NSSet::setWithObject("a"_ns)));
    EXPECT_FALSE(letters()->isEqual(nullptr));
    EXPECT_FALSE(letters()->isEqualToArray(nullptr));
    EXPECT_FALSE(array({})->isEqual(NSNull::null()));
    EXPECT_TRUE(array({box(1)})->isEqual(array({box(true)})));
}

TEST(ArrayDeriving, objectsAreAddedToANewArray) {
    const Ref<NSArray> list = letters();
    EXPECT_EQ(listing(list->arrayByAddingObject("d"_ns)), "a b c d");
    EXPECT_EQ(listing(list->arrayByAddingObjectsFromArray(array({"d"_ns, "e"_ns}))), "a b c d e");
    EXPECT_EQ(listing(list->arrayByAddingObjectsFromArray(nullptr)), "a b c");
    EXPECT_EQ(listing(list->arrayByAddingObjectsFromArray(list)), "a b c a b c");
    EXPECT_STREQ(object_getClassName(array({})->arrayByAddingObject("d"_ns)), "__NSSingleObjectArrayI");
    EXPECT_EQ(listing(list), "a b c");
}

TEST(ArrayDeriving, aPartIsTakenByRange) {
    EXPECT_EQ(listing(letters()->subarrayWithRange({1, 2})), "b c");
    EXPECT_EQ(listing(letters()->subarrayWithRange({0, 3})), "a b c");
    EXPECT_EQ(letters()->subarrayWithRange({3, 0})->count(), 0U);
    EXPECT_EQ(array({})->subarrayWithRange({0, 0})->count(), 0U);
    EXPECT_STREQ(object_getClassName(NSMutableArray::arrayWithArray(letters())->subarrayWithRange({0, 2})),
                 "__NSArrayI");
}

TEST(ArrayDeriving, aRangePastTheEndRaises) {
    EXPECT_EQ(raised([] {
                  static_cast<void>(letters()->subarrayWithRange({2, 5}));
              }),
              "NSRangeException: *** -[__NSArrayI subarrayWithRange:]: range {2, 5} extends beyond bounds [0 .. 2]");
    EXPECT_EQ(raisedName([] { static_cast<void>(letters()->subarrayWithRange({4, 0})); }), NSRangeException);
    // A length that makes the end wrap around to the front.
    EXPECT_EQ(raisedName([] { static_cast<void>(letters()->subarrayWithRange({2, hugeIndex})); }), NSRangeException);
    EXPECT_EQ(raisedName([] { static_cast<void>(letters()->subarrayWithRange({hugeIndex, 2})); }), NSRangeException);
    EXPECT_EQ(raisedName([] { static_cast<void>(letters()->subarrayWithRange({NSNotFound, 0})); }), NSRangeException);
}

TEST(ArrayDeriving, joiningPutsTheSeparatorBetweenDescriptions) {
    const Ref<NSArray> list = array({"a"_ns, box(1.5), NSNull::null()});
    EXPECT_EQ(list->componentsJoinedByString(", "_ns)->utf8(), "a, 1.5, <null>");
    EXPECT_EQ(list->componentsJoinedByString(""_ns)->utf8(), "a1.5<null>");
    EXPECT_EQ(list->componentsJoinedByString(nullptr)->utf8(), "a1.5<null>");
    EXPECT_EQ(array({})->componentsJoinedByString(","_ns)->utf8(), "");
    EXPECT_EQ(array({"a"_ns})->componentsJoinedByString(","_ns)->utf8(), "a");
    EXPECT_EQ(array({""_ns, ""_ns})->componentsJoinedByString(","_ns)->utf8(), ",");
}

TEST(ArrayDeriving, copiesOfImmutableArraysAreThemselves) {
    const Ref<NSArray> list = letters();
    EXPECT_EQ(list->copy().get(), list.get());
    EXPECT_EQ(array({})->copy().get(), array({}).get());
    const id changing = list->mutableCopy();
    EXPECT_STREQ(object_getClassName(changing), "__NSArrayM");
    EXPECT_TRUE(changing->isEqual(list));
    // The elements are kept, not copied.
    EXPECT_EQ(cast<NSArray>(changing)->objectAtIndex(0).get(), list->objectAtIndex(0).get());
}

NSComparisonResult byLength(NSObject* first, NSObject* second) {
    const NSUInteger a = cast<NSString>(first)->length();
    const NSUInteger b = cast<NSString>(second)->length();
    return a < b ? NSOrderedAscending : a > b ? NSOrderedDescending : NSOrderedSame;
}

TEST(ArraySorting, keepsTheOrderOfEqualElements) {
    const Ref<NSArray> list = array({"ccc"_ns, "b"_ns, "aa"_ns, "a"_ns, "dd"_ns, ""_ns});
    EXPECT_EQ(listing(list->sortedArrayUsingComparator(byLength)), " b a aa dd ccc");
    EXPECT_EQ(listing(list->sortedArrayUsingSelector("compare:"_sel)), " a aa b ccc dd");
    EXPECT_EQ(listing(list), "ccc b aa a dd ");
    EXPECT_EQ(array({})->sortedArrayUsingComparator(byLength)->count(), 0U);
    EXPECT_EQ(listing(array({"x"_ns})->sortedArrayUsingComparator(byLength)), "x");
}

TEST(ArraySorting, agreesWithTheStandardLibraryAtEverySize) {
    std::mt19937 random(7);
    for (const std::size_t size : {2U, 3U, 4U, 5U, 7U, 8U, 9U, 63U, 64U, 65U, 1000U}) {
        SCOPED_TRACE(size);
        std::vector<std::pair<int, int>> expected;
        std::vector<id> numbers;
        for (std::size_t i = 0; i < size; ++i) {
            const int value = static_cast<int>(random() % 50);
            expected.emplace_back(value, static_cast<int>(i));
            numbers.push_back(box(value * 10000 + static_cast<int>(i)));
        }
        std::stable_sort(expected.begin(), expected.end(), [](auto a, auto b) { return a.first < b.first; });
        const Ref<NSArray> sorted =
            NSArray::fromElements(numbers)->sortedArrayUsingComparator([](NSObject* first, NSObject* second) {
                const NSInteger a = cast<NSNumber>(first)->integerValue() / 10000;
                const NSInteger b = cast<NSNumber>(second)->integerValue() / 10000;
                return a < b ? NSOrderedAscending : a > b ? NSOrderedDescending : NSOrderedSame;
            });
        std::vector<std::pair<int, int>> actual;
        for (const id& number : sorted->elements()) {
            const int value = cast<NSNumber>(number)->intValue();
            actual.emplace_back(value / 10000, value % 10000);
        }
        EXPECT_EQ(actual, expected);
    }
}

TEST(ArraySorting, survivesAComparatorThatContradictsItself) {
    std::mt19937 random(3);
    std::vector<id> numbers;
    for (int i = 0; i < 500; ++i) {
        numbers.push_back(box(i));
    }
    const Ref<NSArray> list = NSArray::fromElements(numbers);
    const Ref<NSArray> sorted = list->sortedArrayUsingComparator(
        [&](NSObject*, NSObject*) { return static_cast<NSComparisonResult>(static_cast<int>(random() % 3) - 1); });
    EXPECT_EQ(sorted->count(), 500U);
    EXPECT_TRUE(NSSet::setWithArray(sorted)->isEqual(NSSet::setWithArray(list)));
    EXPECT_EQ(list->sortedArrayUsingComparator([](NSObject*, NSObject*) { return NSOrderedDescending; })->count(),
              500U);
}

TEST(ArraySorting, needsAComparatorAndPassesItsExceptionsOn) {
    EXPECT_EQ(raisedName([] { static_cast<void>(letters()->sortedArrayUsingComparator(nullptr)); }),
              NSInvalidArgumentException);
    EXPECT_EQ(
        raisedName([] {
            static_cast<void>(letters()->sortedArrayUsingComparator([](NSObject*, NSObject*) -> NSComparisonResult {
                NSException::raise(NSGenericException, "no order");
            }));
        }),
        NSGenericException);
    const Ref<NSMutableArray> changing = NSMutableArray::arrayWithObjects({"b"_ns, "a"_ns, box(1)});
    EXPECT_NE(raised([&] {
                  changing->sortUsingComparator([](NSObject* first, NSObject* second) {
                      return static_cast<NSComparisonResult>(send<NSInteger>(first, "noSuchOrder:"_sel, second));
                  });
              }),
              "");
    EXPECT_EQ(listing(changing), "b a 1");
    changing->removeLastObject();
    changing->sortUsingComparator(byLength);
    EXPECT_EQ(listing(changing), "b a");
}

TEST(ArrayDescription, listsTheElementsLineByLine) {
    EXPECT_EQ(array({})->description()->utf8(), "(\n)");
    EXPECT_EQ(array({"a"_ns})->description()->utf8(), "(\n    a\n)");
    EXPECT_EQ(array({"a"_ns, box(12)})->description()->utf8(), "(\n    a,\n    12\n)");
    EXPECT_EQ(NSMutableArray::arrayWithObject(box(true))->description()->utf8(), "(\n    1\n)");
}

TEST(ArrayDescription, quotesWhatIsNotLettersAndDigits) {
    const struct {
        const char* name;
        Ref<NSString> element;
        const char* written;
    } rows[] = {
        {"empty", ""_ns, R"("")"},
        {"blank", " "_ns, R"(" ")"},
        {"letters and digits", "aZ09"_ns, "aZ09"},
        {"underscore", "a_b"_ns, R"("a_b")"},
        {"quotation mark", "say \"hi\""_ns, R"("say \"hi\"")"},
        {"backslash", "a\\b"_ns, R"("a\\b")"},
        {"line feed and tab", "a\n\tb"_ns, R"("a\n\tb")"},
        {"control character", "a\x01"_ns, R"("a\001")"},
        {"Chinese", u"\u4EF7"_ns, R"("\U4ef7")"},
        {"emoji, two code units", u"\U0001F600"_ns, R"("\Ud83d\Ude00")"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(array({row.element})->description()->utf8(), std::string("(\n    ") + row.written + "\n)");
    }
    // Not only strings: whatever the element's description is.
    EXPECT_EQ(array({box(1.5)})->description()->utf8(), "(\n    \"1.5\"\n)");
}

TEST(ArrayDescription, indentsNestedCollections) {
    const Ref<NSArray> nested = array({array({"a"_ns, array({})}), "b"_ns});
    EXPECT_EQ(nested->description()->utf8(),
              "(\n"
              "        (\n"
              "        a,\n"
              "                (\n"
              "        )\n"
              "    ),\n"
              "    b\n"
              ")");
}

TEST(ArrayDescription, anArrayInsideItselfEnds) {
    const Ref<NSMutableArray> ring = NSMutableArray::arrayWithObject("a"_ns);
    ring->addObject(array({ring}));
    EXPECT_EQ(ring->description()->utf8(),
              "(\n"
              "    a,\n"
              "        (\n"
              "        ...\n"
              "    )\n"
              ")");
    ring->removeAllObjects();
}

TEST(ArrayMessaging, performsASelectorOnEveryElement) {
    const Ref<NSMutableString> first = NSMutableString::stringWithString("a"_ns);
    const Ref<NSMutableString> second = NSMutableString::stringWithString("b"_ns);
    const Ref<NSArray> list = array({first, second});
    list->makeObjectsPerformSelector_withObject("appendString:"_sel, "!"_ns);
    EXPECT_EQ(listing(list), "a! b!");
    list->makeObjectsPerformSelector("description"_sel);
    EXPECT_EQ(raisedName([&] { list->makeObjectsPerformSelector("noSuchOperation"_sel); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { list->makeObjectsPerformSelector(SEL()); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { list->makeObjectsPerformSelector_withObject(SEL(), "x"_ns); }),
              NSInvalidArgumentException);
    array({})->makeObjectsPerformSelector("noSuchOperation"_sel);
}

} // namespace

} // namespace zr
