#include <zrbasic/platform/foundation/set.h>

#include "checks.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_set.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

std::string listing(const Ref<NSSet>& members) {
    return members ? members->allObjects()->componentsJoinedByString(" "_ns)->utf8() : "no set";
}

Ref<NSSet> letters() {
    return NSSet::setWithObjects({"a"_ns, "b"_ns, "c"_ns});
}

TEST(SetMaking, equalObjectsAreOneMember) {
    EXPECT_EQ(listing(NSSet::setWithArray(array({"a"_ns, "b"_ns, NSString::fromUtf8("a")}))), "a b");
    EXPECT_EQ(NSSet::setWithObjects({box(1), box(1.0), box(true)})->count(), 1U);
    EXPECT_EQ(NSSet::setWithObjects({box(1), "1"_ns})->count(), 2U);
    EXPECT_EQ(listing(NSSet::setWithSet(letters())), "a b c");
    EXPECT_EQ(listing(make<NSSet>(&NSSet::initWithArray, array({"x"_ns}))), "x");
    EXPECT_EQ(listing(make<NSSet>(&NSSet::initWithSet, letters())), "a b c");
}

TEST(SetMaking, nullCountsAsEmptyAndRaisesAsAMember) {
    EXPECT_EQ(NSSet::setWithArray(nullptr).get(), NSSet::set().get());
    EXPECT_EQ(NSSet::setWithSet(nullptr)->count(), 0U);
    EXPECT_EQ(make<NSSet>().get(), NSSet::set().get());
    EXPECT_EQ(raisedName([] { static_cast<void>(NSSet::setWithObject(nullptr)); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] {
                  static_cast<void>(NSSet::setWithObjects({"a"_ns, nullptr}));
              }),
              NSInvalidArgumentException);
    EXPECT_TRUE(NSSet::setWithObject(NSNull::null())->containsObject(NSNull::null()));
}

TEST(SetMaking, kinds) {
    EXPECT_TRUE(make<NSMutableSet>()->isKindOfClass(NSSet::classObject()));
    EXPECT_TRUE(make<NSMutableSet>()->isKindOfClass(NSMutableSet::classObject()));
    EXPECT_FALSE(letters()->isKindOfClass(NSMutableSet::classObject()));
    EXPECT_EQ(NSMutableSet::setWithCapacity(std::numeric_limits<NSUInteger>::max())->count(), 0U);
    EXPECT_STREQ(object_getClassName(make<NSMutableSet>(&NSMutableSet::initWithCapacity, 3)), "__NSSetM");
}

TEST(SetMembership, isByEquality) {
    const Ref<NSSet> members = letters();
    const Ref<NSString> twin = NSString::fromUtf8("a");
    EXPECT_TRUE(members->containsObject(twin));
    EXPECT_NE(members->member(twin).get(), twin.get());
    EXPECT_EQ(members->member(twin).get(), ("a"_ns).get());
    EXPECT_FALSE(members->containsObject("z"_ns));
    EXPECT_FALSE(members->member("z"_ns));
    EXPECT_FALSE(members->containsObject(nullptr));
    EXPECT_FALSE(members->member(nullptr));
    EXPECT_TRUE(members->containsObject(members->anyObject()));
    EXPECT_FALSE(NSSet::set()->anyObject());
}

TEST(SetRelations, subsetsAndIntersections) {
    const Ref<NSSet> ab = NSSet::setWithObjects({"a"_ns, "b"_ns});
    EXPECT_TRUE(ab->isSubsetOfSet(letters()));
    EXPECT_FALSE(letters()->isSubsetOfSet(ab));
    EXPECT_TRUE(ab->isSubsetOfSet(ab));
    EXPECT_TRUE(NSSet::set()->isSubsetOfSet(nullptr));
    EXPECT_FALSE(ab->isSubsetOfSet(nullptr));
    EXPECT_TRUE(ab->intersectsSet(NSSet::setWithObjects({"b"_ns, "z"_ns})));
    EXPECT_FALSE(ab->intersectsSet(NSSet::setWithObject("z"_ns)));
    EXPECT_FALSE(ab->intersectsSet(nullptr));
}

TEST(SetRelations, equalityIgnoresOrderAndMutability) {
    EXPECT_TRUE(letters()->isEqual(NSSet::setWithObjects({"c"_ns, "b"_ns, "a"_ns})));
    EXPECT_TRUE(letters()->isEqual(letters()->mutableCopy()));
    EXPECT_EQ(letters()->hash(), 3U);
    EXPECT_FALSE(letters()->isEqual(NSSet::setWithObjects({"a"_ns, "b"_ns, "z"_ns})));
    EXPECT_FALSE(letters()->isEqual(array({"a"_ns, "b"_ns, "c"_ns})));
    EXPECT_FALSE(letters()->isEqual(nullptr));
    EXPECT_FALSE(letters()->isEqualToSet(nullptr));
    EXPECT_FALSE(NSSet::set()->isEqual(NSNull::null()));
}

