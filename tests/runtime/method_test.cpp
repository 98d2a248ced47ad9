#include "sample_model.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zr {
namespace {

using test::PlainSample;
using test::Sample;

class Base : public NSObject {
    ZR_OBJECT(Base, NSObject)

  public:
    int one() { return 1; }
    ZR_METHOD(one, "one")
    int two() { return 2; }
    ZR_METHOD(two, "two")
    ZR_PROPERTY(int, size, setSize)
};

class Derived : public Base {
    ZR_OBJECT(Derived, Base)

  public:
    int three() { return 3; }
    ZR_METHOD(three, "three")
};

int ten(NSObject*, SEL) {
    return 10;
}

int eleven(NSObject*, SEL) {
    return 11;
}

/// A new class under `parent`, for one test to edit.
Class* freshClass(Class* parent) {
    static int count = 0;
    Class* const made = objc_allocateClassPair(parent, "Fresh" + std::to_string(++count));
    objc_registerClassPair(made);
    return made;
}

int ask(Class* ofClass, SEL selector) {
    return send<int>(class_createInstance(ofClass), selector);
}

TEST(Method, isFoundInTheClassOrItsAncestors) {
    const Method inherited = class_getInstanceMethod(Derived::classObject(), "one"_sel);
    EXPECT_EQ(inherited, class_getInstanceMethod(Base::classObject(), "one"_sel));
    EXPECT_STREQ(method_getTypeEncoding(inherited), "i@:");
    EXPECT_EQ(method_getName(inherited), "one"_sel);
    EXPECT_EQ(class_getInstanceMethod(Base::classObject(), "three"_sel), nullptr);
    EXPECT_EQ(class_getInstanceMethod(nullptr, "one"_sel), nullptr);
    EXPECT_EQ(class_getInstanceMethod(Base::classObject(), SEL()), nullptr);
    EXPECT_NE(class_getClassMethod(Sample::classObject(), "greeting"_sel), nullptr);
}

TEST(Method, addingWorksOnlyWhereTheClassItselfLacksIt) {
    Class* const fresh = freshClass(Base::classObject());
    EXPECT_FALSE(class_addMethod(Base::classObject(), "one"_sel, imp(&ten)));
    EXPECT_TRUE(class_addMethod(fresh, "one"_sel, imp(&ten)));
    EXPECT_FALSE(class_addMethod(fresh, "one"_sel, imp(&eleven)));
    EXPECT_EQ(ask(fresh, "one"_sel), 10);
    EXPECT_EQ(ask(Base::classObject(), "one"_sel), 1);
    EXPECT_FALSE(class_addMethod(nullptr, "one"_sel, imp(&ten)));
    EXPECT_FALSE(class_addMethod(fresh, SEL(), imp(&ten)));
    EXPECT_FALSE(class_addMethod(fresh, "four"_sel, IMP()));
}

TEST(Method, replacingAddsOrReplacesInThatClassAlone) {
    Class* const fresh = freshClass(Base::classObject());
    EXPECT_FALSE(class_replaceMethod(fresh, "two"_sel, imp(&ten)));
    EXPECT_EQ(ask(fresh, "two"_sel), 10);
    EXPECT_EQ(ask(Base::classObject(), "two"_sel), 2);
    EXPECT_EQ(class_replaceMethod(fresh, "two"_sel, imp(&eleven)), imp(&ten));
    EXPECT_EQ(ask(fresh, "two"_sel), 11);
    EXPECT_FALSE(class_replaceMethod(nullptr, "two"_sel, imp(&ten)));
}

TEST(Method, exchangingSwapsWhereTheMethodsAreDefinedAndTwiceRestores) {
    Class* const parent = freshClass(Base::classObject());
    Class* const child = freshClass(parent);
    class_addMethod(parent, "ten"_sel, imp(&ten));
    class_addMethod(child, "eleven"_sel, imp(&eleven));
    const Method inherited = class_getInstanceMethod(child, "ten"_sel);
    const Method own = class_getInstanceMethod(child, "eleven"_sel);
    method_exchangeImplementations(inherited, own);
    EXPECT_EQ(ask(child, "ten"_sel), 11);
    EXPECT_EQ(ask(parent, "ten"_sel), 11);
    EXPECT_EQ(ask(child, "eleven"_sel), 10);
    method_exchangeImplementations(inherited, own);
    EXPECT_EQ(ask(parent, "ten"_sel), 10);
    method_exchangeImplementations(inherited, nullptr);
    method_exchangeImplementations(nullptr, own);
    EXPECT_EQ(ask(child, "eleven"_sel), 11);
}

TEST(Method, aReplacedAccessorIsHonouredByPlainCalls) {
    const auto object = make<Derived>();
    object->setSize(5);
    const Method getter = class_getInstanceMethod(Base::classObject(), "size"_sel);
    const IMP original = method_setImplementation(getter, imp(&ten));
    EXPECT_EQ(object->size(), 10);
    EXPECT_EQ(make<Base>()->size(), 10);
    method_setImplementation(getter, original);
    EXPECT_EQ(object->size(), 5);
}

class Pair : public NSObject {
    ZR_OBJECT(Pair, NSObject)

