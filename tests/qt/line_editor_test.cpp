#include "field_testing.h"

#include <zrbasic/platform/appkit/control.h>
#include <zrbasic/platform/foundation/notification.h>

#include <QClipboard>
#include <QMenu>
#include <QPointer>

namespace zr::test {
namespace {

/// A field's delegate that writes down what it is asked and told.
class LineDelegate : public NSObject {
    ZR_OBJECT(LineDelegate, NSObject)
  public:
    bool command(NSObject*, NSObject*, SEL action) {
        heard += std::string(action.name()) + " ";
        return takesCommands;
    }
    ZR_METHOD(command, "control:textView:doCommandBySelector:")
    bool shouldEnd(NSObject*, NSObject*) { return agrees; }
    ZR_METHOD(shouldEnd, "control:textShouldEndEditing:")
    void changed(NSObject*) { heard += "changed "; }
    ZR_METHOD(changed, "controlTextDidChange:")
    void act(NSObject*) {
        heard += "act ";
        if (onAction) {
            onAction();
        }
    }
    ZR_METHOD(act, "act:")

    std::string heard;
    std::function<void()> onAction;
    bool takesCommands = false;
    bool agrees = true;
};

class LineEditing : public FieldWindow {
  protected:
    void SetUp() override {
        field = add({{20, 100}, {200, 24}});
        other = add({{20, 40}, {200, 24}});
        field->setDelegate(delegate);
        field->setTarget(delegate);
        field->setAction("act:"_sel);
        show();
    }

    Ref<LineDelegate> delegate = make<LineDelegate>();
    Ref<ZRXTextField> field;
    Ref<ZRXTextField> other;
};

TEST_F(LineEditing, whatIsTypedIsTheFieldsText) {
    edit(field);
    type("12.5");
    EXPECT_EQ(utf8(field->stringValue()), "12.5");
    EXPECT_EQ(utf8(editor()->string()), "12.5");
    EXPECT_EQ(line()->text(), "12.5");
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(4, 0));
    EXPECT_EQ(delegate->heard, "changed changed changed changed ");
}

TEST_F(LineEditing, theSelectionIsTheSameOnBothSides) {
    field->setStringValue("abcdef"_ns);
    edit(field);
    EXPECT_EQ(line()->selectedText(), "abcdef");
    press(Qt::Key_Home);
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(0, 0));
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(0, 2));
    editor()->setSelectedRange(NSMakeRange(3, 2));
    EXPECT_EQ(line()->selectedText(), "de");
    type("x");
    EXPECT_EQ(utf8(field->stringValue()), "abcxf");
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(4, 0));
}

TEST_F(LineEditing, aTextThatIsSetShowsAndIsNotReported) {
    edit(field);
    type("a");
    delegate->heard.clear();
    editor()->setString("set"_ns);
    EXPECT_EQ(line()->text(), "set");
    EXPECT_EQ(delegate->heard, "");
    EXPECT_EQ(line()->cursorPosition(), 3);
    type("!");
    EXPECT_EQ(utf8(field->stringValue()), "set!");
}

TEST_F(LineEditing, returnTabAndEscapeAreCommands) {
    delegate->takesCommands = true;
    edit(field);
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    press(Qt::Key_Tab);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Escape);
    EXPECT_EQ(delegate->heard, "insertNewline: insertNewline: insertTab: insertBacktab: cancelOperation: ");
    EXPECT_EQ(window->firstResponder(), editor());
    EXPECT_EQ(line()->text(), "");
}

TEST_F(LineEditing, returnSendsTheActionAndSelectsTheText) {
    edit(field);
    type("42");
    delegate->heard.clear();
    press(Qt::Key_Return);
    EXPECT_EQ(delegate->heard, "insertNewline: act ");
    ASSERT_NE(line(), nullptr);
    EXPECT_EQ(line()->selectedText(), "42");
}

TEST_F(LineEditing, tabLeadsToTheNextFieldAndBacktabBack) {
    edit(field);
    type("1");
    press(Qt::Key_Tab);
    ASSERT_NE(line(), nullptr);
    EXPECT_TRUE(other->currentEditor());
    type("2");
    EXPECT_EQ(utf8(field->stringValue()), "1");
    EXPECT_EQ(utf8(other->stringValue()), "2");
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(field->currentEditor());
    EXPECT_EQ(line()->selectedText(), "1");
}

TEST_F(LineEditing, undoGoesBackToWhereEditingBeganAndNoFurther) {
    other->setStringValue("other"_ns);
    edit(field);
    type("ab");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "");
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(utf8(field->stringValue()), "ab");
    press(Qt::Key_Tab);
    EXPECT_EQ(line()->text(), "other");
    EXPECT_FALSE(line()->isUndoAvailable());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(utf8(other->stringValue()), "other");
}