TEST(SetDeriving, addsToANewSet) {
    const Ref<NSSet> members = letters();
    EXPECT_EQ(listing(members->setByAddingObject("d"_ns)), "a b c d");
    EXPECT_EQ(listing(members->setByAddingObject("a"_ns)), "a b c");
    EXPECT_EQ(listing(members->setByAddingObjectsFromSet(NSSet::setWithObjects({"b"_ns, "e"_ns}))), "a b c e");
    EXPECT_EQ(listing(members->setByAddingObjectsFromArray(array({"e"_ns, "e"_ns}))), "a b c e");
    EXPECT_EQ(listing(members->setByAddingObjectsFromSet(nullptr)), "a b c");
    EXPECT_EQ(raisedName([&] { static_cast<void>(members->setByAddingObject(nullptr)); }), NSInvalidArgumentException);
    EXPECT_EQ(listing(members), "a b c");
}

TEST(MutableSet, addsAndRemoves) {
    const Ref<NSMutableSet> members = NSMutableSet::set();
    members->addObject("a"_ns);
    members->addObject(NSString::fromUtf8("a"));
    members->addObjectsFromArray(array({"b"_ns, "c"_ns, "b"_ns}));
    members->addObjectsFromArray(nullptr);
    EXPECT_EQ(listing(members), "a b c");
    members->removeObject("b"_ns);
    members->removeObject("z"_ns);
    members->removeObject(nullptr);
    EXPECT_EQ(listing(members), "a c");
    EXPECT_EQ(raised([&] { members->addObject(nullptr); }),
              "NSInvalidArgumentException: *** -[__NSSetM addObject:]: object cannot be nil");
    members->removeAllObjects();
    members->removeAllObjects();
    EXPECT_EQ(members->count(), 0U);
}

TEST(MutableSet, setAlgebra) {
    const Ref<NSMutableSet> members = NSMutableSet::setWithSet(letters());
    members->unionSet(NSSet::setWithObjects({"c"_ns, "d"_ns}));
    EXPECT_EQ(listing(members), "a b c d");
    members->minusSet(NSSet::setWithObjects({"a"_ns, "z"_ns}));
    EXPECT_EQ(listing(members), "b c d");
    members->intersectSet(NSSet::setWithObjects({"b"_ns, "d"_ns, "z"_ns}));
    EXPECT_EQ(listing(members), "b d");
    members->setSet(letters());
    EXPECT_EQ(listing(members), "a b c");
}

TEST(MutableSet, algebraWithItselfAndWithNull) {
    const Ref<NSMutableSet> members = NSMutableSet::setWithSet(letters());
    members->unionSet(members);
    members->unionSet(nullptr);
    members->minusSet(nullptr);
    members->intersectSet(members);
    members->setSet(members);
    EXPECT_EQ(listing(members), "a b c");
    members->minusSet(members);
    EXPECT_EQ(members->count(), 0U);
    members->setSet(letters());
    members->intersectSet(nullptr);
    EXPECT_EQ(members->count(), 0U);
    members->setSet(nullptr);
    EXPECT_EQ(members->count(), 0U);
}

TEST(MutableSet, copiesDoNotChangeAnyMore) {
    const Ref<NSMutableSet> members = NSMutableSet::setWithSet(letters());
    const id copied = members->copy();
    members->removeAllObjects();
    EXPECT_TRUE(copied->isEqual(letters()));
    EXPECT_EQ(copied->copy().get(), copied.get());
    EXPECT_EQ(cast<NSMutableSet>(copied), nullptr);
    EXPECT_FALSE(copied->respondsToSelector("addObject:"_sel));
}

TEST(MutableSet, answersMessages) {
    const id members = send<id>(NSMutableSet::classObject(), "setWithArray:"_sel, array({"a"_ns}));
    send<void>(members, "addObject:"_sel, "b"_ns);
    send<void>(members, "unionSet:"_sel, letters());
    EXPECT_EQ(send<NSUInteger>(members, "count"_sel), 3U);
    EXPECT_TRUE(send<bool>(members, "containsObject:"_sel, "c"_ns));
    // An argument of another kind counts as null.
    send<void>(members, "minusSet:"_sel, array({"a"_ns}));
    EXPECT_EQ(send<NSUInteger>(members, "count"_sel), 3U);
}

TEST(SetDescription, isInDoubleBrackets) {
    EXPECT_EQ(NSSet::set()->description()->utf8(), "{(\n)}");
    EXPECT_EQ(NSSet::setWithObjects({"a"_ns, "b c"_ns})->description()->utf8(), "{(\n    a,\n    \"b c\"\n)}");
    EXPECT_EQ(dictionary({{"s"_ns, NSSet::setWithObject(box(1))}})->description()->utf8(),
              "{\n    s =     {(\n        1\n    )};\n}");
    EXPECT_EQ(raisedName([] { letters()->makeObjectsPerformSelector(SEL()); }), NSInvalidArgumentException);
}

} // namespace

} // namespace zr
