#include "field_testing.h"

#include <zrbasic/core/number_formatters.h>
#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/runtime/exception.h>

#include <QClipboard>

namespace zr::test {
namespace {

class FormattedField : public FieldWindow {
  protected:
    void SetUp() override {
        field = add({{20, 100}, {200, 24}});
        show();
        setBeepHandler([this] { ++beeps; });
    }
    ~FormattedField() override { setBeepHandler({}); }

    void attach(NSFormatter* formatter, NSString* text = nullptr) {
        field->setFormatter(formatter);
        field->setStringValue(text ? text : NSString::string().get());
        edit(field);
        press(Qt::Key_End);
    }
    void paste(const char* text) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        press(Qt::Key_V, Qt::ControlModifier);
    }
    std::string text() const {
        EXPECT_EQ(line()->text().toStdString(), utf8(editor()->string()));
        return utf8(field->stringValue());
    }

    Ref<ZRXTextField> field;
    int beeps = 0;
};

TEST_F(FormattedField, aPriceIsTypedAndNothingElse) {
    attach(make<ZRPriceNumberInputFormatter>());
    type("-12a.5b");
    EXPECT_EQ(text(), "-12.5");
    EXPECT_EQ(beeps, 2);
    type(" ");
    EXPECT_EQ(text(), "-12.5");
    EXPECT_EQ(beeps, 2);
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(5, 0));
}

TEST_F(FormattedField, whatIsTooLongIsRefusedWithoutABeep) {
    attach(inputFormatterWithMaxLength<ZRInputFormatter>(3));
    type("abcd");
    EXPECT_EQ(text(), "abc");
    EXPECT_EQ(beeps, 0);
    paste("xyz");
    EXPECT_EQ(text(), "abc");
    EXPECT_EQ(beeps, 0);
}

TEST_F(FormattedField, aRefusedEditLeavesTheSelection) {
    attach(formatterWithNumberMaxLength<ZRIntegerInputFormatter>(5), "12345"_ns);
    editor()->setSelectedRange(NSMakeRange(1, 3));
    type("x");
    EXPECT_EQ(text(), "12345");
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(line()->selectedText(), "234");
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(1, 3));
    type("9");
    EXPECT_EQ(text(), "195");
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(2, 0));
}

TEST_F(FormattedField, eachEditIsJudgedOnce) {
    int judged = 0;
    attach(inputFormatterWithPartialValidater<ZRInputFormatter>([&](NSString* proposed) {
        ++judged;
        return proposed->length() < 3;
    }));
    judged = 0;
    type("ab");
    EXPECT_EQ(judged, 2);
    type("c");
    EXPECT_EQ(judged, 3);
    EXPECT_EQ(beeps, 1);
    press(Qt::Key_Return);
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(judged, 3);
    EXPECT_EQ(utf8(field->stringValue()), "ab");
}

Ref<ZRInputFormatter> replacing(int* judged = nullptr) {
    const auto formatter = make<ZRInputFormatter>();
    formatter->setReplacedStringPairs(dictionary({{","_ns, "."_ns}, {"k"_ns, "000"_ns}}));
    formatter->setPartialValidater([judged](NSString*) {
        if (judged) {
            ++*judged;
        }
        return true;
    });
    return formatter;
}

TEST_F(FormattedField, aReplacementStandsWithTheInsertionPointAtItsEnd) {
    int judged = 0;
    attach(replacing(&judged), "15"_ns);
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    judged = 0;
    type("k");
    EXPECT_EQ(text(), "10005");
    EXPECT_EQ(judged, 1);
    EXPECT_EQ(beeps, 0);
    EXPECT_EQ(line()->cursorPosition(), 5);
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(5, 0));
    type(",");
    EXPECT_EQ(text(), "10005.");
}

