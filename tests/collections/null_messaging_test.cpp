#include <zrbasic/collections/null_messaging.h>

#include "../foundation/checks.h"

#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

TEST(NullMessaging, numberOperationsGiveZero) {
    NSNull* const null = NSNull::null();
    EXPECT_EQ(send<NSInteger>(null, "integerValue"_sel), 0);
    EXPECT_EQ(send<NSUInteger>(null, "unsignedIntegerValue"_sel), 0U);
    EXPECT_EQ(send<double>(null, "doubleValue"_sel), 0.0);
    EXPECT_EQ(send<float>(null, "floatValue"_sel), 0.0F);
    EXPECT_FALSE(send<bool>(null, "boolValue"_sel));
    EXPECT_FALSE(send<id>(null, "stringValue"_sel));
    EXPECT_EQ(send<NSComparisonResult>(null, "compare:"_sel, box(1)), NSOrderedSame);
    EXPECT_FALSE(send<bool>(null, "isEqualToNumber:"_sel, box(0)));
}

TEST(NullMessaging, textOperationsGiveZero) {
    NSNull* const null = NSNull::null();
    EXPECT_EQ(send<NSUInteger>(null, "length"_sel), 0U);
    EXPECT_FALSE(send<bool>(null, "isEqualToString:"_sel, "<null>"_ns));
    EXPECT_FALSE(send<id>(null, "uppercaseString"_sel));
    EXPECT_EQ(send<NSRange>(null, "rangeOfString:"_sel, "x"_ns), NSMakeRange(0, 0));
    send<void>(null, "appendString:"_sel, "x"_ns);
}

TEST(NullMessaging, collectionAndDateOperationsGiveZero) {
    NSNull* const null = NSNull::null();
    EXPECT_EQ(send<NSUInteger>(null, "count"_sel), 0U);
    EXPECT_FALSE(send<id>(null, "objectForKey:"_sel, "a"_ns));
    EXPECT_FALSE(send<id>(null, "objectAtIndex:"_sel, 3));
    EXPECT_FALSE(send<id>(null, "firstObject"_sel));
    EXPECT_EQ(send<double>(null, "timeIntervalSince1970"_sel), 0.0);
    send<void>(null, "setObject:forKey:"_sel, box(1), "a"_ns);
    send<void>(null, "addObject:"_sel, box(1));
}

TEST(NullMessaging, groupOperationsGiveZeroToo) {
    NSNull* const null = NSNull::null();
    EXPECT_EQ(send<NSInteger>(null, "zr_integerForKey:default:"_sel, "a"_ns, 7), 0);
    EXPECT_FALSE(send<id>(null, "zr_objectForKey:defaultValue:"_sel, "a"_ns, "d"_ns));
    EXPECT_EQ(send<double>(null, "zr_floatForKey:default:"_sel, "a"_ns, 2.5), 0.0);
}

TEST(NullMessaging, whatTheNullObjectKnowsItAnswersItself) {
    NSNull* const null = NSNull::null();
    EXPECT_EQ(send<Ref<NSString>>(null, "description"_sel)->utf8(), "<null>");
    EXPECT_TRUE(send<bool>(null, "isEqual:"_sel, null));
    EXPECT_EQ(send<id>(null, "copy"_sel).get(), null);
    EXPECT_EQ(send<NSUInteger>(null, "hash"_sel), null->hash());
    EXPECT_TRUE(null->isKindOfClass(NSNull::classObject()));
}

TEST(NullMessaging, answeringIsNotResponding) {
    NSNull* const null = NSNull::null();
    EXPECT_FALSE(null->respondsToSelector("integerValue"_sel));
    EXPECT_FALSE(null->respondsToSelector("count"_sel));
    EXPECT_FALSE(null->isKindOfClass(NSNumber::classObject()));
    EXPECT_TRUE(null->respondsToSelector("description"_sel));
}

