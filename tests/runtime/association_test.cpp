#include "sample_model.h"

#include <zrbasic/platform/runtime/association.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::witness;

const char firstKey = 0;
const char secondKey = 0;

TEST(Association, isFoundUnderTheAddressOfItsKey) {
    const id object = make<NSObject>();
    const id first = make<NSObject>();
    const id second = make<NSObject>();
    objc_setAssociatedObject(object, &firstKey, first, OBJC_ASSOCIATION_RETAIN);
    objc_setAssociatedObject(object, &secondKey, second, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
    EXPECT_EQ(objc_getAssociatedObject(object, &firstKey), first);
    EXPECT_EQ(objc_getAssociatedObject(object, &secondKey), second);
    EXPECT_EQ(objc_getAssociatedObject(first, &firstKey), nullptr);
    EXPECT_EQ(objc_getAssociatedObject(object, nullptr), nullptr);
}

TEST(Association, isKeptAndReplacedAndRemoved) {
    std::string log;
    const id object = make<NSObject>();
    objc_setAssociatedObject(object, &firstKey, witness(log, 'a'), OBJC_ASSOCIATION_RETAIN);
    EXPECT_EQ(log, "");
    objc_setAssociatedObject(object, &firstKey, witness(log, 'b'), OBJC_ASSOCIATION_RETAIN);
    EXPECT_EQ(log, "a");
    objc_setAssociatedObject(object, &firstKey, nullptr, OBJC_ASSOCIATION_RETAIN);
    EXPECT_EQ(log, "ab");
    EXPECT_EQ(objc_getAssociatedObject(object, &firstKey), nullptr);
}

TEST(Association, endsAfterTheObjectsOwnVariables) {
    std::string log;
    {
        const auto object = witness(log, 'x');
        object->held = witness(log, 'v');
        objc_setAssociatedObject(object, &firstKey, witness(log, 'a'), OBJC_ASSOCIATION_RETAIN);
        objc_setAssociatedObject(object, &secondKey, witness(log, 'b'), OBJC_ASSOCIATION_RETAIN);
    }
    EXPECT_EQ(log, "xvab");
}

TEST(Association, theAssignPolicyKeepsNothing) {
    std::string log;
    const id object = make<NSObject>();
    auto value = witness(log, 'a');
    objc_setAssociatedObject(object, &firstKey, value, OBJC_ASSOCIATION_ASSIGN);
    EXPECT_EQ(objc_getAssociatedObject(object, &firstKey), value);
    objc_setAssociatedObject(object, &firstKey, nullptr, OBJC_ASSOCIATION_ASSIGN);
    value = nullptr;
    EXPECT_EQ(log, "a");
}

class Copying : public NSObject {
    ZR_OBJECT(Copying, NSObject)

  public:
    id copy() const override { return make<NSObject>(); }
};

TEST(Association, theCopyPoliciesCopyWhenSet) {
    const id object = make<NSObject>();
    const id value = make<Copying>();
    for (const auto policy : {OBJC_ASSOCIATION_COPY, OBJC_ASSOCIATION_COPY_NONATOMIC}) {
        objc_setAssociatedObject(object, &firstKey, value, policy);
        const id attached = objc_getAssociatedObject(object, &firstKey);
        EXPECT_NE(attached, nullptr);
        EXPECT_NE(attached, value);
    }
    EXPECT_THROW(objc_setAssociatedObject(object, &firstKey, make<NSObject>(), OBJC_ASSOCIATION_COPY), NSException);
}

TEST(Association, policyValuesAreThePlatforms) {
    EXPECT_EQ(OBJC_ASSOCIATION_ASSIGN, 0U);
    EXPECT_EQ(OBJC_ASSOCIATION_RETAIN_NONATOMIC, 1U);
    EXPECT_EQ(OBJC_ASSOCIATION_COPY_NONATOMIC, 3U);
    EXPECT_EQ(OBJC_ASSOCIATION_RETAIN, 769U);
    EXPECT_EQ(OBJC_ASSOCIATION_COPY, 771U);
}

TEST(Association, nullObjectsAreIgnored) {
    objc_setAssociatedObject(nullptr, &firstKey, make<NSObject>(), OBJC_ASSOCIATION_RETAIN);
    EXPECT_EQ(objc_getAssociatedObject(nullptr, &firstKey), nullptr);
    objc_removeAssociatedObjects(nullptr);
}

TEST(Association, removingAllLetsGoOfEverything) {
    std::string log;
    const id object = make<NSObject>();
    objc_setAssociatedObject(object, &firstKey, witness(log, 'a'), OBJC_ASSOCIATION_RETAIN);
    objc_setAssociatedObject(object, &secondKey, witness(log, 'b'), OBJC_ASSOCIATION_RETAIN);
    objc_removeAssociatedObjects(object);
    EXPECT_EQ(log, "ab");
    objc_removeAssociatedObjects(make<NSObject>());
}

TEST(Association, classesCarryThemToo) {
    objc_setAssociatedObject(test::Sample::classObject(), &firstKey, "note"_ns, OBJC_ASSOCIATION_RETAIN);
    EXPECT_EQ(objc_getAssociatedObject(test::Sample::classObject(), &firstKey), "note"_ns);
}

TEST(Synchronized, theSameThreadMayLockAgainAndNullLocksNothing) {
    const id object = make<NSObject>();
    const Synchronized outer(object);
    const Synchronized inner(object);
    const Synchronized nothing(nullptr);
    EXPECT_NE(object, nullptr);
}

TEST(Synchronized, keepsItsObjectAliveAndLetsGoOnExceptions) {
    std::string log;
    auto object = witness(log, 'a');
    try {
        const Synchronized lock(object);
        object = nullptr;
        EXPECT_EQ(log, "");
        NSException::raise(NSGenericException, "out");
    } catch (const NSException&) {
        EXPECT_EQ(log, "a");
    }
}

} // namespace
} // namespace zr