TEST_F(LineEditing, twoFieldsOfTheSameTextDoNotShareTheirHistory) {
    other->setStringValue("ab"_ns);
    edit(field);
    type("ab");
    EXPECT_TRUE(line()->isUndoAvailable());
    press(Qt::Key_Tab);
    EXPECT_EQ(line()->text(), "ab");
    EXPECT_FALSE(line()->isUndoAvailable());
}

TEST_F(LineEditing, aPairOfSurrogatesIsOneLetter) {
    edit(field);
    typeText(QString::fromUtf8("a\xF0\x9F\x98\x80z"));
    EXPECT_EQ(utf8(field->stringValue()), "a\xF0\x9F\x98\x80z");
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(4, 0));
    press(Qt::Key_Left);
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(3, 0));
    press(Qt::Key_Left);
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(1, 0));
    press(Qt::Key_Delete);
    EXPECT_EQ(utf8(field->stringValue()), "az");
}

TEST_F(LineEditing, aLongTextIsNotCutOff) {
    edit(field);
    const QString text(40000, u'x');
    QGuiApplication::clipboard()->setText(text);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(field->stringValue()->length(), 40000u);
    EXPECT_EQ(line()->text().size(), 40000);
}

TEST_F(LineEditing, pastedLineBreaksBecomeBlanks) {
    edit(field);
    QGuiApplication::clipboard()->setText("a\nb\r\nc");
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "a b  c");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "");
}

TEST_F(LineEditing, soDoLineBreaksThatComeAnotherWay) {
    edit(field);
    commit("a\nb");
    EXPECT_EQ(utf8(field->stringValue()), "a b");
    EXPECT_EQ(line()->text(), "a b");
    editor()->setString("c\nd"_ns);
    type("e");
    EXPECT_EQ(utf8(field->stringValue()), "c\nde");
}

TEST_F(LineEditing, whatIsCutIsInTheClipboard) {
    field->setStringValue("abc"_ns);
    edit(field);
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "abc");
    EXPECT_EQ(utf8(field->stringValue()), "");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "abc");
}

TEST_F(LineEditing, preeditIsNoTextUntilItIsEntered) {
    edit(field);
    commit({}, QString::fromUtf8("\xE3\x81\x8B"));
    EXPECT_EQ(utf8(field->stringValue()), "");
    EXPECT_EQ(delegate->heard, "");
    commit(QString::fromUtf8("\xE6\xBC\xA2"));
    EXPECT_EQ(utf8(field->stringValue()), "\xE6\xBC\xA2");
    EXPECT_EQ(delegate->heard, "changed ");
}

TEST_F(LineEditing, theTextIsGoneFromTheEditorWhenEditingEnds) {
    edit(field);
    type("secret");
    const QPointer<QLineEdit> widget = line();
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(utf8(field->stringValue()), "secret");
    ASSERT_TRUE(widget);
    EXPECT_EQ(widget->text(), "");
    EXPECT_FALSE(widget->isUndoAvailable());
    EXPECT_FALSE(widget->isVisible());
}

TEST_F(LineEditing, anActionMayDoAwayWithTheWindow) {
    const Weak<NSWindow> weak(window);
    delegate->onAction = [this] {
        window->close();
        field->removeFromSuperview();
        window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {10, 10}}, NSUInteger(0));
    };
    edit(field);
    type("1");
    const QPointer<QLineEdit> widget = line();
    QTest::keyClick(widget, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_EQ(utf8(field->stringValue()), "1");
    EXPECT_FALSE(widget);
    EXPECT_FALSE(weak.lock());
    EXPECT_NE(delegate->heard.find("act "), std::string::npos);
}

TEST_F(LineEditing, theMenuOffersWhatCanBeDone) {
    field->setStringValue("abc"_ns);
    edit(field);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), line()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(line(), &event);
    auto* const menu = line()->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    auto* const cut = menu->findChild<QAction*>("Cut");
    ASSERT_NE(cut, nullptr);
    EXPECT_TRUE(cut->isEnabled());
    EXPECT_FALSE(menu->findChild<QAction*>("Undo")->isEnabled());
    cut->trigger();
    EXPECT_EQ(utf8(field->stringValue()), "");
    menu->close();
}

TEST_F(LineEditing, theInsertionPointBlinksAsTheDesktopSays) {
    edit(field);
    field->setStringValue(""_ns);
    const auto isShown = [] {
        const QImage image = line()->grab().toImage();
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, image.height() / 2) == QColor(Qt::black)) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(isShown());
    QApplication::setCursorFlashTime(60);
    type("1");
    press(Qt::Key_Backspace);
    EXPECT_TRUE(isShown());
    EXPECT_TRUE(eventually([&] { return !isShown(); }));
    EXPECT_TRUE(eventually(isShown));
    QApplication::setCursorFlashTime(0);
    type("1");
    press(Qt::Key_Backspace);
    QTest::qWait(100);
    EXPECT_TRUE(isShown());
}

} // namespace
} // namespace zr::test
