#include <zrbasic/collections/set_sequence.h>

#include "../foundation/checks.h"
#include "elements.h"

#include <zrbasic/collections/sequence.h>
#include <zrbasic/collections/sequence_editing.h>
#include <zrbasic/platform/foundation/mutable_set.h>
#include <zrbasic/platform/foundation/null.h>

#include <gtest/gtest.h>

namespace zr {

namespace {

using test::countedTo;
using test::elements;
using test::intOf;
using test::raisedName;

const Ref<NSSet> noSet;
const Ref<NSMutableSet> noMutableSet;

/// A class below the mutable set.
class Basket : public NSMutableSet {
    ZR_OBJECT(Basket, NSMutableSet)
};

Ref<NSSet> letters() {
    return NSSet::setWithObjects({"a"_ns, "b"_ns, "c"_ns});
}

std::string members(const Ref<NSSet>& set) {
    return set ? elements(set->allObjects()) : "no set";
}

TEST(SetOfOneObject, isOfTheReceivingClass) {
    EXPECT_EQ(members(zr_setWithObject("a"_ns)), "a");
    EXPECT_EQ(members(zr_setWithObject(nullptr)), "");
    const Ref<NSMutableSet> changeable = zr_setWithObject<NSMutableSet>("a"_ns);
    changeable->addObject("b"_ns);
    EXPECT_EQ(members(changeable), "a b");
    const Ref<NSMutableSet> empty = zr_setWithObject<NSMutableSet>(nullptr);
    empty->addObject("z"_ns);
    EXPECT_EQ(members(zr_setWithObject<NSMutableSet>(nullptr)), "");
    EXPECT_EQ(members(zr_setWithObject<Basket>("a"_ns)), "a");
    EXPECT_EQ(members(zr_setWithObject<Basket>(nullptr)), "");
    EXPECT_EQ(members(zr_setWithObject(NSNull::null())), "<null>");
}

TEST(SetOfOneObject, isOfTheReceivingClassByMessageToo) {
    const auto make = [](Class* setClass, NSObject* object) {
        return send<Ref<NSSet>>(setClass, "zr_setWithObject:"_sel, object);
    };
    EXPECT_EQ(members(make(NSSet::classObject(), "a"_ns)), "a");
    EXPECT_EQ(members(make(NSSet::classObject(), nullptr)), "");
    EXPECT_FALSE(make(NSSet::classObject(), nullptr)->isKindOfClass(NSMutableSet::classObject()));
    EXPECT_TRUE(make(NSMutableSet::classObject(), nullptr)->isKindOfClass(NSMutableSet::classObject()));
    EXPECT_EQ(members(make(NSMutableSet::classObject(), "a"_ns)), "a");
    EXPECT_TRUE(make(Basket::classObject(), "a"_ns)->isKindOfClass(Basket::classObject()));
    EXPECT_EQ(members(make(Basket::classObject(), "a"_ns)), "a");
}

TEST(SetExtending, isTheReceiverItselfForNull) {
    for (const Ref<NSSet>& set : {letters(), Ref<NSSet>(NSMutableSet::setWithSet(letters()))}) {
        EXPECT_EQ(zr_setByAddingObject(set, nullptr), set);
        EXPECT_EQ(zr_setByAddingObjectsFromSet(set, nullptr), set);
        EXPECT_EQ(zr_setByAddingObjectsFromArray(set, nullptr), set);
    }
    EXPECT_FALSE(zr_setByAddingObject(nullptr, "a"_ns));
    EXPECT_FALSE(zr_setByAddingObjectsFromSet(nullptr, letters()));
    EXPECT_FALSE(zr_setByAddingObjectsFromArray(nullptr, array({"a"_ns})));
}

TEST(SetExtending, isANewSetOtherwise) {
    const Ref<NSMutableSet> set = NSMutableSet::setWithSet(letters());
    EXPECT_EQ(members(zr_setByAddingObject(set, "d"_ns)), "a b c d");
    EXPECT_NE(zr_setByAddingObject(set, "a"_ns), set);
    EXPECT_EQ(members(zr_setByAddingObject(set, NSNull::null())), "a b c <null>");
    EXPECT_EQ(members(zr_setByAddingObjectsFromSet(set, NSSet::setWithObjects({"c"_ns, "d"_ns}))), "a b c d");
    EXPECT_EQ(members(zr_setByAddingObjectsFromArray(set, array({"d"_ns, "d"_ns, "a"_ns}))), "a b c d");
    EXPECT_EQ(members(zr_setByAddingObjectsFromArray(set, array({}))), "a b c");
    EXPECT_EQ(members(zr_setByAddingObjectsFromSet(set, set)), "a b c");
    EXPECT_EQ(members(set), "a b c");
}

TEST(SetMap, givesAnArrayWhereEqualResultsStayApart) {
    const Ref<NSMutableArray> mapped = zr_map(letters(), [](NSObject*) { return "same"_ns; });
    EXPECT_EQ(elements(mapped), "same same same");
    EXPECT_STREQ(object_getClassName(mapped), "__NSArrayM");
    EXPECT_EQ(elements(zr_map(letters(),
                              [](NSObject* member) {
                                  return member == "b"_ns ? id() : id(cast<NSString>(member)->uppercaseString());
                              })),
              "A C");
    EXPECT_EQ(elements(zr_map(letters(), nullptr)), "");
    EXPECT_EQ(elements(zr_map(NSSet::set(), [](NSObject* member) { return id(member); })), "");
    EXPECT_FALSE(zr_map(noSet, [](NSObject* member) { return id(member); }));
}

TEST(SetFilter, givesAnArrayAndNeverASet) {
    const Ref<NSMutableArray> kept = zr_filter(letters(), [](NSObject* member) { return member != "b"_ns; });
    EXPECT_STREQ(object_getClassName(kept), "__NSArrayM");
    EXPECT_EQ(elements(kept), "a c");
    EXPECT_EQ(elements(zr_filter(letters(), [](NSObject*) { return false; })), "");
    EXPECT_EQ(elements(zr_filter(letters(), nullptr)), "");
    EXPECT_EQ(elements(zr_filter(NSSet::set(), [](NSObject*) { return true; })), "");
    EXPECT_FALSE(zr_filter(noSet, [](NSObject*) { return true; }));
}

TEST(SetExists, givesTheMemberItself) {
    const Ref<NSSet> set = letters();
    int calls = 0;
    const id found = zr_exists(set, [&](NSObject* member) { return ++calls, member->isEqual("b"_ns); });
    EXPECT_EQ(found, set->member("b"_ns));
    EXPECT_EQ(calls, 2);
    EXPECT_FALSE(zr_exists(set, [](NSObject*) { return false; }));
    EXPECT_FALSE(zr_exists(set, nullptr));
    EXPECT_FALSE(zr_exists(NSSet::set(), [](NSObject*) { return true; }));
    EXPECT_FALSE(zr_exists(noSet, [](NSObject*) { return true; }));
}

TEST(MutableSetEditing, ignoresNull) {
    const Ref<NSMutableSet> set = NSMutableSet::setWithSet(letters());
    zr_addObject(set, nullptr);
    zr_removeObject(set, nullptr);
    zr_addObjectsFromArray(set, nullptr);
    zr_addObjectsFromArray(set, array({}));
    EXPECT_EQ(members(set), "a b c");
    EXPECT_FALSE(zr_containsObject(set, nullptr));
    zr_addObject(set, "d"_ns);
    zr_addObject(set, NSString::fromUtf8("a"));
    zr_removeObject(set, NSString::fromUtf8("b"));
    zr_removeObject(set, "z"_ns);
    zr_addObjectsFromArray(set, array({"e"_ns, "c"_ns}));
    EXPECT_EQ(members(set), "a c d e");
    EXPECT_TRUE(zr_containsObject(set, NSString::fromUtf8("e")));
    EXPECT_FALSE(zr_containsObject(set, "b"_ns));
}

TEST(MutableSetEditing, takesTheNullObjectForAnObject) {
    const Ref<NSMutableSet> set = NSMutableSet::set();
    zr_addObject(set, NSNull::null());
    EXPECT_TRUE(zr_containsObject(set, NSNull::null()));
    zr_removeObject(set, NSNull::null());
    EXPECT_EQ(set->count(), 0U);
    zr_addObject(noMutableSet, "a"_ns);
    zr_removeObject(noMutableSet, "a"_ns);
    zr_addObjectsFromArray(noMutableSet, array({"a"_ns}));
    EXPECT_FALSE(zr_containsObject(noMutableSet, "a"_ns));
}

TEST(SetMessages, areAnswered) {
    const auto self = [](NSObject* member) { return id(member); };
    const auto isB = [](NSObject* member) { return member == "b"_ns; };
    const Ref<NSMutableSet> set = NSMutableSet::setWithSet(letters());
    EXPECT_EQ(elements(send<Ref<NSArray>>(set, "zr_map:"_sel, ElementTransform(self))), "a b c");
    EXPECT_EQ(elements(send<Ref<NSArray>>(set, "zr_filter:"_sel, ElementPredicate(isB))), "b");
    EXPECT_EQ(send<id>(set, "zr_exists:"_sel, ElementPredicate(isB)), "b"_ns);
    send(set, "zr_addObject:"_sel, "d"_ns);
    send(set, "zr_removeObject:"_sel, "a"_ns);
    send(set, "zr_addObjectsFromArray:"_sel, array({"e"_ns}));
    // What is no array counts as null.
    send(set, "zr_addObjectsFromArray:"_sel, letters());
    EXPECT_EQ(members(set), "b c d e");
    EXPECT_TRUE(send<bool>(set, "zr_containsObject:"_sel, "b"_ns));
    EXPECT_EQ(send<id>(set, "zr_setByAddingObject:"_sel, nullptr), set);
    EXPECT_EQ(send<id>(set, "zr_setByAddingObjectsFromSet:"_sel, array({"z"_ns})), set);
    EXPECT_EQ(send<Ref<NSSet>>(set, "zr_setByAddingObjectsFromArray:"_sel, array({"z"_ns}))->count(), 5U);
    EXPECT_FALSE(letters()->respondsToSelector("zr_addObject:"_sel));
}

TEST(SetSize, aHundredThousandMembersAreNothingSpecial) {
    constexpr int count = 100'000;
    const Ref<NSMutableSet> set = NSMutableSet::set();
    zr_addObjectsFromArray(set, countedTo(count));
    EXPECT_EQ(zr_map(set, [](NSObject*) { return "same"_ns; })->count(), NSUInteger(count));
    EXPECT_EQ(zr_filter(set, [](NSObject* number) { return intOf(number) % 2 == 0; })->count(), count / 2U);
    EXPECT_EQ(intOf(zr_exists(set, [](NSObject* number) { return intOf(number) == count - 1; })), count - 1);
    EXPECT_EQ(zr_setByAddingObjectsFromSet(set, set)->count(), NSUInteger(count));
    EXPECT_EQ(zr_setByAddingObject(set, box(-1))->count(), count + 1U);
}

} // namespace

} // namespace zr
