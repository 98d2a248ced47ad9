#include "sample_model.h"

#include <zrbasic/platform/runtime/invocation.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::Sample;
using test::SettableSample;

TEST(Message, reachesTheOperationOfThatName) {
    const auto object = make<Sample>();
    EXPECT_EQ(send<int>(object, "doubled:"_sel, 21), 42);
    EXPECT_EQ(send<Ref<NSString>>(object, "joined:with:"_sel, "a"_ns, "b"_ns)->utf8(), "ab");
    EXPECT_EQ(send<Ref<NSString>>(Sample::classObject(), "greeting"_sel)->utf8(), "hello");
    send(object, "setChange:"_sel, 1.5);
    EXPECT_EQ(send<double>(object, "change"_sel), 1.5);
}

TEST(Message, toNullGivesZeroAndRunsNothing) {
    EXPECT_EQ(send<int>(nullptr, "doubled:"_sel, 21), 0);
    EXPECT_EQ(send<double>(nullptr, "change"_sel), 0.0);
    EXPECT_EQ(send<id>(nullptr, "anything"_sel), nullptr);
    EXPECT_FALSE(send<bool>(nullptr, "isHidden"_sel));
    EXPECT_EQ(send<NSRange>(nullptr, "range"_sel), NSRange());
    send(nullptr, "anything"_sel);
}

TEST(Message, numbersAreConvertedToTheOperationsTypes) {
    const auto object = make<Sample>();
    EXPECT_EQ(send<int>(object, "doubled:"_sel, 21L), 42);
    EXPECT_EQ(send<double>(object, "doubled:"_sel, 21.9), 42.0);
    EXPECT_EQ(send<std::uint8_t>(object, "doubled:"_sel, true), 2);
    send(object, "setChange:"_sel, 3);
    EXPECT_EQ(object->change(), 3.0);
    send(object, "setHidden:"_sel, 2);
    EXPECT_TRUE(object->isHidden());
    send(object, "setSmall:"_sel, 1e300);
    EXPECT_EQ(object->small(), 32767);
}

TEST(Message, argumentsThatDoNotFitAreRefused) {
    const auto object = make<Sample>();
    EXPECT_THROW(send<int>(object, "doubled:"_sel), NSException);
    EXPECT_THROW(send<int>(object, "doubled:"_sel, 1, 2), NSException);
    EXPECT_THROW(send<int>(object, "doubled:"_sel, "text"_ns), NSException);
    EXPECT_THROW(send(object, "setSymbol:"_sel, 12), NSException);
    EXPECT_THROW(send(object, "setSymbol:"_sel, NSRange()), NSException);
}

TEST(Message, anObjectOfAnotherKindArrivesAsNull) {
    const auto object = make<Sample>();
    EXPECT_EQ(send<Ref<NSString>>(object, "joined:with:"_sel, "a"_ns, object)->utf8(), "a-");
    EXPECT_EQ(send<Ref<NSString>>(object, "joined:with:"_sel, nullptr, "b"_ns)->utf8(), "-b");
    EXPECT_FALSE(send<bool>(object, "heard:"_sel, object));
}

TEST(Message, aResultOfAnotherKindReadsNullOrZero) {
    const auto object = make<Sample>();
    object->setAnything(object);
    EXPECT_EQ(send<id>(object, "anything"_sel), object);
    EXPECT_EQ(send<Ref<NSString>>(object, "anything"_sel), nullptr);
    EXPECT_EQ(send<int>(object, "anything"_sel), 0);
    object->setAnything(nullptr);
    EXPECT_EQ(send<id>(object, "doubled:"_sel, 4), nullptr);
}

TEST(Message, unknownOperationsRaiseWithClassAndName) {
    const auto object = make<Sample>();
    try {
        send(object, "foo:bar:"_sel, 1, 2);
        FAIL();
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSInvalidArgumentException);
        EXPECT_TRUE(exception.reason().starts_with("-[Sample foo:bar:]: unrecognized selector sent to instance 0x"));
    }
    try {
        send(Sample::classObject(), "foo"_sel);
        FAIL();
    } catch (const NSException& exception) {
        EXPECT_TRUE(exception.reason().starts_with("+[Sample foo]: unrecognized selector sent to class 0x"));
    }
    EXPECT_THROW(send(object, SEL()), NSException);
}

