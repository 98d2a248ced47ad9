#include <zrbasic/core/input_formatter.h>

#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/exception.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zr {
namespace {

// What one edit came to: "yes", "no" or "no -> text", and " beep" for every beep.
std::string edit(ZRInputFormatter* formatter, NSString* proposed) {
    const auto beeps = beepCount();
    Ref<NSString> replacement;
    Ref<NSString> error;
    const bool accepted =
        formatter->isPartialStringValid_newEditingString_errorDescription(proposed, &replacement, &error);
    std::string result = accepted ? "yes" : "no";
    if (replacement)
        result += " -> '" + replacement->utf8() + "'";
    for (auto heard = beeps; heard < beepCount(); ++heard)
        result += " beep";
    EXPECT_FALSE(error) << "the error description is never written";
    return result;
}

Ref<ZRInputFormatter> formatterWithPairs(std::initializer_list<DictionaryEntry> pairs) {
    const Ref<ZRInputFormatter> formatter = make<ZRInputFormatter>();
    formatter->setReplacedStringPairs(dictionary(pairs));
    return formatter;
}

class AdoptingDelegate : public NSObject, public ZRInputFormatterDelegate {
    ZR_OBJECT(AdoptingDelegate, NSObject, ZRInputFormatterDelegate)
  public:
    bool inputFormatter_isPartialStringValid_newEditingString(ZRInputFormatter* formatter, NSString* partialString,
                                                              Ref<NSString>* newString) override {
        asked.push_back(partialString->utf8());
        lastFormatter = formatter;
        if (replacement)
            *newString = replacement;
        return answer;
    }

