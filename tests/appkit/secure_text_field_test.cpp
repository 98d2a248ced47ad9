#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/foundation/string_overwriting_p.h>
#include "canvas_testing.h"
#include "measuring_testing.h"
#include "text_field_testing.h"

#include <string>
#include <utility>

namespace zr {
namespace {

/// Shows what is in it at its very end.
class Secret : public NSString {
    ZR_OBJECT(Secret, NSString)
  public:
    ~Secret() override { heard = m_text; }

    static Ref<NSString> string() { return make<Secret>(&NSString::initWithString, "secret"_ns); }

    static inline std::u16string heard;
};

const std::u16string overwritten(6, u'\0');

class SecureTextField : public test::FieldsInWindow<NSSecureTextField> {};

TEST_F(SecureTextField, hasACellOfItsOwnKind) {
    EXPECT_EQ(NSSecureTextField::cellClass(), NSSecureTextFieldCell::classObject());
    EXPECT_NE(cast<NSSecureTextFieldCell>(field->cell().get()), nullptr);
    field->setStringValue("abc"_ns);
    EXPECT_EQ(test::drawn(field).texts.at(0).text->string()->view(), u"\u2022\u2022\u2022");
}

TEST_F(SecureTextField, isEditedInSecretAndOthersAreNot) {
    window->makeFirstResponder(field);
    EXPECT_TRUE(editor()->isSecure());
    const auto open = make<NSTextField>(&NSTextField::initWithFrame, NSRect{{0, 0}, {50, 20}});
    window->contentView()->addSubview(open);
    window->makeFirstResponder(open);
    EXPECT_FALSE(editor()->isSecure());
    window->makeFirstResponder(other);
    EXPECT_TRUE(editor()->isSecure());
}

TEST_F(SecureTextField, givesNothingToTheClipboard) {
    test::MeasuringToolkit toolkit;
    toolkit.setClipboardText("before"_ns);
    window->makeFirstResponder(field);
    editor()->insertText("secret"_ns);
    editor()->selectAll(nullptr);
    editor()->copy(nullptr);
    editor()->cut(nullptr);
    EXPECT_EQ(toolkit.clipboardText()->utf8(), "before");
    EXPECT_EQ(field->stringValue()->utf8(), "secret") << "nor is anything cut";
}

TEST_F(SecureTextField, leavesNothingInTheEditor) {
    window->makeFirstResponder(field);
    editor()->insertText("secret"_ns);
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(field->stringValue()->utf8(), "secret");
    window->makeFirstResponder(field);
    EXPECT_EQ(shown(), "secret");
    field->abortEditing();
    EXPECT_EQ(shown(), "");
}

TEST_F(SecureTextField, overwritesItsTextWhenItGoes) {
    Secret::heard = u"untouched";
    {
        const auto cell = make<NSSecureTextFieldCell>();
        cell->setStringValue(Secret::string());
        EXPECT_EQ(cell->stringValue()->utf8(), "secret");
    }
    EXPECT_EQ(Secret::heard, overwritten);
    Secret::heard = u"untouched";
    {
        const auto cell = make<NSTextFieldCell>();
        cell->setStringValue(Secret::string());
    }
    EXPECT_EQ(Secret::heard, u"secret") << "others do not";
}

TEST_F(SecureTextField, overwritesATextThatItGivesUp) {
    Secret::heard = u"untouched";
    field->setStringValue(Secret::string());
    field->setStringValue("other"_ns);
    EXPECT_EQ(Secret::heard, overwritten);
    Secret::heard = u"untouched";
    field->setStringValue(Secret::string());
    window->makeFirstResponder(field);
    editor()->insertText("x"_ns);
    EXPECT_EQ(field->stringValue()->utf8(), "x");
    EXPECT_EQ(Secret::heard, u"untouched") << "escape may still want it back";
    window->makeFirstResponder(other);
    EXPECT_EQ(Secret::heard, overwritten);
}

TEST_F(SecureTextField, isAloneInHoldingWhatWasTyped) {
    window->makeFirstResponder(field);
    editor()->insertText("secret"_ns);
    window->makeFirstResponder(nullptr);
    Ref<NSString> text = field->stringValue();
    field->setStringValue(nullptr);
    EXPECT_EQ(text->utf8(), "secret");
    EXPECT_TRUE(detail::overwriteSoleString(std::move(text))) << "nobody but the field and this test had it";
}

TEST_F(SecureTextField, doesNotOverwriteWhatSomebodyElseHolds) {
    const Ref<NSString> held = Secret::string();
    field->setStringValue(held);
    const Ref<NSString> asked = field->stringValue();
    EXPECT_EQ(asked, held) << "the very string";
    field->setStringValue(nullptr);
    EXPECT_EQ(held->utf8(), "secret");
    field->setStringValue(held);
    field->setObjectValue(held);
    field->setStringValue(held);
    EXPECT_EQ(field->stringValue()->utf8(), "secret");
}

TEST_F(SecureTextField, keepsTheTextThatItIsSetToAgain) {
    field->setStringValue(Secret::string());
    field->setStringValue(field->stringValue());
    EXPECT_EQ(field->stringValue()->utf8(), "secret");
    field->cell()->setObjectValue(field->cell()->objectValue());
    EXPECT_EQ(field->stringValue()->utf8(), "secret");
    window->makeFirstResponder(field);
    press("cancelOperation:"_sel);
    EXPECT_EQ(field->stringValue()->utf8(), "secret");
}

} // namespace
} // namespace zr
