#include "sample_model.h"

#include <zrbasic/platform/foundation/runtime_names.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::PlainSample;
using test::Sample;

TEST(Class, kindsFollowTheChainOfParents) {
    const auto object = make<PlainSample>();
    EXPECT_TRUE(object->isKindOfClass(PlainSample::classObject()));
    EXPECT_TRUE(object->isKindOfClass(Sample::classObject()));
    EXPECT_TRUE(object->isKindOfClass(NSObject::classObject()));
    EXPECT_FALSE(object->isKindOfClass(NSString::classObject()));
    EXPECT_FALSE(object->isKindOfClass(nullptr));
    EXPECT_TRUE(object->isMemberOfClass(PlainSample::classObject()));
    EXPECT_FALSE(object->isMemberOfClass(Sample::classObject()));
}

TEST(Class, castGivesNullForAnotherKindAndForNull) {
    const id object = make<PlainSample>();
    EXPECT_EQ(cast<Sample>(object), object);
    EXPECT_EQ(cast<NSString>(object), nullptr);
    EXPECT_EQ(cast<Sample>(nullptr), nullptr);
    EXPECT_EQ(cast<Class>(object), nullptr);
    EXPECT_EQ(cast<Class>(Sample::classObject()), Sample::classObject());
}

TEST(Class, classesAreObjectsWhoseClassIsTheMetaclass) {
    Class* const sample = Sample::classObject();
    Class* const meta = object_getClass(sample);
    EXPECT_TRUE(class_isMetaClass(meta));
    EXPECT_EQ(sample->class_(), sample);
    EXPECT_EQ(class_getSuperclass(object_getClass(PlainSample::classObject())), meta);
    // The chain of class operations ends in the root itself.
    EXPECT_EQ(class_getSuperclass(object_getClass(NSObject::classObject())), NSObject::classObject());
    EXPECT_TRUE(sample->isKindOfClass(NSObject::classObject()));
    EXPECT_EQ(sample->copy(), sample);
    EXPECT_EQ(sample->description()->utf8(), "Sample");
}

TEST(Class, respondsForItsClassOperationsAndForTheRootsOwn) {
    Class* const sample = Sample::classObject();
    EXPECT_TRUE(sample->respondsToSelector("greeting"_sel));
    EXPECT_TRUE(sample->respondsToSelector("description"_sel));
    EXPECT_TRUE(sample->respondsToSelector("isEqual:"_sel));
    EXPECT_FALSE(sample->respondsToSelector("setSymbol:"_sel));
    EXPECT_TRUE(make<Sample>()->respondsToSelector("setSymbol:"_sel));
    EXPECT_FALSE(make<Sample>()->respondsToSelector("greeting"_sel));
    EXPECT_FALSE(make<Sample>()->respondsToSelector(SEL()));
}

TEST(Class, namesLeadToClassesAndBack) {
    EXPECT_EQ(NSStringFromClass(Sample::classObject())->utf8(), "Sample");
    EXPECT_EQ(NSClassFromString("Sample"_ns), Sample::classObject());
    EXPECT_EQ(NSClassFromString("NSObject"_ns), NSObject::classObject());
    EXPECT_EQ(NSClassFromString("NoSuchClass"_ns), nullptr);
    EXPECT_EQ(NSClassFromString(nullptr), nullptr);
    EXPECT_EQ(NSStringFromClass(nullptr), nullptr);
    EXPECT_STREQ(class_getName(nullptr), "nil");
}

TEST(ClassPair, isUnknownByNameUntilItIsRegistered) {
    Class* const pair = objc_allocateClassPair(Sample::classObject(), "LatePair");
    ASSERT_NE(pair, nullptr);
    EXPECT_EQ(objc_getClass("LatePair"), nullptr);
    objc_registerClassPair(pair);
    EXPECT_EQ(objc_getClass("LatePair"), pair);
    EXPECT_EQ(class_getSuperclass(pair), Sample::classObject());
    EXPECT_EQ(objc_allocateClassPair(Sample::classObject(), "LatePair"), nullptr);
    EXPECT_EQ(objc_allocateClassPair(nullptr, "Orphan"), nullptr);
    EXPECT_EQ(objc_allocateClassPair(Sample::classObject(), ""), nullptr);
    objc_registerClassPair(nullptr);
}

