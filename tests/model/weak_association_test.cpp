#include <zrbasic/model/weak_association.h>

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/association.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

constexpr char firstKey = 0;
constexpr char secondKey = 0;

TEST(WeakAssociation, holdsAnObjectWithoutKeepingItAlive) {
    const auto owner = make<NSObject>();
    auto held = make<NSObject>();
    Weak<NSObject> watch(held);
    setWeakObject_withKey(owner, held, &firstKey);
    EXPECT_EQ(weakObjectWithKey(owner, &firstKey), held);
    held = nullptr;
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(weakObjectWithKey(owner, &firstKey), nullptr);
}

TEST(WeakAssociation, keysAreToldApartByAddress) {
    const auto owner = make<NSObject>();
    const auto first = make<NSObject>();
    const auto second = make<NSObject>();
    setWeakObject_withKey(owner, first, &firstKey);
    setWeakObject_withKey(owner, second, &secondKey);
    EXPECT_EQ(weakObjectWithKey(owner, &firstKey), first);
    EXPECT_EQ(weakObjectWithKey(owner, &secondKey), second);
    EXPECT_EQ(weakObjectWithKey(owner, "never used"), nullptr);
    setWeakObject_withKey(owner, second, &firstKey);
    EXPECT_EQ(weakObjectWithKey(owner, &firstKey), second);
}

TEST(WeakAssociation, nullRemoves) {
    const auto owner = make<NSObject>();
    const auto held = make<NSObject>();
    setWeakObject_withKey(owner, held, &firstKey);
    setWeakObject_withKey(owner, nullptr, &firstKey);
    EXPECT_EQ(weakObjectWithKey(owner, &firstKey), nullptr);
    EXPECT_EQ(objc_getAssociatedObject(owner, &firstKey), nullptr) << "the box goes, too";
    setWeakObject_withKey(nullptr, held, &firstKey);
    EXPECT_EQ(weakObjectWithKey(nullptr, &firstKey), nullptr);
}

TEST(WeakAssociation, anObjectMayHoldItself) {
    auto owner = make<NSObject>();
    Weak<NSObject> watch(owner);
    setWeakObject_withKey(owner, owner, &firstKey);
    EXPECT_EQ(weakObjectWithKey(owner, &firstKey), owner);
    owner = nullptr;
    EXPECT_TRUE(watch.expired());
}

TEST(WeakAssociation, theBoxIsMadeForObjectsOnly) {
    const auto held = make<NSObject>();
    EXPECT_EQ(_ZRWeakAssociation::associationWithWeakObject(held)->object(), held);
    EXPECT_EQ(_ZRWeakAssociation::associationWithWeakObject(nullptr), nullptr);
    EXPECT_NE(_ZRWeakAssociation::associationWithWeakObject(held), _ZRWeakAssociation::associationWithWeakObject(held));
    const auto owner = make<NSObject>();
    objc_setAssociatedObject(owner, &firstKey, box(1), OBJC_ASSOCIATION_RETAIN);
    EXPECT_EQ(weakObjectWithKey(owner, &firstKey), nullptr) << "somebody else's attachment is no box";
}

} // namespace