  public:
    ZR_PROPERTY(int, left, setLeft)
    ZR_PROPERTY(int, right, setRight)
};

TEST(Method, exchangedSettersAreHonouredByPlainCalls) {
    method_exchangeImplementations(class_getInstanceMethod(Pair::classObject(), "setLeft:"_sel),
                                   class_getInstanceMethod(Pair::classObject(), "setRight:"_sel));
    const auto pair = make<Pair>();
    pair->setLeft(1);
    EXPECT_EQ(pair->left(), 0);
    EXPECT_EQ(pair->right(), 1);
}

class Untouched : public NSObject {
    ZR_OBJECT(Untouched, NSObject)

  public:
    ZR_PROPERTY(int, size, setSize)
};

TEST(Method, aNewOperationLeavesTheAccessorsDirect) {
    EXPECT_TRUE(Untouched::classObject()->isDirect());
    class_addMethod(Untouched::classObject(), "brandNewOperation"_sel, imp(&ten));
    EXPECT_TRUE(Untouched::classObject()->isDirect());
    EXPECT_EQ(send<int>(make<Untouched>(), "brandNewOperation"_sel), 10);
}

TEST(Method, implementationsOfAForeignClassAreRefusedNotRun) {
    Class* const stranger = freshClass(Sample::classObject());
    const Method two = class_getInstanceMethod(Base::classObject(), "two"_sel);
    class_addMethod(stranger, "borrowed"_sel, method_getImplementation(two));
    EXPECT_THROW(ask(stranger, "borrowed"_sel), NSException);
}

TEST(Method, listsHoldTheClassesOwnOperations) {
    const std::vector<Method> methods = class_copyMethodList(PlainSample::classObject());
    EXPECT_TRUE(methods.empty());
    const std::vector<Method> derived = class_copyMethodList(Derived::classObject());
    EXPECT_TRUE(std::any_of(derived.begin(), derived.end(),
                            [](Method method) { return method_getName(method) == "three"_sel; }));
    EXPECT_TRUE(class_copyMethodList(nullptr).empty());
}

class Greeter : public NSObject {
    ZR_OBJECT(Greeter, NSObject)

  public:
    static int greet() { return 1; }
    ZR_CLASS_METHOD(greet, "greet")
};

TEST(Method, classOperationsAreReplacedInTheMetaclass) {
    EXPECT_EQ(send<int>(Greeter::classObject(), "greet"_sel), 1);
    class_replaceMethod(object_getClass(Greeter::classObject()), "greet"_sel, imp(&ten));
    EXPECT_EQ(send<int>(Greeter::classObject(), "greet"_sel), 10);
}

} // namespace
} // namespace zr
