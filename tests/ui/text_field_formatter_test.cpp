#include <zrbasic/ui/text_field.h>

#include <zrbasic/core/number_formatters.h>
#include <zrbasic/platform/appkit/beep.h>
#include "../appkit/text_field_testing.h"

namespace zr {
namespace {

/// Counts the beeps that are sounded.
class FormattedField : public test::FieldsInWindow<ZRXTextField> {
  protected:
    FormattedField() {
        setBeepHandler([this] { ++beeps; });
    }
    ~FormattedField() override { setBeepHandler(nullptr); }

    void edit(NSFormatter* formatter) {
        field->setFormatter(formatter);
        window->makeFirstResponder(field);
    }
    bool type(const char* text) { return editor()->insertText(NSString::fromUtf8(text)); }
    /// The text with the selection in brackets, or a bar for the insertion point.
    [[nodiscard]] std::string state() const {
        const NSRange range = editor()->selectedRange();
        std::string text = shown();
        if (range.length == 0) {
            return text.insert(range.location, "|");
        }
        text.insert(range.location + range.length, "]");
        return text.insert(range.location, "[");
    }

    int beeps = 0;
};

TEST_F(FormattedField, acceptsWhatThePriceFormatterAccepts) {
    edit(make<ZRPriceNumberInputFormatter>());
    for (const char* key : {"-", "1", "2", ".", "5"})
        EXPECT_TRUE(type(key)) << key;
    EXPECT_EQ(state(), "-12.5|");
    editor()->deleteBackward(nullptr);
    EXPECT_EQ(state(), "-12.|");
    EXPECT_EQ(beeps, 0);
    EXPECT_EQ(field->doubleValue(), -12);
    EXPECT_TRUE(field->objectValue()->isEqual("-12."_ns)) << "the value is the text";
}

TEST_F(FormattedField, changesNothingAndBeepsOnceForWhatTheCheckRefuses) {
    edit(make<ZRPriceNumberInputFormatter>());
    type("12.5");
    editor()->setSelectedRange({1, 2});
    delegate->log.clear();
    EXPECT_FALSE(type("x"));
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(state(), "1[2.]5") << "neither text nor selection";
    EXPECT_EQ(delegate->log, "") << "nobody is told of a change that was none";
    editor()->setSelectedRange({0, 0});
    type("9.");
    EXPECT_EQ(beeps, 2);
    EXPECT_EQ(state(), "|12.5");
}

TEST_F(FormattedField, refusesSpacesAndWhatIsTooLongSilently) {
    edit(make<ZRPriceNumberInputFormatter>());
    type("1234567890");
    EXPECT_FALSE(type("1"));
    EXPECT_FALSE(type(" "));
    EXPECT_EQ(state(), "1234567890|");
    editor()->setSelectedRange({0, 10});
    EXPECT_FALSE(type("1 2"));
    EXPECT_EQ(state(), "[1234567890]");
    EXPECT_EQ(beeps, 0);
    EXPECT_TRUE(type("1"));
    EXPECT_EQ(state(), "1|");
}

TEST_F(FormattedField, putsTheInsertionPointBehindAReplacement) {
    const auto formatter = make<ZRInputFormatter>();
    formatter->setReplacedStringPairs(dictionary({{"\uFF0C"_ns, "."_ns}}));
    edit(formatter);
    type("125");
    editor()->setSelectedRange({1, 0});
    delegate->log.clear();
    EXPECT_TRUE(type("\uFF0C"));
    EXPECT_EQ(state(), "1.25|");
    EXPECT_EQ(delegate->log, "change 1.25\n");
    EXPECT_EQ(beeps, 0);
    EXPECT_EQ(field->stringValue()->utf8(), "1.25");
}

TEST_F(FormattedField, mayBeEmptiedByAReplacement) {
    const auto formatter = make<ZRInputFormatter>();
    formatter->setReplacedStringPairs(dictionary({{"x"_ns, ""_ns}}));
    edit(formatter);
    EXPECT_FALSE(type("xxx")) << "as empty as before";
    EXPECT_EQ(state(), "|");
    type("12");
    editor()->setSelectedRange({0, 2});
    EXPECT_TRUE(type("x"));
    EXPECT_EQ(state(), "|");
    EXPECT_EQ(field->stringValue()->length(), 0U);
}

TEST_F(FormattedField, judgesWhatIsPastedAsOneEdit) {
    edit(formatterWithNumberMaxLength(3));
    type("12");
    EXPECT_FALSE(type("34"));
    EXPECT_EQ(beeps, 0) << "too long";
    EXPECT_FALSE(type("a"));
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(state(), "12|");
    EXPECT_TRUE(type("3"));
    EXPECT_FALSE(type(std::string(100000, '1').c_str()));
    EXPECT_EQ(state(), "123|");
}

TEST_F(FormattedField, isNotJudgedByTheFormatterOfAnotherField) {
    edit(formatterWithNumberMaxLength(3));
    window->makeFirstResponder(other);
    EXPECT_TRUE(type("any text"));
    EXPECT_EQ(shown(), "any text");
    window->makeFirstResponder(field);
    EXPECT_FALSE(type("a"));
    field->setFormatter(nullptr);
    EXPECT_TRUE(type("a")) << "judged by the formatter of the moment";
}

TEST_F(FormattedField, isNotJudgedWhenTheProgramSetsItsText) {
    edit(formatterWithNumberMaxLength(3));
    field->setStringValue("abcdef"_ns);
    EXPECT_EQ(shown(), "abcdef");
    EXPECT_EQ(beeps, 0);
    press("insertNewline:"_sel);
    EXPECT_EQ(field->stringValue()->utf8(), "abcdef");
    EXPECT_EQ(beeps, 0) << "nor at the end";
}

TEST_F(FormattedField, keepsANumberThatNobodyHasEdited) {
    field->setFormatter(make<ZRPriceNumberInputFormatter>());
    field->setObjectValue(nullptr);
    EXPECT_EQ(field->stringValue()->utf8(), "");
    field->setObjectValue(box(12));
    EXPECT_EQ(field->stringValue()->utf8(), "12");
    window->makeFirstResponder(field);
    EXPECT_EQ(shown(), "12");
    window->makeFirstResponder(nullptr);
    EXPECT_TRUE(field->objectValue()->isEqual(box(12))) << "untouched, it stays a number";
}

TEST_F(FormattedField, isNotStuckInAFieldWhoseFormatterRaises) {
    // The plain formatter reads nothing, and says so by raising.
    field->setDelegate(nullptr);
    EXPECT_THROW(edit(alloc<NSFormatter>()), NSException) << "asked for the text to begin with";
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_TRUE(window->makeFirstResponder(other));
    field->setObjectValue(nullptr);
    EXPECT_TRUE(window->makeFirstResponder(field));
    EXPECT_TRUE(type("1"));
    EXPECT_THROW(window->makeFirstResponder(other), NSException);
    EXPECT_TRUE(window->makeFirstResponder(other));
    EXPECT_TRUE(isEdited(other));
    EXPECT_EQ(field->currentEditor(), nullptr);
    EXPECT_EQ(field->subviews()->count(), 0U);
    EXPECT_TRUE(type("2"));
    EXPECT_EQ(other->stringValue()->utf8(), "2");
}

/// Reads whole numbers alone, and asks its field about them.
class AskingFormatter : public NSFormatter {
    ZR_OBJECT(AskingFormatter, NSFormatter)
  public:
    Ref<NSString> stringForObjectValue(NSObject* object) override { return object->description(); }
    bool getObjectValue_forString_errorDescription(id* object, NSString* string, Ref<NSString>*) override {
        heard = field ? field->stringValue() : nullptr;
        const NSInteger value = string->integerValue();
        *object = box(value);
        return value != 0;
    }

    NSTextField* field = nullptr;
    Ref<NSString> heard;
};

TEST_F(FormattedField, keepsItsLastValueWhenTheTextCannotBeRead) {
    const auto formatter = make<AskingFormatter>();
    field->setFormatter(formatter);
    field->setStringValue("5"_ns);
    formatter->field = field;
    window->makeFirstResponder(field);
    type("12");
    EXPECT_TRUE(field->objectValue()->isEqual(box(12)));
    EXPECT_EQ(formatter->heard->utf8(), "5") << "asked while it was about to be read";
    editor()->setSelectedRange({0, 2});
    type("x");
    EXPECT_TRUE(field->objectValue()->isEqual(box(12)));
    EXPECT_EQ(shown(), "x") << "the user may mend it";
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(field->stringValue()->utf8(), "12");
    formatter->field = nullptr;
}

} // namespace
} // namespace zr
