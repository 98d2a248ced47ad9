#include "../foundation/checks.h"
#include "text_listening.h"
#include "text_toolkit.h"

#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <string>

namespace zr {
namespace {

using test::TextDelegate;
using test::TextToolkit;
using test::TextViewTest;

class TextEditing : public TextViewTest {};

TEST_F(TextEditing, insertsInPlaceOfTheSelection) {
    show("abcd", {1, 2});
    EXPECT_TRUE(view->insertText("XYZ"_ns));
    EXPECT_EQ(text(), "aXYZd");
    EXPECT_EQ(view->selectedRange(), (NSRange{4, 0}));
    EXPECT_TRUE(view->insertText_replacementRange("-"_ns, {0, 1}));
    EXPECT_EQ(text(), "-XYZd");
    EXPECT_EQ(view->selectedRange(), (NSRange{1, 0}));
    EXPECT_TRUE(view->insertText_replacementRange("!"_ns, {NSNotFound, 3}));
    EXPECT_EQ(text(), "-!XYZd");
    EXPECT_TRUE(view->insertText_replacementRange("?"_ns, {4, static_cast<NSUInteger>(-2)}));
    EXPECT_EQ(text(), "-!XY?");
}

TEST_F(TextEditing, insertsStringsAndTheCharactersOfStyledTexts) {
    EXPECT_TRUE(view->insertText(make<NSAttributedString>(&NSAttributedString::initWithString, "a"_ns)));
    EXPECT_TRUE(send<bool>(view, "insertText:"_sel, "b"_ns));
    EXPECT_EQ(text(), "ab");
    EXPECT_FALSE(view->insertText(NSNull::null()));
    EXPECT_FALSE(view->insertText(box(7)));
    EXPECT_FALSE(view->insertText(nullptr));
    EXPECT_EQ(text(), "ab");
    show("ab", {0, 1});
    EXPECT_TRUE(view->insertText(nullptr));
    EXPECT_EQ(text(), "b");
    const auto huge = NSString::fromUtf16(std::u16string(1000000, u'x'));
    EXPECT_TRUE(view->insertText(huge));
    EXPECT_EQ(view->string()->length(), 1000001u);
}

TEST_F(TextEditing, changesNothingWhereItIsNotAllowed) {
    show("abc", {1, 1});
    view->setEditable(false);
    EXPECT_FALSE(view->insertText("x"_ns));
    view->deleteBackward(nullptr);
    view->deleteForward(nullptr);
    EXPECT_EQ(text(), "abc");
    EXPECT_EQ(delegate->heard(), "");
    view->setEditable(true);
    delegate->mayBegin = false;
    EXPECT_FALSE(view->insertText("x"_ns));
    EXPECT_EQ(text(), "abc");
    EXPECT_EQ(view->selectedRange(), (NSRange{1, 1}));
    EXPECT_EQ(delegate->heard(), "begin? ");
}

TEST_F(TextEditing, deletesTheSelectionOrTheCharacterBesideIt) {
    show("abcd", {1, 2});
    view->deleteBackward(nullptr);
    EXPECT_EQ(text(), "ad");
    EXPECT_EQ(view->selectedRange(), (NSRange{1, 0}));
    view->deleteForward(nullptr);
    EXPECT_EQ(text(), "a");
    view->deleteForward(nullptr);
    EXPECT_EQ(text(), "a");
    view->deleteBackward(nullptr);
    EXPECT_EQ(text(), "");
    delegate->heard();
    view->deleteBackward(nullptr);
    view->deleteForward(nullptr);
    EXPECT_EQ(delegate->heard(), "");
}

TEST_F(TextEditing, deletesSurrogatePairsWhole) {
    show("a😀b", {3, 0});
    view->deleteBackward(nullptr);
    EXPECT_EQ(text(), "ab");
    EXPECT_EQ(view->selectedRange(), (NSRange{1, 0}));
    show("a😀b", {1, 0});
    view->deleteForward(nullptr);
    EXPECT_EQ(text(), "ab");
    // Halves that stand alone go one by one.
    view->setString(NSString::fromUtf16(u"\xDC00\xD800"));
    view->deleteBackward(nullptr);
    EXPECT_EQ(view->string()->view(), u"\xDC00");
    view->deleteBackward(nullptr);
    EXPECT_EQ(text(), "");
    view->setString(NSString::fromUtf16(u"\xDC00\xD800"));
    view->setSelectedRange({0, 0});
    view->deleteForward(nullptr);
    EXPECT_EQ(view->string()->view(), u"\xD800");
    view->deleteForward(nullptr);
    EXPECT_EQ(text(), "");
}

TEST_F(TextEditing, showsTheJudgeTheEditAndWhatIsThere) {
    show("abc", {1, 1});
    TextEdit seen;
    TextEdit before;
    view->setEditJudge([&](TextEdit& edit, const TextEdit& present) {
        seen = edit;
        before = present;
        return EditJudgement::Accepted;
    });
    EXPECT_TRUE(view->insertText("XY"_ns));
    EXPECT_EQ(seen.text->utf8(), "aXYc");
    EXPECT_EQ(seen.selection, (NSRange{3, 0}));
    EXPECT_EQ(before.text->utf8(), "abc");
    EXPECT_EQ(before.selection, (NSRange{1, 1}));
    EXPECT_EQ(text(), "aXYc");
}

TEST_F(TextEditing, leavesEverythingAsItWasWhenRefused) {
    show("abc", {1, 1});
    view->setEditJudge([](TextEdit& edit, const TextEdit&) {
        edit = {"never"_ns, {0, 5}};
        return EditJudgement::Refused;
    });
    EXPECT_FALSE(view->insertText("x"_ns));
    EXPECT_EQ(text(), "abc");
    EXPECT_EQ(view->selectedRange(), (NSRange{1, 1}));
    EXPECT_EQ(delegate->heard(), "begin? begun ");
    TextEdit edit{"abx"_ns, {3, 0}};
    EXPECT_EQ(view->judgeEdit(edit), EditJudgement::Refused);
    EXPECT_EQ(edit.text->utf8(), "abc");
    EXPECT_EQ(edit.selection, (NSRange{1, 1}));
}

TEST_F(TextEditing, showsAReplacementWithTheInsertionPointAtItsEnd) {
    show("1", {1, 0});
    view->setEditJudge([](TextEdit& edit, const TextEdit&) {
        edit = {edit.text->stringByAppendingString(".00"_ns), {0, 1}};
        return EditJudgement::Replaced;
    });
    EXPECT_TRUE(view->insertText("2"_ns));
    EXPECT_EQ(text(), "12.00");
    EXPECT_EQ(view->selectedRange(), (NSRange{5, 0}));
    EXPECT_EQ(delegate->heard(), "begin? begun changed ");
    view->setEditJudge([](TextEdit& edit, const TextEdit& present) {
        edit.text = present.text;
        return EditJudgement::Replaced;
    });
    EXPECT_FALSE(view->insertText("x"_ns));
    EXPECT_EQ(delegate->heard(), "");
    view->setEditJudge([](TextEdit& edit, const TextEdit&) {
        edit.text = nullptr;
        return EditJudgement::Replaced;
    });
    EXPECT_TRUE(view->insertText("x"_ns));
    EXPECT_EQ(text(), "");
}

TEST_F(TextEditing, judgesAnEditOfNullAsTheEmptyText) {
    show("abc", {0, 0});
    TextEdit edit;
    EXPECT_EQ(view->judgeEdit(edit), EditJudgement::Accepted);
    ASSERT_NE(edit.text, nullptr);
    EXPECT_EQ(edit.text->length(), 0u);
    EXPECT_EQ(text(), "abc");
}

TEST_F(TextEditing, survivesAJudgeThatSetsAnotherOne) {
    view->setEditJudge([this](TextEdit&, const TextEdit&) {
        view->setEditJudge(nullptr);
        view->setString("set meanwhile"_ns);
        return EditJudgement::Accepted;
    });
    EXPECT_TRUE(view->insertText("x"_ns));
    EXPECT_EQ(text(), "x");
    EXPECT_TRUE(view->insertText("y"_ns));
    EXPECT_EQ(text(), "xy");
}

TEST_F(TextEditing, passesOnWhatTheJudgeRaises) {
    view->setEditJudge(
        [](TextEdit&, const TextEdit&) -> EditJudgement { NSException::raise(NSGenericException, "no"); });
    EXPECT_EQ(test::raisedName([&] { view->insertText("x"_ns); }), "NSGenericException");
    EXPECT_EQ(text(), "");
    view->setEditJudge(nullptr);
    EXPECT_TRUE(view->insertText("x"_ns));
}

TEST_F(TextEditing, copiesCutsAndPastesByWayOfTheToolkit) {
    TextToolkit toolkit;
    show("abcd", {1, 2});
    send<void>(view, "copy:"_sel, nullptr);
    EXPECT_EQ(toolkit.clipboardText()->utf8(), "bc");
    EXPECT_EQ(text(), "abcd");
    view->setSelectedRange({3, 1});
    view->cut(nullptr);
    EXPECT_EQ(toolkit.clipboardText()->utf8(), "d");
    EXPECT_EQ(text(), "abc");
    view->selectAll(nullptr);
    EXPECT_EQ(view->selectedRange(), (NSRange{0, 3}));
    view->paste(nullptr);
    EXPECT_EQ(text(), "d");
    EXPECT_EQ(view->selectedRange(), (NSRange{1, 0}));
}

TEST_F(TextEditing, leavesTheClipboardAloneWithoutASelection) {
    TextToolkit toolkit;
    view->paste(nullptr);
    toolkit.setClipboardText("kept"_ns);
    show("abc", {1, 0});
    view->copy(nullptr);
    view->cut(nullptr);
    EXPECT_EQ(toolkit.clipboardText()->utf8(), "kept");
    EXPECT_EQ(text(), "abc");
    show("abc", {0, 3});
    view->setEditable(false);
    view->cut(nullptr);
    EXPECT_EQ(toolkit.clipboardText()->utf8(), "kept");
    view->paste(nullptr);
    EXPECT_EQ(text(), "abc");
}

TEST_F(TextEditing, neverLetsASecureTextOut) {
    TextToolkit toolkit;
    view->setSecure(true);
    show("secret", {0, 6});
    view->copy(nullptr);
    view->cut(nullptr);
    EXPECT_EQ(toolkit.clipboardText(), nullptr);
    EXPECT_EQ(text(), "secret");
    toolkit.setClipboardText("pasted"_ns);
    view->paste(nullptr);
    EXPECT_EQ(text(), "pasted");
}

TEST_F(TextEditing, pastesLineBreaksIntoAFieldAsBlanks) {
    TextToolkit toolkit;
    toolkit.setClipboardText(NSString::fromUtf16(u"a\nb\rc\u0085d\u2028e\u2029f\tg"));
    view->paste(nullptr);
    EXPECT_EQ(view->string()->view(), u"a\nb\rc\u0085d\u2028e\u2029f\tg");
    view->setString(nullptr);
    view->setFieldEditor(true);
    view->paste(nullptr);
    EXPECT_EQ(view->string()->view(), u"a b c d e f\tg");
}

TEST_F(TextEditing, takesReturnAndTabAsCharactersOutsideOfFields) {
    view->doCommandBySelector("insertNewline:"_sel);
    view->doCommandBySelector("insertTab:"_sel);
    EXPECT_EQ(text(), "\n\t");
    const std::uint64_t beeps = beepCount();
    view->doCommandBySelector("cancelOperation:"_sel);
    EXPECT_EQ(beepCount(), beeps + 1);
    view->removeFromSuperview();
    view->doCommandBySelector("cancelOperation:"_sel);
    EXPECT_EQ(beepCount(), beeps + 2);
    EXPECT_EQ(text(), "\n\t");
}

TEST_F(TextEditing, leavesTheTabKeyToTheWindowWhereItCannotEdit) {
    const auto other = make<NSTextView>(&NSTextView::initWithFrame, NSMakeRect(0, 50, 100, 20));
    window->contentView()->addSubview(other);
    view->setEditable(false);
    view->setNextKeyView(other);
    other->setNextKeyView(view);
    ASSERT_TRUE(window->makeFirstResponder(view));
    view->doCommandBySelector("insertTab:"_sel);
    EXPECT_EQ(window->firstResponder(), other);
    other->doCommandBySelector("insertBacktab:"_sel);
    EXPECT_TRUE(isFirst());
    EXPECT_EQ(text(), "");
    EXPECT_EQ(other->string()->utf8(), "");
}

} // namespace
} // namespace zr