TEST(Message, superRunsTheImplementationOfTheNamedClass) {
    Class* const pair = objc_allocateClassPair(Sample::classObject(), "SuperPair");
    class_addMethod(pair, "setChange:"_sel, imp(+[](NSObject* self, SEL selector, double value) {
                        sendSuper(self, self->isa()->parent(), selector, value * 2);
                    }));
    const auto object = make<Sample>();
    object_setClass(object, pair);
    object->setChange(4);
    EXPECT_EQ(object->change(), 8.0);
    EXPECT_EQ(sendSuper<double>(nullptr, pair, "change"_sel), 0.0);
    EXPECT_EQ(sendSuper<double>(object, nullptr, "change"_sel), 0.0);
    EXPECT_THROW(sendSuper(object, NSString::classObject(), "length"_sel), NSException);
}

TEST(Message, performSelectorSendsByName) {
    const auto object = make<Sample>();
    object->setTitle("t"_ns);
    EXPECT_EQ(object->performSelector("title"_sel), "t"_ns);
    object->performSelector_withObject("setTitle:"_sel, "u"_ns);
    EXPECT_EQ(object->title(), "u"_ns);
    EXPECT_THROW(object->performSelector("nothing"_sel), NSException);
}

/// Passes everything on to another object.
class Agent : public NSObject {
    ZR_OBJECT(Agent, NSObject)

  public:
    id forwardingTargetForSelector(SEL) const override { return principal; }
    id principal;
};

TEST(Forwarding, aTargetAnswersInTheReceiversPlace) {
    const auto agent = make<Agent>();
    const auto principal = make<Sample>();
    agent->principal = principal;
    EXPECT_EQ(send<int>(agent, "doubled:"_sel, 3), 6);
    EXPECT_FALSE(agent->respondsToSelector("doubled:"_sel));
    agent->principal = nullptr;
    EXPECT_THROW(send<int>(agent, "doubled:"_sel, 3), NSException);
}

/// Answers every message with the sum of its arguments.
class Adder : public NSObject {
    ZR_OBJECT(Adder, NSObject)

  public:
    Ref<NSMethodSignature> methodSignatureForSelector(SEL selector) const override {
        if (selector == "sum:and:"_sel) {
            return NSMethodSignature::signatureWithObjCTypes("q@:qq");
        }
        return NSObject::methodSignatureForSelector(selector);
    }

    void forwardInvocation(NSInvocation* invocation) override {
        invocation->setReturnValue(invocation->getArgument_atIndex(2).to<NSInteger>() +
                                   invocation->getArgument_atIndex(3).to<NSInteger>());
    }
};

TEST(Forwarding, anInvocationCarriesArgumentsAndResult) {
    const auto adder = make<Adder>();
    EXPECT_EQ(send<NSInteger>(adder, "sum:and:"_sel, 40, 2), 42);
    EXPECT_EQ(send<double>(adder, "sum:and:"_sel, 1.9, true), 2.0);
    EXPECT_THROW(send(adder, "product:and:"_sel, 40, 2), NSException);
}

TEST(Forwarding, hooksAddedAtRunTimeCount) {
    Class* const pair = objc_allocateClassPair(Sample::classObject(), "ForwardingPair");
    class_addMethod(pair, "methodSignatureForSelector:"_sel,
                    imp(+[](NSObject*, SEL, SEL) { return id(NSMethodSignature::signatureWithObjCTypes("q@:")); }));
    class_addMethod(pair, "forwardInvocation:"_sel, imp(+[](NSObject*, SEL, NSObject* invocation) {
                        cast<NSInvocation>(invocation)->invokeWithTarget(nullptr);
                    }));
    const auto object = make<Sample>();
    object_setClass(object, pair);
    EXPECT_EQ(send<NSInteger>(object, "whatever"_sel), 0);
    EXPECT_EQ(send<id>(object, "whateverElse"_sel), nullptr);
}

} // namespace
} // namespace zr
