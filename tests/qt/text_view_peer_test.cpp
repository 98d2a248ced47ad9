#include "field_testing.h"

#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>

#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>

namespace zr::test {
namespace {

class TextViewListener : public NSObject {
    ZR_OBJECT(TextViewListener, NSObject)
  public:
    void changed(NSObject*) { ++changes; }
    ZR_METHOD(changed, "textDidChange:")

    int changes = 0;
};

class TextViewOnScreen : public FieldWindow {
  protected:
    void SetUp() override {
        text = add<NSTextView>({{10, 10}, {200, 140}});
        text->setDelegate(listener);
        show();
        window->makeFirstResponder(text);
        ASSERT_TRUE(eventually([this] { return focused() == browser(); }));
    }
    QTextBrowser* browser() const { return qt::widget(window.get())->findChild<QTextBrowser*>(); }
    std::string shown() const { return browser()->document()->toPlainText().toStdString(); }

    Ref<TextViewListener> listener = make<TextViewListener>();
    Ref<NSTextView> text;
};

TEST_F(TextViewOnScreen, whatIsTypedIsTheObjectsText) {
    type("ab");
    press(Qt::Key_Return);
    type("c");
    EXPECT_EQ(utf8(text->string()), "ab\nc");
    EXPECT_EQ(shown(), "ab\nc");
    EXPECT_EQ(listener->changes, 4);
    EXPECT_EQ(text->selectedRange(), NSMakeRange(4, 0));
}

TEST_F(TextViewOnScreen, whatIsRefusedIsTakenBack) {
    text->setString("12"_ns);
    text->setEditJudge([](TextEdit& edit, const TextEdit&) {
        return edit.text->length() > 3 ? EditJudgement::Refused : EditJudgement::Accepted;
    });
    type("34");
    EXPECT_EQ(utf8(text->string()), "123");
    EXPECT_EQ(shown(), "123");
    EXPECT_EQ(listener->changes, 1);
    press(Qt::Key_Backspace);
    EXPECT_EQ(utf8(text->string()), "12");
}

TEST_F(TextViewOnScreen, whatIsReplacedStandsInstead) {
    text->setEditJudge([](TextEdit& edit, const TextEdit&) {
        edit.text = NSString::fromUtf8("<" + edit.text->utf8() + ">");
        return EditJudgement::Replaced;
    });
    type("x");
    EXPECT_EQ(utf8(text->string()), "<x>");
    EXPECT_EQ(shown(), "<x>");
    EXPECT_EQ(browser()->textCursor().position(), 3);
}

TEST_F(TextViewOnScreen, linesBreakAtTheWidthOnlyWhereTheContainerFollowsTheView) {
    text->setString("a text of many words that is wider than two hundred points"_ns);
    EXPECT_GT(browser()->document()->firstBlock().layout()->lineCount(), 1);
    text->textContainer()->setWidthTracksTextView(false);
    text->setString("still a text of many words that is wider than two hundred points"_ns);
    EXPECT_EQ(browser()->document()->firstBlock().layout()->lineCount(), 1);
}

TEST_F(TextViewOnScreen, paragraphsStandAsTheirStylesSay) {
    const auto style = make<NSMutableParagraphStyle>();
    style->setAlignment(NSTextAlignmentCenter);
    text->setString("one\ntwo"_ns);
    text->textStorage()->addAttribute_value_range(NSParagraphStyleAttributeName(), style, {4, 3});
    const QTextDocument* const document = browser()->document();
    EXPECT_FALSE(document->firstBlock().blockFormat().alignment().testFlag(Qt::AlignHCenter));
    EXPECT_TRUE(document->lastBlock().blockFormat().alignment().testFlag(Qt::AlignHCenter));
    text->textStorage()->addAttribute_value_range(NSForegroundColorAttributeName(),
                                                  NSColor::colorWithSRGBRed_green_blue_alpha(1, 0, 0, 1), {0, 3});
    QTextCursor cursor(browser()->document());
    cursor.setPosition(2);
    EXPECT_EQ(cursor.charFormat().foreground().color(), QColor(Qt::red));
}

TEST_F(TextViewOnScreen, whatCannotBeSelectedDoesNotTakeTheKeyboard) {
    window->makeFirstResponder(nullptr);
    text->setEditable(false);
    text->setSelectable(false);
    EXPECT_EQ(browser()->focusPolicy(), Qt::NoFocus);
    EXPECT_FALSE(browser()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    QTest::mouseClick(handle(), Qt::LeftButton, {}, pixelOf(text, {5, 135}));
    EXPECT_NE(window->firstResponder(), text);
}

TEST_F(TextViewOnScreen, theTabKeyLeavesATextThatIsOnlyRead) {
    const auto field = add({{220, 100}, {90, 24}});
    text->setEditable(false);
    text->setString("read"_ns);
    press(Qt::Key_Tab);
    EXPECT_TRUE(field->currentEditor());
    EXPECT_EQ(utf8(text->string()), "read");
}

TEST_F(TextViewOnScreen, aTextThatIsSetIsNotReported) {
    text->setString("set"_ns);
    EXPECT_EQ(shown(), "set");
    EXPECT_EQ(listener->changes, 0);
    text->setSelectedRange(NSMakeRange(1, 1));
    EXPECT_EQ(browser()->textCursor().selectedText(), "e");
}

TEST_F(TextViewOnScreen, theViewMayGoWhileItIsTypedInto) {
    text->setEditJudge([this](TextEdit&, const TextEdit&) {
        text->removeFromSuperview();
        text = nullptr;
        return EditJudgement::Accepted;
    });
    const QPointer<QTextBrowser> widget = browser();
    QTest::keyClick(widget, Qt::Key_A);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_FALSE(widget);
    EXPECT_EQ(window->firstResponder(), window);
}

} // namespace
} // namespace zr::test