TEST(NullMessaging, operationsThatNoSourceKnowsRaise) {
    NSNull* const null = NSNull::null();
    const std::string message = raised([&] { send<void>(null, "host"_sel); });
    EXPECT_TRUE(message.starts_with("NSInvalidArgumentException: -[NSNull host]: unrecognized selector")) << message;
    EXPECT_EQ(raisedName([&] { send<id>(null, "member:"_sel, "x"_ns); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { send<void>(null, "noSuchOperation:with:"_sel, 1, 2); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { null->performSelector("unionSet:"_sel); }), NSInvalidArgumentException);
}

TEST(NullMessaging, aStoredNullObjectIsCalledLikeAnyOther) {
    const Ref<NSArray> values = array({box(3), NSNull::null(), "4"_ns});
    NSInteger sum = 0;
    for (const id& value : values) {
        sum += send<NSInteger>(value, "integerValue"_sel);
    }
    EXPECT_EQ(sum, 7);
    EXPECT_FALSE(NSNull::null()->performSelector("stringValue"_sel));
}

TEST(NullSignatures, comeFromTheNullObjectFirst) {
    NSNull* const null = NSNull::null();
    const auto types = [&](SEL selector) -> std::string {
        const Ref<NSMethodSignature> signature = methodSignatureForSelector(null, selector);
        return signature ? signature->methodReturnType() : "none";
    };
    EXPECT_EQ(types("isEqual:"_sel), "B");
    EXPECT_EQ(types("integerValue"_sel), "q");
    EXPECT_EQ(types("doubleValue"_sel), "d");
    EXPECT_EQ(types("removeAllObjects"_sel), "v");
    EXPECT_EQ(types("host"_sel), "none");
    EXPECT_EQ(types(SEL()), "none");
    EXPECT_FALSE(methodSignatureForSelector(nullptr, "count"_sel));
}

TEST(NullSignatures, callAndMessageAgree) {
    NSNull* const null = NSNull::null();
    EXPECT_TRUE(null->methodSignatureForSelector("integerValue"_sel));
    EXPECT_FALSE(null->methodSignatureForSelector("host"_sel));
    const auto signature =
        send<Ref<NSMethodSignature>>(null, "methodSignatureForSelector:"_sel, "insertObject:atIndex:"_sel);
    ASSERT_TRUE(signature);
    EXPECT_EQ(signature->numberOfArguments(), 4U);
    EXPECT_TRUE(send<bool>(NSNumber::classObject(), "instancesRespondToSelector:"_sel, "integerValue"_sel));
    EXPECT_FALSE(send<bool>(NSNumber::classObject(), "instancesRespondToSelector:"_sel, "host"_sel));
}

TEST(NullSignatures, theFirstSourceInOrderDecides) {
    // The same name with another result in each source, added from the last to the first.
    struct {
        Class* source;
        IMP implementation;
        const char* type;
    } const sources[] = {
        {NSDate::classObject(), imp(+[](NSObject*, SEL) { return 1.0F; }), "f"},
        {NSNumber::classObject(), imp(+[](NSObject*, SEL) { return 1.0; }), "d"},
        {NSMutableString::classObject(), imp(+[](NSObject*, SEL) { return true; }), "B"},
        {NSMutableDictionary::classObject(), imp(+[](NSObject*, SEL) { return std::int64_t(1); }), "q"},
        {NSMutableArray::classObject(), imp(+[](NSObject*, SEL) { return id(); }), "@"},
    };
    for (const auto& row : sources) {
        SCOPED_TRACE(row.type);
        ASSERT_TRUE(class_addMethod(row.source, "testedInOrder"_sel, row.implementation));
        EXPECT_STREQ(methodSignatureForSelector(NSNull::null(), "testedInOrder"_sel)->methodReturnType(), row.type);
    }
}

TEST(NullSignatures, aSourceThatRaisesIsPassedOver) {
    Class* const arrays = object_getClass(NSMutableArray::classObject());
    ASSERT_TRUE(class_addMethod(arrays, "instancesRespondToSelector:"_sel, imp(+[](NSObject*, SEL, SEL) -> bool {
                                    NSException::raise(NSGenericException, "do not ask");
                                })));
    // Also known to the dictionary, further down the list.
    EXPECT_EQ(send<NSUInteger>(NSNull::null(), "count"_sel), 0U);
    // Known to nobody else.
    EXPECT_EQ(raisedName([] { send<void>(NSNull::null(), "addObject:"_sel, box(1)); }), NSInvalidArgumentException);
    class_replaceMethod(arrays, "instancesRespondToSelector:"_sel, imp(+[](NSObject* self, SEL, SEL selector) {
                            return class_respondsToSelector(cast<Class>(self), selector);
                        }));
    EXPECT_EQ(raisedName([] { send<void>(NSNull::null(), "addObject:"_sel, box(1)); }), "");
}

TEST(NullForwarding, sendsTheMessageToNothing) {
    NSNull* const null = NSNull::null();
    const Ref<NSInvocation> invocation =
        NSInvocation::invocationWithMethodSignature(null->methodSignatureForSelector("integerValue"_sel));
    invocation->setTarget(box(7));
    invocation->setSelector("integerValue"_sel);
    invocation->invoke();
    EXPECT_EQ(invocation->getReturnValue().to<NSInteger>(), 7);
    null->forwardInvocation(invocation);
    EXPECT_FALSE(invocation->target());
    EXPECT_EQ(invocation->getReturnValue().to<NSInteger>(), 0);
    forwardInvocation(null, nullptr);
    forwardInvocation(nullptr, invocation);
}

} // namespace

} // namespace zr
