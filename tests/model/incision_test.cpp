#include <zrbasic/model/incision.h>

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

class Incised : public NSObject {
    ZR_OBJECT(Incised, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
    ZR_PROPERTY(double, change, setChange)
    void press(NSObject*) {}
    ZR_METHOD(press, "press:")
    static int number() { return 1; }
    ZR_CLASS_METHOD(number, "number")
    int ownNumber() { return 2; }
    ZR_METHOD(ownNumber, "number")
};

class Responder : public NSObject {
    ZR_OBJECT(Responder, NSObject)

  public:
    std::string log;
    id owner;
    void press(NSObject* event) { log += event ? "pressed " : "pressed with nothing "; }
    ZR_METHOD(press, "press:")
    void letGo(NSObject*) { owner = nullptr; }
    ZR_METHOD(letGo, "letGo:")
};

class IncisedChild : public Incised {
    ZR_OBJECT(IncisedChild, Incised)
};

class IncisedOnce : public NSObject {
    ZR_OBJECT(IncisedOnce, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
};

void doubling(NSObject* self, SEL selector, NSObject* value) {
    sendSuper<void>(self, self->isa()->parent(), selector, box(cast<NSNumber>(value)->intValue() * 2));
}

void tripling(NSObject* self, SEL selector, NSObject* value) {
    sendSuper<void>(self, self->isa()->parent(), selector, box(cast<NSNumber>(value)->intValue() * 3));
}

std::string actualName(NSObject* object) {
    return object_getClassName(object);
}

TEST(Incision, replacesAnOperationOfOneObject) {
    const auto object = make<Incised>();
    const auto bystander = make<Incised>();
    EXPECT_TRUE(inciseSelector_implementation(object, "setPrice:"_sel, imp(&doubling)));
    object->setPrice(box(2));
    bystander->setPrice(box(2));
    EXPECT_EQ(object->price()->intValue(), 4);
    EXPECT_EQ(bystander->price()->intValue(), 2);
    send<void>(object, "setPrice:"_sel, box(3));
    EXPECT_EQ(object->price()->intValue(), 6);
}

TEST(Incision, theObjectReportsTheClassThatItHad) {
    const auto object = make<Incised>();
    const auto other = make<Incised>();
    const auto bystander = make<Incised>();
    inciseSelector_implementation(object, "setPrice:"_sel, imp(&doubling));
    inciseSelector_implementation(other, "press:"_sel, imp(&doubling));
    EXPECT_EQ(actualName(object), "__ZRXIncised_Incised");
    EXPECT_EQ(object_getClass(other), object_getClass(object)) << "one class for all objects of a class";
    EXPECT_EQ(object->class_(), Incised::classObject());
    EXPECT_EQ(send<Class*>(object, "class"_sel), Incised::classObject());
    EXPECT_EQ(object->superclass(), NSObject::classObject());
    EXPECT_TRUE(object->isMemberOfClass(Incised::classObject()));
    EXPECT_EQ(object_getClass(bystander), Incised::classObject());
    EXPECT_EQ(actualName(make<Incised>()), "Incised");
}

TEST(Incision, aSubclassHasItsOwnIncisedClass) {
    const auto child = make<IncisedChild>();
    inciseSelector_implementation(child, "setPrice:"_sel, imp(&doubling));
    EXPECT_EQ(actualName(child), "__ZRXIncised_IncisedChild");
    EXPECT_EQ(object_getClass(child)->parent(), IncisedChild::classObject());
    inciseSelector_implementation(child, "press:"_sel, imp(&doubling));
    EXPECT_EQ(actualName(child), "__ZRXIncised_IncisedChild") << "an incised object is not incised over again";
}

TEST(Incision, theFirstImplementationStaysForAllObjectsOfTheClass) {
    const auto first = make<IncisedOnce>();
    const auto second = make<IncisedOnce>();
    EXPECT_TRUE(inciseSelector_implementation(first, "setPrice:"_sel, imp(&doubling)));
    EXPECT_TRUE(inciseSelector_implementation(first, "setPrice:"_sel, imp(&tripling)));
    EXPECT_TRUE(inciseSelector_implementation(second, "setPrice:"_sel, imp(&tripling)));
    first->setPrice(box(1));
    second->setPrice(box(1));
    EXPECT_EQ(first->price()->intValue(), 2);
    EXPECT_EQ(second->price()->intValue(), 2);
}

TEST(Incision, needsTheOperationAndAllArguments) {
    const auto object = make<Incised>();
    EXPECT_FALSE(inciseSelector_implementation(object, "setNope:"_sel, imp(&doubling)));
    EXPECT_FALSE(inciseSelector_implementation(object, SEL(), imp(&doubling)));
    EXPECT_FALSE(inciseSelector_implementation(object, "setPrice:"_sel, IMP()));
    EXPECT_FALSE(inciseSelector_implementation(nullptr, "setPrice:"_sel, imp(&doubling)));
    EXPECT_FALSE(inciseSelector_implementation(Incised::classObject(), "number"_sel, imp(&doubling)));
    EXPECT_EQ(object_getClass(object), Incised::classObject()) << "nothing was switched";
}

TEST(Incision, operationsOfTheRootAreNeverReplacedAlthoughTheAnswerIsYes) {
    const auto object = make<Incised>();
    EXPECT_TRUE(
        inciseSelector_implementation(object, "hash"_sel, imp(+[](NSObject*, SEL) -> std::uint64_t { return 42; })));
    EXPECT_NE(send<NSUInteger>(object, "hash"_sel), 42U);
    EXPECT_EQ(actualName(object), "__ZRXIncised_Incised") << "the object is switched all the same";
    EXPECT_TRUE(
        inciseSelector_implementation(object, "number"_sel, imp(+[](NSObject*, SEL) -> std::int32_t { return 42; })));
    EXPECT_EQ(send<int>(object, "number"_sel), 2) << "the class answers number, so its objects keep theirs";
}

TEST(Incision, theIncisedClassCanBeMadeByName) {
    const auto object = make<Incised>();
    Class* const made = createIncisedClassWithOriginalClassName(object, "SomeOtherName"_ns);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->name(), "__ZRXIncised_SomeOtherName");
    EXPECT_EQ(made->parent(), Incised::classObject());
    EXPECT_EQ(createIncisedClassWithOriginalClassName(make<IncisedChild>(), "SomeOtherName"_ns), made);
    EXPECT_EQ(object_getClass(object), Incised::classObject()) << "making it switches nothing";
    EXPECT_EQ(createIncisedClassWithOriginalClassName(object, nullptr), nullptr);
    EXPECT_EQ(createIncisedClassWithOriginalClassName(nullptr, "x"_ns), nullptr);
}

TEST(EventObserver, runsAfterTheActionWithItsEvent) {
    const auto responder = make<Responder>();
    const auto event = make<NSObject>();
    NSObject* seen = nullptr;
    EXPECT_TRUE(detail::installEventObserver(responder, "press:"_sel, [&](NSObject* given) {
        seen = given;
        responder->log += "observed ";
    }));
    send<void>(responder, "press:"_sel, event);
    EXPECT_EQ(responder->log, "pressed observed ");
    EXPECT_EQ(seen, event);
    const auto bystander = make<Responder>();
    send<void>(bystander, "press:"_sel, event);
    EXPECT_EQ(bystander->log, "pressed ");
}

TEST(EventObserver, theNewestCallbackReplacesTheOneBefore) {
    const auto responder = make<Responder>();
    detail::installEventObserver(responder, "press:"_sel, [&](NSObject*) { responder->log += "first "; });
    detail::installEventObserver(responder, "press:"_sel, [&](NSObject*) { responder->log += "second "; });
    send<void>(responder, "press:"_sel, nullptr);
    EXPECT_EQ(responder->log, "pressed with nothing second ");
}

TEST(EventObserver, needsAnActionThatExistsAndACallback) {
    const auto responder = make<Responder>();
    EXPECT_FALSE(detail::installEventObserver(responder, "nope:"_sel, [](NSObject*) {}));
    EXPECT_FALSE(detail::installEventObserver(responder, SEL(), [](NSObject*) {}));
    EXPECT_FALSE(detail::installEventObserver(responder, "press:"_sel, nullptr));
    EXPECT_FALSE(detail::installEventObserver(nullptr, "press:"_sel, [](NSObject*) {}));
    EXPECT_EQ(object_getClass(responder), Responder::classObject());
}

TEST(EventObserver, survivesActionsAndCallbacksThatLetGoOfTheResponder) {
    auto responder = make<Responder>();
    Weak<NSObject> watch(responder);
    bool wasCalled = false;
    detail::installEventObserver(responder, "letGo:"_sel, [&wasCalled](NSObject*) { wasCalled = true; });
    responder->owner = responder;
    Responder* const borrowed = responder;
    responder = nullptr;
    send<void>(borrowed, "letGo:"_sel, nullptr);
    EXPECT_TRUE(wasCalled);
    EXPECT_TRUE(watch.expired());

    auto replaced = make<Responder>();
    detail::installEventObserver(replaced, "press:"_sel, [&](NSObject*) {
        detail::installEventObserver(replaced, "press:"_sel, [&](NSObject*) { replaced->log += "new "; });
        replaced->log += "old ";
    });
    send<void>(replaced, "press:"_sel, nullptr);
    send<void>(replaced, "press:"_sel, replaced);
    EXPECT_EQ(replaced->log, "pressed with nothing old pressed new ");
}

} // namespace
