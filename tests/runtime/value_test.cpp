#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/invocation.h>
#include <zrbasic/platform/runtime/value.h>

#include <gtest/gtest.h>

#include <functional>

namespace zr {
namespace {

TEST(Value, numbersConvertByTruncationAndSaturation) {
    EXPECT_EQ(Value(1.9).to<int>(), 1);
    EXPECT_EQ(Value(-1.9).to<int>(), -1);
    EXPECT_EQ(Value(1e300).to<std::int64_t>(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Value(-1e300).to<std::int64_t>(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(Value(-1.0).to<std::uint64_t>(), 0U);
    EXPECT_EQ(Value(std::nan("")).to<int>(), 0);
    EXPECT_EQ(Value(300).to<std::uint8_t>(), 44);
    EXPECT_TRUE(Value(0.5).to<bool>());
    EXPECT_EQ(Value(true).to<double>(), 1.0);
}

TEST(Value, nothingReadsAsZeroOfAnyType) {
    const Value nothing;
    EXPECT_EQ(nothing.to<double>(), 0.0);
    EXPECT_EQ(nothing.to<id>(), nullptr);
    EXPECT_EQ(nothing.to<NSRange>(), NSRange());
    EXPECT_FALSE(nothing.to<SEL>());
    EXPECT_TRUE(nothing.converts<int>());
}

TEST(Value, otherTypesReadAsThemselvesOnly) {
    const Value range(NSMakeRange(1, 2));
    EXPECT_EQ(range.to<NSRange>(), NSMakeRange(1, 2));
    EXPECT_EQ(range.to<int>(), 0);
    EXPECT_FALSE(range.converts<int>());
    const Value text("a"_ns);
    EXPECT_EQ(text.to<id>(), "a"_ns);
    EXPECT_FALSE(text.converts<double>());
    EXPECT_FALSE(Value(1).converts<id>());
    EXPECT_EQ(Value("a:"_sel).to<SEL>(), "a:"_sel);
}

TEST(Exception, carriesNameAndReason) {
    try {
        NSException::raise(NSRangeException, "index 5 beyond bounds");
        FAIL();
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(), "NSRangeException: index 5 beyond bounds");
    }
    const NSException original(NSGenericException, "größe");
    const NSException copy = original;
    EXPECT_EQ(copy.reason(), "größe");
    EXPECT_EQ(copy.name(), NSGenericException);
    EXPECT_EQ(NSUndefinedKeyException, "NSUnknownKeyException");
}

int triple(int value) {
    return 3 * value;
}

TEST(FunctionRef, callsWhateverCallableItWasMadeFrom) {
    const auto apply = [](FunctionRef<int(int)> function) { return function ? function(2) : -1; };
    int calls = 0;
    EXPECT_EQ(apply([&](int value) { return value + ++calls; }), 3);
    EXPECT_EQ(apply(triple), 6);
    EXPECT_EQ(apply(std::function<int(int)>(triple)), 6);
    EXPECT_EQ(apply(nullptr), -1);
    EXPECT_EQ(apply(std::function<int(int)>()), -1);
    EXPECT_EQ(apply({}), -1);
}

TEST(MethodSignature, readsThePlatformsNotation) {
    const auto signature = NSMethodSignature::signatureWithObjCTypes("v24@0:8@16");
    ASSERT_NE(signature, nullptr);
    EXPECT_EQ(signature->numberOfArguments(), 3U);
    EXPECT_STREQ(signature->methodReturnType(), "v");
    EXPECT_STREQ(signature->getArgumentTypeAtIndex(1), ":");
    EXPECT_STREQ(signature->getArgumentTypeAtIndex(2), "@");
    EXPECT_THROW(static_cast<void>(signature->getArgumentTypeAtIndex(3)), NSException);
    const auto odd = NSMethodSignature::signatureWithObjCTypes("{?=dd}@:^@@?@\"NSString\"r*");
    ASSERT_NE(odd, nullptr);
    EXPECT_STREQ(odd->methodReturnType(), "{?=dd}");
    EXPECT_STREQ(odd->getArgumentTypeAtIndex(2), "^@");
    EXPECT_STREQ(odd->getArgumentTypeAtIndex(3), "@?");
    EXPECT_STREQ(odd->getArgumentTypeAtIndex(4), "@\"NSString\"");
    EXPECT_STREQ(odd->getArgumentTypeAtIndex(5), "r*");
}

TEST(MethodSignature, damagedNotationGivesNull) {
    for (const char* const types : {"", "v", "v@", "{", "^", "\"", "v@\"", "12"}) {
        SCOPED_TRACE(types);
        EXPECT_EQ(NSMethodSignature::signatureWithObjCTypes(types), nullptr);
    }
    EXPECT_EQ(NSMethodSignature::signatureWithObjCTypes(nullptr), nullptr);
}

TEST(Invocation, sendsItsMessageAndKeepsTheResult) {
    const auto invocation =
        NSInvocation::invocationWithMethodSignature("abc"_ns->methodSignatureForSelector("isEqualToString:"_sel));
    invocation->setSelector("isEqualToString:"_sel);
    invocation->setArgument_atIndex(Value("abc"_ns), 2);
    invocation->invokeWithTarget("abc"_ns);
    EXPECT_TRUE(invocation->getReturnValue().to<bool>());
    invocation->invokeWithTarget("abd"_ns);
    EXPECT_FALSE(invocation->getReturnValue().to<bool>());
}

TEST(Invocation, aNullTargetGivesZeroAndRunsNothing) {
    const auto invocation =
        NSInvocation::invocationWithMethodSignature("abc"_ns->methodSignatureForSelector("length"_sel));
    invocation->setSelector("length"_sel);
    invocation->invokeWithTarget("abc"_ns);
    EXPECT_EQ(invocation->getReturnValue().to<NSUInteger>(), 3U);
    invocation->invokeWithTarget(nullptr);
    EXPECT_EQ(invocation->getReturnValue().to<NSUInteger>(), 0U);
    EXPECT_THROW(invocation->setArgument_atIndex(Value(1), 2), NSException);
    EXPECT_THROW(invocation->setArgument_atIndex(Value(1), 0), NSException);
    EXPECT_THROW(static_cast<void>(NSInvocation::invocationWithMethodSignature(nullptr)), NSException);
}

} // namespace
} // namespace zr