    std::vector<std::string> asked;
    ZRInputFormatter* lastFormatter = nullptr;
    Ref<NSString> replacement;
    bool answer = true;
};

// Has the operation but did not adopt the protocol.
class InformalDelegate : public NSObject {
    ZR_OBJECT(InformalDelegate, NSObject)
  public:
    bool check(ZRInputFormatter*, NSString* partialString, Ref<NSString>*) { return partialString->isEqual("good"_ns); }
    ZR_METHOD(check, "inputFormatter:isPartialStringValid:newEditingString:")
};

class SpecialFormatter : public ZRInputFormatter {
    ZR_OBJECT(SpecialFormatter, ZRInputFormatter)
};

TEST(InputFormatter, hasTheseDefaults) {
    const Ref<ZRInputFormatter> formatter = make<ZRInputFormatter>();
    EXPECT_FALSE(formatter->partialPattern());
    EXPECT_FALSE(static_cast<bool>(formatter->partialValidater()));
    EXPECT_FALSE(formatter->delegate());
    EXPECT_EQ(formatter->maxLength(), 0);
    EXPECT_FALSE(formatter->invalidCharacterSet());
    EXPECT_FALSE(formatter->spaceEnable());
    EXPECT_FALSE(formatter->replacedStringPairs());
}

TEST(InputFormatter, listsItsPropertiesInOrder) {
    std::string names;
    for (const Property property : class_copyPropertyList(ZRInputFormatter::classObject()))
        names += std::string(property_getName(property)) + "=" + property_getAttributes(property) + " ";
    EXPECT_EQ(names.substr(0, names.find(' ')), "partialPattern=T@\"NSString\",C,N,V_partialPattern");
    std::vector<std::string> order;
    for (const Property property : class_copyPropertyList(ZRInputFormatter::classObject()))
        order.emplace_back(property_getName(property));
    EXPECT_EQ(order, (std::vector<std::string>{"partialPattern", "partialValidater", "delegate", "maxLength",
                                               "invalidCharacterSet", "spaceEnable", "replacedStringPairs"}));
    EXPECT_NE(names.find("partialValidater=T@?,C,N,V_partialValidater "), std::string::npos) << names;
    EXPECT_NE(names.find("delegate=T@,W,N,V_delegate "), std::string::npos) << names;
}

TEST(InputFormatter, refusesSpacesSilentlyUnlessToldOtherwise) {
    const Ref<ZRInputFormatter> formatter = make<ZRInputFormatter>();
    EXPECT_EQ(edit(formatter, "a b"_ns), "no");
    EXPECT_EQ(edit(formatter, "ab"_ns), "yes");
    EXPECT_EQ(edit(formatter, ""_ns), "yes");
    EXPECT_EQ(edit(formatter, "a\tb\n"_ns), "yes") << "U+0020 only";
    EXPECT_EQ(edit(formatter, u"a\u00A0\u3000b"_ns), "yes");
    EXPECT_EQ(edit(formatter, u"a \u0301b"_ns), "no") << "a space under an accent is a space";
    formatter->setSpaceEnable(true);
    EXPECT_EQ(edit(formatter, "a b"_ns), "yes");
}

TEST(InputFormatter, refusesTextsBeyondTheLimitSilently) {
    const Ref<ZRInputFormatter> formatter = inputFormatterWithMaxLength(5);
    EXPECT_EQ(edit(formatter, "12345"_ns), "yes");
    EXPECT_EQ(edit(formatter, "123456"_ns), "no");
    EXPECT_EQ(edit(formatter, u"😀😀1"_ns), "yes") << "code units are counted";
    EXPECT_EQ(edit(formatter, u"😀😀😀"_ns), "no");
}

TEST(InputFormatter, hasNoLimitAtZeroAndBelow) {
    const Ref<NSString> huge = NSString::fromUtf16(std::u16string(1'000'000, u'x'));
    for (const NSInteger limit : {NSInteger{0}, NSInteger{-3}, std::numeric_limits<NSInteger>::min()}) {
        SCOPED_TRACE(limit);
        EXPECT_EQ(edit(inputFormatterWithMaxLength(limit), huge), "yes");
        EXPECT_EQ(inputFormatterWithMaxLength(limit)->maxLength(), limit);
    }
}

TEST(InputFormatter, takesNullForTheEmptyText) {
    EXPECT_EQ(edit(make<ZRInputFormatter>(), nullptr), "yes");
    EXPECT_EQ(edit(inputFormatterWithPartialPattern("^x$"_ns), nullptr), "yes");
    EXPECT_EQ(edit(formatterWithPairs({{"a"_ns, "b"_ns}}), nullptr), "yes");
}

TEST(InputFormatter, worksWithoutPlacesForItsAnswers) {
    const Ref<ZRInputFormatter> formatter = formatterWithPairs({{"a"_ns, "b"_ns}});
    EXPECT_FALSE(formatter->isPartialStringValid_newEditingString_errorDescription("a"_ns, nullptr, nullptr));
    EXPECT_TRUE(formatter->isPartialStringValid_newEditingString_errorDescription("b"_ns, nullptr, nullptr));
    EXPECT_TRUE(formatter->getObjectValue_forString_errorDescription(nullptr, "b"_ns, nullptr));
}

TEST(InputFormatterReplacements, areHandedBackInARefusal) {
    const Ref<ZRInputFormatter> formatter = formatterWithPairs({{u"，"_ns, "."_ns}});
    EXPECT_EQ(edit(formatter, u"1，5"_ns), "no -> '1.5'");
    EXPECT_EQ(edit(formatter, u"，1，"_ns), "no -> '.1.'") << "every occurrence";
    EXPECT_EQ(edit(formatter, "1.5"_ns), "yes");
    EXPECT_EQ(edit(formatter, ""_ns), "yes");
}

TEST(InputFormatterReplacements, mayEmptyTheText) {
    const Ref<ZRInputFormatter> formatter = formatterWithPairs({{"x"_ns, ""_ns}});
    EXPECT_EQ(edit(formatter, "xx"_ns), "no -> ''");
    formatter->setPartialPattern("^[0-9]+$"_ns);
    EXPECT_EQ(edit(formatter, "x"_ns), "no -> ''") << "an empty text is not checked";
}

TEST(InputFormatterReplacements, chain) {
    const Ref<ZRInputFormatter> formatter = formatterWithPairs({{"a"_ns, "b"_ns}, {"b"_ns, "c"_ns}});
    EXPECT_EQ(edit(formatter, "a"_ns), "no -> 'c'") << "each key sees what the keys before it left";
    const Ref<ZRInputFormatter> reversed = formatterWithPairs({{"b"_ns, "c"_ns}, {"a"_ns, "b"_ns}});
    EXPECT_EQ(edit(reversed, "a"_ns), "no -> 'b'");
}

TEST(InputFormatterReplacements, takeAValueThatIsNoStringForNothing) {
    const Ref<ZRInputFormatter> formatter =
        formatterWithPairs({{"a"_ns, NSNull::null()}, {"b"_ns, box(7)}, {box(1), "x"_ns}, {""_ns, "y"_ns}});
    EXPECT_EQ(edit(formatter, "a1b"_ns), "no -> '1'");
    EXPECT_EQ(edit(formatter, "11"_ns), "yes") << "a key that is no string, or empty, never occurs";
}

TEST(InputFormatterReplacements, comeBetweenTheLengthLimitAndTheContentCheck) {
    const Ref<ZRInputFormatter> formatter =
        formatterWithPairs({{"long"_ns, "1"_ns}, {"+"_ns, " "_ns}, {"z"_ns, "abc"_ns}});
    formatter->setMaxLength(3);
    formatter->setPartialPattern("^[a-c1 ]*$"_ns);
    EXPECT_EQ(edit(formatter, "long"_ns), "no") << "the limit counts what was typed";
    EXPECT_EQ(edit(formatter, "zz"_ns), "no -> 'abcabc'") << "and not what it became";
    EXPECT_EQ(edit(formatter, "1+"_ns), "no -> '1 '") << "spaces likewise";
    EXPECT_EQ(edit(formatter, "zx"_ns), "no beep") << "a refusal hands back nothing, replaced or not";
}

TEST(InputFormatterPattern, mustOccurInTheText) {
    const Ref<ZRInputFormatter> anchored = inputFormatterWithPartialPattern("^\\d{0,3}$"_ns);
    EXPECT_EQ(edit(anchored, "12"_ns), "yes");
    EXPECT_EQ(edit(anchored, "12a"_ns), "no beep");
    EXPECT_EQ(edit(anchored, "1234"_ns), "no beep");
    const Ref<ZRInputFormatter> loose = inputFormatterWithPartialPattern("\\d"_ns);
    EXPECT_EQ(edit(loose, "a1b"_ns), "yes");
    EXPECT_EQ(edit(loose, "ab"_ns), "no beep");
    EXPECT_EQ(edit(inputFormatterWithPartialPattern("x*"_ns), "ab"_ns), "yes") << "an empty match counts";
}

TEST(InputFormatterPattern, refusesEverythingWhenInvalid) {
    const Ref<ZRInputFormatter> formatter = inputFormatterWithPartialPattern("("_ns);
    EXPECT_EQ(edit(formatter, "("_ns), "no beep");
    EXPECT_EQ(edit(formatter, ""_ns), "yes");
}

TEST(InputFormatterPattern, isCopied) {
    const Ref<NSMutableString> pattern = NSMutableString::stringWithString("^a$"_ns);
    const Ref<ZRInputFormatter> formatter = inputFormatterWithPartialPattern(pattern);
    pattern->setString("^b$"_ns);
    EXPECT_EQ(edit(formatter, "a"_ns), "yes");
    EXPECT_EQ(edit(formatter, "b"_ns), "no beep");
}

TEST(InputFormatterPattern, isTestedByAnOperationOfItsOwn) {
    const Ref<ZRInputFormatter> formatter = make<ZRInputFormatter>();
    EXPECT_TRUE(formatter->validateString_withRegPattern("a1"_ns, "\\d"_ns));
    EXPECT_TRUE(formatter->validateString_withRegPattern("a"_ns, "x*"_ns));
    EXPECT_FALSE(formatter->validateString_withRegPattern("a"_ns, "A"_ns));
    EXPECT_FALSE(formatter->validateString_withRegPattern("a"_ns, "("_ns));
    EXPECT_FALSE(formatter->validateString_withRegPattern("a"_ns, ""_ns));
    EXPECT_FALSE(formatter->validateString_withRegPattern("a"_ns, nullptr));
    EXPECT_FALSE(formatter->validateString_withRegPattern(nullptr, "x*"_ns));
    EXPECT_FALSE(formatter->validateString_withRegPattern("+5"_ns, "^+?\\d*\\.?\\d*$"_ns));
    EXPECT_TRUE(formatter->validateString_withRegPattern("5"_ns, "^+?\\d*\\.?\\d*$"_ns));
}

TEST(InputFormatterValidater, decidesAlone) {
    std::vector<std::string> asked;
    const Ref<ZRInputFormatter> formatter = inputFormatterWithPartialValidater([&asked](NSString* text) {
        asked.push_back(text->utf8());
        return text->length() < 3;
    });
    formatter->setPartialPattern("^never$"_ns);
    formatter->setInvalidCharacterSet(NSCharacterSet::characterSetWithCharactersInString("a"_ns));
    EXPECT_EQ(edit(formatter, "aa"_ns), "yes");
    EXPECT_EQ(edit(formatter, "aaa"_ns), "no beep");
    EXPECT_EQ(edit(formatter, ""_ns), "yes");
    EXPECT_EQ(edit(formatter, "a a"_ns), "no");
    EXPECT_EQ(asked, (std::vector<std::string>{"aa", "aaa"}));
}

TEST(InputFormatterValidater, mayReplaceItselfAndLetGoOfTheFormatter) {
    Ref<ZRInputFormatter> formatter = make<ZRInputFormatter>();
    const std::string captured(100, 'c');
    formatter->setPartialValidater([&formatter, captured](NSString*) {
        formatter->setPartialValidater(nullptr);
        formatter = nullptr;
        return captured.size() == 100;
    });
    const Weak<ZRInputFormatter> watched(formatter);
    EXPECT_EQ(edit(formatter.get(), "a"_ns), "yes");
    EXPECT_TRUE(watched.expired());
}

TEST(InputFormatterValidater, countsAsNoneWhenEmpty) {
    const Ref<ZRInputFormatter> formatter = inputFormatterWithPartialPattern("^a$"_ns);
    formatter->setPartialValidater(std::function<bool(NSString*)>());
    EXPECT_FALSE(static_cast<bool>(formatter->partialValidater()));
    EXPECT_EQ(edit(formatter, "b"_ns), "no beep") << "the pattern is next";
    formatter->setPartialValidater([](NSString*) { return true; });
    EXPECT_EQ(edit(formatter, "b"_ns), "yes");
    formatter->setPartialValidater(nullptr);
    EXPECT_EQ(edit(formatter, "b"_ns), "no beep");
}

TEST(InputFormatterValidater, letsItsExceptionsThrough) {
    const Ref<ZRInputFormatter> formatter =
        inputFormatterWithPartialValidater([](NSString*) -> bool { NSException::raise(NSGenericException, "no"); });
    EXPECT_THROW(edit(formatter, "a"_ns), NSException);
}

TEST(InputFormatterDelegate, decidesAndSeesTheReplacedText) {
    const Ref<AdoptingDelegate> delegate = make<AdoptingDelegate>();
    const Ref<ZRInputFormatter> formatter = inputFormatterWithDelegate(delegate);
    formatter->setReplacedStringPairs(dictionary({{"x"_ns, "y"_ns}}));
    EXPECT_EQ(edit(formatter, "a"_ns), "yes");
    EXPECT_EQ(edit(formatter, "x"_ns), "no -> 'y'");
    delegate->answer = false;
    EXPECT_EQ(edit(formatter, "x"_ns), "no beep");
    EXPECT_EQ(edit(formatter, ""_ns), "yes");
    EXPECT_EQ(delegate->asked, (std::vector<std::string>{"a", "y", "y"}));
    EXPECT_EQ(delegate->lastFormatter, formatter.get());
}

TEST(InputFormatterDelegate, mayHandBackATextOfItsOwn) {
    const Ref<AdoptingDelegate> delegate = make<AdoptingDelegate>();
    const Ref<ZRInputFormatter> formatter = inputFormatterWithDelegate(delegate);
    delegate->replacement = "mine"_ns;
    EXPECT_EQ(edit(formatter, "a"_ns), "yes -> 'mine'");
    delegate->answer = false;
    EXPECT_EQ(edit(formatter, "a"_ns), "no -> 'mine' beep") << "it stays in a refusal";
    delegate->answer = true;
    formatter->setReplacedStringPairs(dictionary({{"x"_ns, "y"_ns}}));
    EXPECT_EQ(edit(formatter, "x"_ns), "no -> 'y'") << "the formatter's own text comes last";
}

TEST(InputFormatterDelegate, needNotAdoptTheProtocol) {
    const Ref<InformalDelegate> informal = make<InformalDelegate>();
    const Ref<ZRInputFormatter> formatter = inputFormatterWithDelegate(informal);
    EXPECT_EQ(edit(formatter, "good"_ns), "yes");
    EXPECT_EQ(edit(formatter, "bad"_ns), "no beep");
}

TEST(InputFormatterDelegate, acceptsEverythingWhenItKnowsNothing) {
    const Ref<ZRInputFormatter> formatter = inputFormatterWithDelegate("neither"_ns);
    formatter->setInvalidCharacterSet(NSCharacterSet::characterSetWithCharactersInString("a"_ns));
    formatter->setMaxLength(3);
    EXPECT_EQ(edit(formatter, "aaa"_ns), "yes") << "the delegate comes before the forbidden characters";
    EXPECT_EQ(edit(formatter, "aaaa"_ns), "no");
    EXPECT_EQ(edit(formatter, "a a"_ns), "no");
}

TEST(InputFormatterDelegate, isNotKept) {
    Ref<AdoptingDelegate> delegate = make<AdoptingDelegate>();
    delegate->answer = false;
    const Ref<ZRInputFormatter> formatter = inputFormatterWithDelegate(delegate);
    formatter->setInvalidCharacterSet(NSCharacterSet::characterSetWithCharactersInString("a"_ns));
    EXPECT_EQ(edit(formatter, "b"_ns), "no beep");
    delegate = nullptr;
    EXPECT_FALSE(formatter->delegate());
    EXPECT_EQ(edit(formatter, "b"_ns), "yes") << "the next check applies";
    EXPECT_EQ(edit(formatter, "a"_ns), "no beep");
}

TEST(InputFormatterDelegate, comesAfterThePattern) {
    const Ref<AdoptingDelegate> delegate = make<AdoptingDelegate>();
    delegate->answer = false;
    const Ref<ZRInputFormatter> formatter = inputFormatterWithDelegate(delegate);
    formatter->setPartialPattern("^a$"_ns);
    EXPECT_EQ(edit(formatter, "a"_ns), "yes");
    EXPECT_TRUE(delegate->asked.empty());
}

TEST(InputFormatterForbiddenCharacters, areRefusedWithABeep) {
    const Ref<ZRInputFormatter> formatter = make<ZRInputFormatter>();
    formatter->setInvalidCharacterSet(NSCharacterSet::characterSetWithCharactersInString(u"%😀"_ns));
    EXPECT_EQ(edit(formatter, "abc"_ns), "yes");
    EXPECT_EQ(edit(formatter, "a%c"_ns), "no beep");
    EXPECT_EQ(edit(formatter, u"😀"_ns), "no beep");
    EXPECT_EQ(edit(formatter, u"😁"_ns), "yes") << "half of a forbidden pair is not forbidden";
    formatter->setPartialPattern("%"_ns);
    EXPECT_EQ(edit(formatter, "a%c"_ns), "yes") << "the pattern decides alone";
}

TEST(InputFormatterCreation, isRefusedWithoutWhatItNeeds) {
    EXPECT_FALSE(inputFormatterWithPartialValidater(nullptr));
    EXPECT_FALSE(inputFormatterWithPartialPattern(nullptr));
    EXPECT_FALSE(inputFormatterWithPartialPattern(""_ns));
    EXPECT_FALSE(inputFormatterWithDelegate(nullptr));
    EXPECT_TRUE(inputFormatterWithMaxLength(0));
}

TEST(InputFormatterCreation, leavesPropertiesAloneWhenAnInitialiserIsGivenNothing) {
    EXPECT_FALSE(make<ZRInputFormatter>(&ZRInputFormatter::initWithWithPartialPattern, nullptr)->partialPattern());
    EXPECT_FALSE(make<ZRInputFormatter>(&ZRInputFormatter::initWithWithPartialPattern, ""_ns)->partialPattern());
    EXPECT_FALSE(make<ZRInputFormatter>(&ZRInputFormatter::initWithDelegate, nullptr)->delegate());
    const auto formatter = make<ZRInputFormatter>(&ZRInputFormatter::initWithPartialValidater, nullptr);
    EXPECT_FALSE(static_cast<bool>(formatter->partialValidater()));
}

TEST(InputFormatterCreation, answersClassMessages) {
    Class* const formatters = ZRInputFormatter::classObject();
    NSString* const noString = nullptr;
    EXPECT_EQ(send<Ref<ZRInputFormatter>>(formatters, "inputFormatterWithMaxLength:"_sel, 7)->maxLength(), 7);
    EXPECT_TRUE(send<id>(formatters, "inputFormatterWithPartialPattern:"_sel, "a"_ns));
    EXPECT_FALSE(send<id>(formatters, "inputFormatterWithPartialPattern:"_sel, noString));
    EXPECT_FALSE(send<id>(formatters, "inputFormatterWithDelegate:"_sel, noString));
    const ZRPartialValidater never = [](NSString*) { return false; };
    const auto made = send<Ref<ZRInputFormatter>>(formatters, "inputFormatterWithPartialValidater:"_sel, never);
    ASSERT_TRUE(made);
    EXPECT_EQ(edit(made, "a"_ns), "no beep");
}

TEST(InputFormatterCreation, makesFormattersOfTheReceivingClass) {
    const Ref<SpecialFormatter> made = inputFormatterWithMaxLength<SpecialFormatter>(3);
    EXPECT_EQ(made->isa(), SpecialFormatter::classObject());
    const id sent = send<id>(SpecialFormatter::classObject(), "inputFormatterWithMaxLength:"_sel, 3);
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->isa(), SpecialFormatter::classObject());
}

