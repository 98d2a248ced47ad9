#include <zrbasic/collections/array_difference.h>

#include "elements.h"

#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace zr {

namespace {

using test::countedTo;
using test::elements;
using test::Forgetful;
using test::OneSided;

/// "intersection | newest | oldest".
std::string parts(const Ref<ZRArrayDifference>& difference) {
    return difference ? elements(difference->intersection()) + " | " + elements(difference->newest()) + " | " +
                            elements(difference->oldest())
                      : "no difference";
}

std::string differ(const Ref<NSArray>& older, const Ref<NSArray>& newer) {
    return parts(differenceFrom(older, newer));
}

Ref<NSArray> words(const std::vector<const char*>& texts) {
    std::vector<id> strings;
    for (const char* const text : texts) {
        strings.push_back(NSString::fromUtf8(text));
    }
    return NSArray::fromElements(std::move(strings));
}

TEST(ArrayDifference, saysWhatStayedWhatCameAndWhatWent) {
    const struct {
        const char* name;
        std::vector<const char*> older;
        std::vector<const char*> newer;
        const char* parts;
    } rows[] = {
        {"the newer list's order", {"a", "b", "c"}, {"c", "d", "a"}, "c a | d | b"},
        {"twice before, once now", {"a", "a", "b"}, {"a"}, "a |  | b"},
        {"once before, twice now", {"a"}, {"a", "a"}, "a |  | "},
        {"from nothing", {}, {"x", "x"}, " | x x | "},
        {"to nothing", {"x", "y", "x"}, {}, " |  | x y x"},
        {"nothing at all", {}, {}, " |  | "},
        {"nothing in common", {"a", "b"}, {"c", "d"}, " | c d | a b"},
        {"only moved", {"a", "b"}, {"b", "a"}, "b a |  | "},
        {"repeated among what stays", {"a", "b", "a", "z"}, {"q", "b", "q", "a", "b"}, "b a | q q | z"},
        {"a common one between repeated ones", {"k", "o", "o"}, {"n", "k", "n"}, "k | n n | o o"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(differ(words(row.older), words(row.newer)), row.parts);
    }
}

TEST(ArrayDifference, countsValuesAndNotObjects) {
    EXPECT_EQ(differ(array({box(1), box(2)}), array({box(2.0), box(true), "1"_ns})), "2 1 | 1 | ");
    const Ref<NSString> changeable = NSMutableString::stringWithString("a"_ns);
    EXPECT_EQ(differ(array({"a"_ns}), array({changeable})), "a |  | ");
    EXPECT_EQ(differ(array({array({box(1)}), NSNull::null()}), array({NSNull::null(), array({box(1.0)})}))
                  .find("<null> (\n    1\n) | "),
              0U);
    // Of equal ones the newer list's object is what both have in common.
    const Ref<NSArray> newer = words({"a"});
    EXPECT_EQ(differenceFrom(words({"a"}), newer)->intersection()->firstObject(), newer->firstObject());
}

TEST(ArrayDifference, comparesNumbersExactlyAcrossKinds) {
    // The double equals the integer as well as the decimal, which do not equal each other.
    const std::int64_t wide = 1152921504606846976;
    const id integer = box(wide);
    const id fraction = box(static_cast<double>(wide));
    const id decimal = NSDecimalNumber::decimalNumberWithString("1152921504606847000"_ns);
    const Ref<ZRArrayDifference> apart = differenceFrom(array({integer}), array({decimal, decimal}));
    EXPECT_EQ(apart->intersection()->count(), 0U);
    EXPECT_EQ(apart->newest()->count(), 2U);
    EXPECT_EQ(apart->oldest()->count(), 1U);
    const Ref<ZRArrayDifference> joined = differenceFrom(array({integer, decimal}), array({fraction, decimal}));
    EXPECT_EQ(joined->intersection()->count(), 1U);
    EXPECT_EQ(joined->intersection()->firstObject(), fraction);
    EXPECT_EQ(joined->newest()->count(), 0U);
    EXPECT_EQ(joined->oldest()->count(), 0U);
    const Ref<ZRArrayDifference> both = differenceFrom(array({fraction, integer}), array({decimal, integer}));
    EXPECT_EQ(both->intersection()->count(), 2U);
    EXPECT_EQ(both->newest()->count(), 0U);
}

TEST(ArrayDifference, asksTheElementsOfTheListThatIsSearched) {
    const id oneSided = make<OneSided>();
    // In the older list it says that it equals the string.
    EXPECT_EQ(differ(array({oneSided, box(1)}), words({"x", "y"})), "x | y | 1");
    // In the newer one nobody asks it: the string does not equal it.
    EXPECT_EQ(differ(words({"x", "y"}), array({oneSided, "y"_ns})), "y |  | x");
    EXPECT_EQ(differ(words({"x"}), array({oneSided})), " | ? | x");
    // A class without a hash of its own is compared all the same.
    EXPECT_EQ(differ(array({Forgetful::of(1), Forgetful::of(2), "x"_ns}), array({Forgetful::of(2), Forgetful::of(3)})),
              "2 | 3 | 1 x");
}

TEST(ArrayDifference, theVeryObjectEqualsItselfWhateverItSays) {
    const id changeable = NSMutableArray::array();
    const id notANumber = box(std::nan(""));
    const Ref<NSArray> list = array({changeable, notANumber, NSNull::null()});
    const Ref<ZRArrayDifference> same = differenceFrom(list, list);
    EXPECT_TRUE(same->intersection()->isEqual(list));
    EXPECT_EQ(same->newest()->count(), 0U);
    EXPECT_EQ(same->oldest()->count(), 0U);
}

TEST(ArrayDifference, aNullListIsNotAnEmptyOne) {
    const Ref<NSArray> list = words({"a", "b", "a"});
    EXPECT_EQ(differ(list, nullptr), " | no array | a b a");
    EXPECT_EQ(differ(array({make<OneSided>()}), nullptr), " | no array | ?");
    EXPECT_EQ(differ(array({}), nullptr), " | no array | ");
    EXPECT_EQ(differ(list, array({})), " |  | a b a");
    EXPECT_FALSE(differenceFrom(nullptr, list));
    EXPECT_FALSE(differenceFrom(nullptr, nullptr));
}

TEST(ArrayDifference, leavesTheListsAloneAndOwnsItsOwn) {
    const Ref<NSMutableArray> older = NSMutableArray::arrayWithArray(words({"a", "b"}));
    const Ref<NSMutableArray> newer = NSMutableArray::arrayWithArray(words({"b", "c"}));
    const Ref<ZRArrayDifference> difference = differenceFrom(older, newer);
    older->removeAllObjects();
    newer->removeAllObjects();
    EXPECT_EQ(parts(difference), "b | c | a");
    for (const Ref<NSArray>& part : {difference->intersection(), difference->newest(), difference->oldest()}) {
        ASSERT_NE(cast<NSMutableArray>(part.get()), nullptr);
    }
    cast<NSMutableArray>(difference->oldest().get())->addObject("z"_ns);
    EXPECT_EQ(parts(difference), "b | c | a z");
}

TEST(ArrayDifference, isAPlainRecord) {
    const Ref<ZRArrayDifference> record = make<ZRArrayDifference>();
    EXPECT_EQ(parts(record), "no array | no array | no array");
    record->setIntersection(words({"i"}));
    record->setNewest(words({"n"}));
    record->setOldest(words({"o"}));
    EXPECT_EQ(parts(record), "i | n | o");
    record->setNewest(nullptr);
    EXPECT_EQ(parts(record), "i | no array | o");
    send(record, "setOldest:"_sel, words({"p"}));
    EXPECT_EQ(elements(send<Ref<NSArray>>(record, "oldest"_sel)), "p");
    std::string names;
    for (const Property property : class_copyPropertyList(ZRArrayDifference::classObject())) {
        names += std::string(property_getName(property)) + ' ';
    }
    EXPECT_EQ(names, "intersection newest oldest ");
}

TEST(ArrayDifference, answersMessages) {
    EXPECT_EQ(parts(send<Ref<ZRArrayDifference>>(words({"a", "b"}), "differenceFrom:"_sel, words({"b"}))), "b |  | a");
    // What is no array counts as null.
    EXPECT_EQ(parts(send<Ref<ZRArrayDifference>>(words({"a"}), "differenceFrom:"_sel, "b"_ns)), " | no array | a");
    EXPECT_EQ(parts(send<Ref<ZRArrayDifference>>(words({"a"}), "differenceFrom:"_sel, nullptr)), " | no array | a");
    EXPECT_FALSE(send<id>(nullptr, "differenceFrom:"_sel, words({"b"})));
}

TEST(ArrayDifference, takesATimeInProportionToTheLengthForPlainValues) {
    constexpr int count = 100'000;
    const Ref<NSArray> older = countedTo(count);
    std::vector<int> values;
    for (int i = 0; i < count; ++i) {
        values.push_back(count / 2 + i);
    }
    const Ref<ZRArrayDifference> difference = differenceFrom(older, test::numbers(values));
    EXPECT_EQ(difference->intersection()->count(), count / 2U);
    EXPECT_EQ(difference->newest()->count(), count / 2U);
    EXPECT_EQ(difference->oldest()->count(), count / 2U);
    EXPECT_EQ(test::intOf(difference->newest()->firstObject()), count);
    const Ref<NSArray> same = NSArray::fromElements(std::vector<id>(count, "same"_ns));
    EXPECT_EQ(differenceFrom(same, same)->intersection()->count(), 1U);
    const Ref<NSArray> other = NSArray::fromElements(std::vector<id>(count, "other"_ns));
    EXPECT_EQ(differenceFrom(same, other)->newest()->count(), NSUInteger(count));
}

} // namespace

} // namespace zr
