#include <zrbasic/platform/foundation/predicate.h>

#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/exception.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

bool matches(NSString* pattern, NSObject* object) {
    return NSPredicate::predicateWithFormat("SELF MATCHES %@"_ns, pattern)->evaluateWithObject(object);
}

TEST(Predicate, asksForAMatchOfTheWholeText) {
    EXPECT_TRUE(matches("a|ab"_ns, "ab"_ns));
    EXPECT_TRUE(matches("\\d{3}"_ns, "123"_ns));
    EXPECT_FALSE(matches("\\d"_ns, "123"_ns));
    EXPECT_TRUE(matches("a?"_ns, ""_ns));
    EXPECT_FALSE(matches(".*"_ns, "a\nb"_ns));
    EXPECT_FALSE(matches("ABC"_ns, "abc"_ns));
}

TEST(Predicate, doesNotOverlookALineFeedAtTheEnd) {
    EXPECT_TRUE(matches("^\\d+$"_ns, "123"_ns));
    EXPECT_FALSE(matches("^\\d+$"_ns, "123\n"_ns));
    EXPECT_FALSE(matches("^\\d+$"_ns, "123\r\n"_ns));
}

TEST(Predicate, takesThePatternAsItIs) {
    EXPECT_TRUE(matches("\\\\d"_ns, "\\d"_ns));
    EXPECT_TRUE(matches("\\\""_ns, "\""_ns));
    EXPECT_TRUE(matches("%@"_ns, "%@"_ns));
}

TEST(Predicate, isFulfilledByNothingWhenThePatternIsNoUse) {
    for (NSString* pattern : {static_cast<NSString*>(nullptr), ""_ns.get(), "("_ns.get(), "a{2,1}"_ns.get()}) {
        SCOPED_TRACE(pattern ? pattern->utf8() : "null");
        EXPECT_FALSE(matches(pattern, ""_ns));
        EXPECT_FALSE(matches(pattern, "("_ns));
        EXPECT_FALSE(matches(pattern, nullptr));
    }
    const Ref<NSPredicate> odd = NSPredicate::predicateWithFormat("SELF MATCHES %@"_ns, box(12));
    EXPECT_FALSE(odd->evaluateWithObject("12"_ns));
}

TEST(Predicate, isNotFulfilledByNull) {
    EXPECT_FALSE(matches(".*"_ns, nullptr));
}

TEST(Predicate, raisesForObjectsThatAreNoText) {
    EXPECT_THROW(static_cast<void>(matches(".*"_ns, NSNull::null())), NSException);
    try {
        static_cast<void>(matches(".*"_ns, box(12)));
        FAIL() << "a number is no text";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSInvalidArgumentException);
        EXPECT_EQ(exception.reason(), "Can't do regex matching on object 12.");
    }
}

TEST(Predicate, knowsOneFormatOnly) {
    EXPECT_TRUE(NSPredicate::predicateWithFormat(" self  matches %@ "_ns, "a"_ns)->evaluateWithObject("a"_ns));
    for (NSString* format :
         {""_ns.get(), "SELF MATCHES"_ns.get(), "SELF LIKE %@"_ns.get(), "SELF MATCHES %@ x"_ns.get(),
          "SELFMATCHES %@"_ns.get(), static_cast<NSString*>(nullptr)}) {
        SCOPED_TRACE(format ? format->utf8() : "null");
        EXPECT_THROW(static_cast<void>(NSPredicate::predicateWithFormat(format, "a"_ns)), NSException);
    }
}

TEST(Predicate, keepsItsPatternWhenTheStringChanges) {
    const Ref<NSMutableString> pattern = NSMutableString::stringWithString("abc"_ns);
    const Ref<NSPredicate> predicate = NSPredicate::predicateWithFormat("SELF MATCHES %@"_ns, pattern);
    pattern->appendString("d"_ns);
    EXPECT_TRUE(predicate->evaluateWithObject("abc"_ns));
    EXPECT_FALSE(predicate->evaluateWithObject("abcd"_ns));
}

TEST(Predicate, isAValue) {
    const Ref<NSPredicate> predicate = NSPredicate::predicateWithFormat("SELF MATCHES %@"_ns, "a\"\\d"_ns);
    const Ref<NSPredicate> same = NSPredicate::predicateWithFormat("SELF MATCHES %@"_ns, "a\"\\d"_ns);
    const Ref<NSPredicate> empty = NSPredicate::predicateWithFormat("SELF MATCHES %@"_ns, nullptr);
    EXPECT_TRUE(predicate->isEqual(same));
    EXPECT_EQ(predicate->hash(), same->hash());
    EXPECT_FALSE(predicate->isEqual(empty));
    EXPECT_FALSE(empty->isEqual(predicate));
    EXPECT_FALSE(predicate->isEqual("SELF"_ns));
    EXPECT_EQ(predicate->copy(), predicate);
    EXPECT_EQ(predicate->description()->utf8(), R"(SELF MATCHES "a\"\\d")");
    EXPECT_EQ(empty->predicateFormat()->utf8(), "SELF MATCHES nil");
}

TEST(Predicate, answersMessages) {
    const id predicate =
        send<id>(NSPredicate::classObject(), "predicateWithFormat:"_sel, "SELF MATCHES %@"_ns, "a+"_ns);
    EXPECT_TRUE(send<bool>(predicate, "evaluateWithObject:"_sel, "aa"_ns));
    EXPECT_FALSE(send<bool>(predicate, "evaluateWithObject:"_sel, "b"_ns));
}

} // namespace
} // namespace zr