TEST_F(FormattedField, whatIsPastedIsJudgedAsAWhole) {
    attach(make<ZRPriceNumberInputFormatter>());
    paste("12x");
    EXPECT_EQ(text(), "");
    EXPECT_EQ(beeps, 1);
    paste("12.5");
    EXPECT_EQ(text(), "12.5");
    EXPECT_EQ(beeps, 1);
}

TEST_F(FormattedField, whatIsPastedIsReplaced) {
    attach(replacing());
    paste("1,5k");
    EXPECT_EQ(text(), "1.5000");
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(6, 0));
}

TEST_F(FormattedField, whatAnInputMethodEntersIsJudged) {
    attach(formatterWithNumberMaxLength<ZRIntegerInputFormatter>(4));
    commit({}, "nihao");
    EXPECT_EQ(beeps, 0);
    commit(QString::fromUtf8("\xE4\xBD\xA0"));
    EXPECT_EQ(text(), "");
    EXPECT_EQ(beeps, 1);
    commit("12");
    EXPECT_EQ(text(), "12");
    EXPECT_EQ(beeps, 1);
}

TEST_F(FormattedField, whatAnInputMethodEntersIsReplaced) {
    attach(replacing(), "7"_ns);
    commit("k");
    EXPECT_EQ(text(), "7000");
    EXPECT_EQ(line()->cursorPosition(), 4);
}

TEST_F(FormattedField, undoIsJudgedToo) {
    bool agrees = true;
    attach(inputFormatterWithPartialValidater<ZRInputFormatter>([&](NSString*) { return agrees; }), "1"_ns);
    type("2");
    ASSERT_EQ(text(), "12");
    agrees = false;
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text(), "12");
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(2, 0));
    agrees = true;
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text(), "1");
    EXPECT_EQ(beeps, 1);
}

TEST_F(FormattedField, deletingIsJudgedToo) {
    bool agrees = false;
    attach(inputFormatterWithPartialValidater<ZRInputFormatter>([&](NSString*) { return agrees; }), "123"_ns);
    press(Qt::Key_Backspace);
    press(Qt::Key_Home);
    press(Qt::Key_Delete);
    EXPECT_EQ(text(), "123");
    EXPECT_EQ(beeps, 2);
    agrees = true;
    press(Qt::Key_Delete);
    EXPECT_EQ(text(), "23");
}

TEST_F(FormattedField, aRefusedDeletionOfAPasswordLeavesIt) {
    const auto secure = add<ZRXSecureTextField>({{20, 40}, {200, 24}});
    secure->setStringValue("abc"_ns);
    secure->setFormatter(inputFormatterWithPartialValidater<ZRInputFormatter>([](NSString*) { return false; }));
    edit(secure);
    press(Qt::Key_Home);
    press(Qt::Key_Delete);
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(line()->text(), "abc");
    EXPECT_EQ(utf8(editor()->string()), "abc");
    press(Qt::Key_End);
    press(Qt::Key_Backspace);
    EXPECT_EQ(line()->text(), "abc");
    EXPECT_EQ(beeps, 2);
}

TEST_F(FormattedField, aFormatterThatRaisesHasNotAgreed) {
    attach(inputFormatterWithPartialValidater<ZRInputFormatter>(
        [](NSString*) -> bool { NSException::raise(NSInternalInconsistencyException, "no opinion"); }));
    testing::internal::CaptureStderr();
    type("1");
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_EQ(text(), "");
    EXPECT_NE(reported.find("no opinion"), std::string::npos) << reported;
    EXPECT_EQ(window->firstResponder(), editor());
}

TEST_F(FormattedField, aFormatterMaySetAnotherTextWhileItJudges) {
    attach(inputFormatterWithPartialValidater<ZRInputFormatter>([&](NSString* proposed) {
        if (proposed->isEqual("1"_ns)) {
            editor()->setString("own"_ns);
        }
        return true;
    }));
    type("1");
    EXPECT_TRUE(eventually([] { return line()->text() == "own"; }));
    EXPECT_EQ(text(), "own");
}

} // namespace
} // namespace zr::test