TEST(ClassPair, makesInstancesOfItsCompiledAncestor) {
    Class* const pair = objc_allocateClassPair(Sample::classObject(), "MakingPair");
    const id object = class_createInstance(pair);
    ASSERT_NE(cast<Sample>(object), nullptr);
    EXPECT_EQ(object->class_(), pair);
    cast<Sample>(object)->setChange(2.5);
    EXPECT_EQ(cast<Sample>(object)->change(), 2.5);
    EXPECT_EQ(class_createInstance(nullptr), nullptr);
    EXPECT_EQ(class_createInstance(object_getClass(pair)), nullptr);
}

TEST(ClassSwitching, changesOneObjectAndKeepsItsVariables) {
    Class* const pair = objc_allocateClassPair(Sample::classObject(), "SwitchPair");
    const auto switched = make<Sample>();
    const auto other = make<Sample>();
    switched->setSymbol("BTC"_ns);
    EXPECT_EQ(object_setClass(switched, pair), Sample::classObject());
    EXPECT_EQ(object_getClass(switched), pair);
    EXPECT_EQ(switched->nativeClass(), Sample::classObject());
    EXPECT_EQ(switched->symbol()->utf8(), "BTC");
    EXPECT_EQ(object_getClass(other), Sample::classObject());
}

TEST(ClassSwitching, refusesAClassThatTheObjectWasNotCompiledAs) {
    const auto object = make<Sample>();
    EXPECT_THROW(object_setClass(object, NSString::classObject()), NSException);
    EXPECT_THROW(object_setClass(object, PlainSample::classObject()), NSException);
    EXPECT_THROW(object_setClass(Sample::classObject(), Sample::classObject()), NSException);
    EXPECT_EQ(object_getClass(object), Sample::classObject());
    EXPECT_EQ(object_setClass(nullptr, Sample::classObject()), nullptr);
    EXPECT_EQ(object_setClass(object, nullptr), Sample::classObject());
    // An ancestor is fine: nothing of it is missing in the object.
    object_setClass(object, NSObject::classObject());
    EXPECT_EQ(cast<Sample>(object.get()), nullptr);
}

TEST(Class, anOverriddenClassOperationHidesTheActualClass) {
    Class* const pair = objc_allocateClassPair(Sample::classObject(), "HidingPair");
    class_addMethod(pair, "class"_sel, imp(+[](NSObject* self, SEL) { return id(self->isa()->parent()); }));
    const auto object = make<Sample>();
    object_setClass(object, pair);
    EXPECT_EQ(object->class_(), Sample::classObject());
    EXPECT_EQ(object->superclass(), NSObject::classObject());
    EXPECT_TRUE(object->isMemberOfClass(Sample::classObject()));
    EXPECT_EQ(object_getClass(object), pair);
    EXPECT_TRUE(object->description()->utf8().starts_with("<Sample: 0x"));
}

struct First {
    class Twin : public NSObject {
        ZR_OBJECT(Twin, NSObject)
    };
};

struct Second {
    class Twin : public NSObject {
        ZR_OBJECT(Twin, NSObject)
    };
};

TEST(Class, twoClassesOfOneNameBothWorkAndTheFirstKeepsTheName) {
    const auto first = make<First::Twin>();
    const auto second = make<Second::Twin>();
    EXPECT_NE(first->class_(), second->class_());
    EXPECT_EQ(objc_getClass("Twin"), first->class_());
    EXPECT_EQ(cast<First::Twin>(second.get()), nullptr);
}

} // namespace
} // namespace zr