TEST(InputFormatterValues, areTheTextItself) {
    const Ref<ZRInputFormatter> formatter = make<ZRInputFormatter>();
    const Ref<NSMutableString> typed = NSMutableString::stringWithString("12"_ns);
    id value = box(1);
    Ref<NSString> error;
    EXPECT_TRUE(formatter->getObjectValue_forString_errorDescription(&value, typed, &error));
    EXPECT_EQ(value, typed) << "the very string, no copy";
    EXPECT_TRUE(formatter->getObjectValue_forString_errorDescription(&value, nullptr, &error));
    EXPECT_FALSE(value);
    EXPECT_FALSE(error);
}

TEST(InputFormatterValues, areShownAsTheirDescription) {
    const Ref<ZRInputFormatter> formatter = make<ZRInputFormatter>();
    EXPECT_EQ(formatter->stringForObjectValue(nullptr)->utf8(), "");
    EXPECT_EQ(formatter->stringForObjectValue(box(12))->utf8(), "12");
    EXPECT_EQ(formatter->stringForObjectValue("a%@b"_ns)->utf8(), "a%@b");
    EXPECT_EQ(formatter->stringForObjectValue(NSNull::null())->utf8(), "<null>");
    EXPECT_EQ(formatter->editingStringForObjectValue(box(1.5))->utf8(), "1.5");
}

