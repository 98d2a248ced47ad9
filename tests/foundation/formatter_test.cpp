#include <zrbasic/platform/foundation/formatter.h>

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/exception.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

class UpperCaseFormatter : public NSFormatter {
    ZR_OBJECT(UpperCaseFormatter, NSFormatter)
  public:
    Ref<NSString> stringForObjectValue(NSObject* object) override { return object->description()->uppercaseString(); }
    bool getObjectValue_forString_errorDescription(id* object, NSString* string, Ref<NSString>* error) override {
        if (string == nullptr) {
            *error = "no text"_ns;
            return false;
        }
        *object = string->lowercaseString();
        return true;
    }
};

TEST(Formatter, raisesForWhatASubclassMustSay) {
    const Ref<NSFormatter> formatter = make<NSFormatter>();
    EXPECT_THROW(static_cast<void>(formatter->stringForObjectValue("a"_ns)), NSException);
    EXPECT_THROW(static_cast<void>(formatter->editingStringForObjectValue("a"_ns)), NSException);
    id value;
    try {
        formatter->getObjectValue_forString_errorDescription(&value, "a"_ns, nullptr);
        FAIL() << "the plain formatter reads nothing";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSInvalidArgumentException);
        EXPECT_NE(exception.reason().find("-[NSFormatter getObjectValue:forString:errorDescription:]"),
                  std::string::npos);
    }
    EXPECT_FALSE(value);
}

TEST(Formatter, acceptsEveryEdit) {
    const Ref<NSFormatter> formatter = make<NSFormatter>();
    Ref<NSString> replacement;
    Ref<NSString> error;
    EXPECT_TRUE(formatter->isPartialStringValid_newEditingString_errorDescription("a b"_ns, &replacement, &error));
    EXPECT_TRUE(formatter->isPartialStringValid_newEditingString_errorDescription(nullptr, &replacement, &error));
    EXPECT_TRUE(formatter->isPartialStringValid_newEditingString_errorDescription(""_ns, nullptr, nullptr));
    EXPECT_FALSE(replacement);
    EXPECT_FALSE(error);
}

TEST(Formatter, editsWhatItShows) {
    const Ref<UpperCaseFormatter> formatter = make<UpperCaseFormatter>();
    EXPECT_EQ(formatter->stringForObjectValue("abc"_ns)->utf8(), "ABC");
    EXPECT_EQ(formatter->editingStringForObjectValue("abc"_ns)->utf8(), "ABC");
}

TEST(Formatter, runsTheSubclassWhenSentAMessage) {
    const Ref<UpperCaseFormatter> formatter = make<UpperCaseFormatter>();
    EXPECT_EQ(send<Ref<NSString>>(formatter, "stringForObjectValue:"_sel, "abc"_ns)->utf8(), "ABC");
    id value;
    Ref<NSString> error;
    NSString* const none = nullptr;
    EXPECT_TRUE(send<bool>(formatter, "getObjectValue:forString:errorDescription:"_sel, &value, "ABC"_ns, &error));
    EXPECT_EQ(value->description()->utf8(), "abc");
    EXPECT_FALSE(send<bool>(formatter, "getObjectValue:forString:errorDescription:"_sel, &value, none, &error));
    EXPECT_EQ(error->utf8(), "no text");
    EXPECT_TRUE(
        send<bool>(formatter, "isPartialStringValid:newEditingString:errorDescription:"_sel, "x"_ns, &error, &error));
}

} // namespace
} // namespace zr