TEST(InputFormatter, answersAsAFieldWouldAsk) {
    const Ref<ZRInputFormatter> formatter = formatterWithPairs({{"x"_ns, "y"_ns}});
    Ref<NSString> replacement;
    Ref<NSString> error;
    EXPECT_FALSE(send<bool>(formatter, "isPartialStringValid:newEditingString:errorDescription:"_sel, "x"_ns,
                            &replacement, &error));
    EXPECT_EQ(replacement->utf8(), "y");
    EXPECT_TRUE(send<bool>(formatter, "validateString:withRegPattern:"_sel, "x"_ns, "x"_ns));
    EXPECT_EQ(send<Ref<NSString>>(formatter, "stringForObjectValue:"_sel, box(3))->utf8(), "3");
    EXPECT_TRUE(protocolCast<ZRInputFormatterDelegate>(make<AdoptingDelegate>()));
}

TEST(Beep, isSoundedByItsHandler) {
    int heard = 0;
    setBeepHandler([&heard] { ++heard; });
    EXPECT_EQ(edit(inputFormatterWithPartialPattern("^a$"_ns), "b"_ns), "no beep");
    EXPECT_EQ(edit(inputFormatterWithMaxLength(1), "bb"_ns), "no");
    EXPECT_EQ(heard, 1);
    setBeepHandler(nullptr);
    EXPECT_EQ(edit(inputFormatterWithPartialPattern("^a$"_ns), "b"_ns), "no beep") << "counted though silent";
    EXPECT_EQ(heard, 1);
}

} // namespace
} // namespace zr
