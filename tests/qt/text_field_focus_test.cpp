#include "field_testing.h"

#include <zrbasic/platform/appkit/layer.h>

#include <QPushButton>
#include <QVBoxLayout>

namespace zr::test {
namespace {

class FocusListener : public NSObject {
    ZR_OBJECT(FocusListener, NSObject)
  public:
    void told() { heard += "focus "; }
    ZR_METHOD(told, "xTextFieldDidBecomeFirstResponder")
    bool shouldEnd(NSObject*, NSObject*) {
        heard += "should ";
        return agrees;
    }
    ZR_METHOD(shouldEnd, "control:textShouldEndEditing:")
    void ended(NSObject*) { heard += "ended "; }
    ZR_METHOD(ended, "controlTextDidEndEditing:")

    std::string heard;
    bool agrees = true;
};

class FieldFocus : public FieldWindow {
  protected:
    void SetUp() override {
        field = add({{20, 100}, {200, 24}});
        other = add({{20, 40}, {200, 24}});
        field->setDelegate(listener);
        field->setXDelegate(listener);
        field->setHighlightedBorderColor(NSColor::redColor());
        show();
    }

    void click(NSView* view, NSPoint point) { QTest::mouseClick(handle(), Qt::LeftButton, {}, pixelOf(view, point)); }
    Ref<NSColor> border() const { return field->layer()->borderColor(); }

    Ref<FocusListener> listener = make<FocusListener>();
    Ref<ZRXTextField> field;
    Ref<ZRXTextField> other;
};

TEST_F(FieldFocus, nothingIsEditedWhenAWindowComesUp) {
    EXPECT_EQ(line(), nullptr);
    EXPECT_EQ(window->firstResponder(), window);
    EXPECT_EQ(listener->heard, "");
}

TEST_F(FieldFocus, aClickBeginsEditingWhereItIs) {
    field->setStringValue("iiiiiiiiii"_ns);
    click(field, {180, 12});
    ASSERT_TRUE(eventually([] { return line() != nullptr; }));
    EXPECT_EQ(window->firstResponder(), editor());
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(10, 0));
    EXPECT_EQ(listener->heard, "focus ");
    EXPECT_EQ(border(), field->highlightedBorderColor());
    click(field, {6, 12});
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(0, 0));
    EXPECT_EQ(line()->cursorPosition(), 0);
}

TEST_F(FieldFocus, drawingTheMouseOutOfThePressThatBeginsEditingSelects) {
    field->setStringValue("iiiiiiiiii"_ns);
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixelOf(field, {6, 12}));
    QTest::mouseMove(handle(), pixelOf(field, {60, 12}));
    QTest::mouseMove(handle(), pixelOf(field, {180, 12}));
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixelOf(field, {180, 12}));
    EXPECT_EQ(editor()->selectedRange(), NSMakeRange(0, 10));
    EXPECT_EQ(line()->selectedText(), "iiiiiiiiii");
}

TEST_F(FieldFocus, aClickOnAnotherFieldEndsEditingHere) {
    edit(field);
    type("1");
    click(other, {20, 12});
    EXPECT_TRUE(eventually([this] { return bool(other->currentEditor()); }));
    EXPECT_EQ(utf8(field->stringValue()), "1");
    EXPECT_FALSE(field->currentEditor());
    EXPECT_EQ(listener->heard, "focus should ended ");
    EXPECT_EQ(border(), field->borderColor());
    type("2");
    EXPECT_EQ(utf8(other->stringValue()), "2");
}

TEST_F(FieldFocus, aDelegateThatDoesNotAgreeKeepsTheKeyboard) {
    edit(field);
    type("1");
    listener->agrees = false;
    click(other, {20, 12});
    QCoreApplication::processEvents();
    EXPECT_TRUE(field->currentEditor());
    EXPECT_FALSE(other->currentEditor());
    ASSERT_NE(line(), nullptr);
    type("2");
    EXPECT_EQ(utf8(field->stringValue()), "12");
    listener->agrees = true;
}

TEST_F(FieldFocus, anotherWindowDoesNotEndEditing) {
    edit(field);
    type("1");
    QWidget foreign;
    QLineEdit inside(&foreign);
    foreign.show();
    foreign.activateWindow();
    inside.setFocus();
    ASSERT_TRUE(eventually([&] { return QApplication::focusWidget() == &inside; }));
    EXPECT_TRUE(field->currentEditor());
    EXPECT_EQ(border(), field->highlightedBorderColor());
    foreign.hide();
    window->makeKeyAndOrderFront(nullptr);
    qt::widget(window.get())->activateWindow();
    EXPECT_TRUE(eventually([] { return line() != nullptr; }));
    type("2");
    EXPECT_EQ(utf8(field->stringValue()), "12");
}

TEST_F(FieldFocus, aPopupDoesNotEndEditing) {
    edit(field);
    type("1");
    QFocusEvent out(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(line(), &out);
    QFocusEvent menu(QEvent::FocusOut, Qt::MenuBarFocusReason);
    QApplication::sendEvent(line(), &menu);
    EXPECT_TRUE(field->currentEditor());
    EXPECT_EQ(listener->heard, "focus ");
}

TEST_F(FieldFocus, aControlOfQtBesideItTakesTheKeyboard) {
    QWidget host;
    QVBoxLayout layout(&host);
    const auto view = make<NSView>(&NSView::initWithFrame, NSRect{{0, 0}, {200, 40}});
    const auto inside = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSRect{{0, 0}, {200, 24}});
    view->addSubview(inside);
    QPushButton button("Qt");
    layout.addWidget(qt::widget(view.get()));
    layout.addWidget(&button);
    host.show();
    host.activateWindow();
    ASSERT_TRUE(eventually([&] { return host.isActiveWindow() && inside->window(); }));
    // Qt gives the keyboard to the first control of its own windows.
    ASSERT_TRUE(eventually([] { return line() != nullptr; }));
    inside->setDelegate(listener);
    type("5");
    button.setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(eventually([&] { return !inside->currentEditor(); }));
    EXPECT_EQ(utf8(inside->stringValue()), "5");
    EXPECT_EQ(QApplication::focusWidget(), &button);
    EXPECT_EQ(listener->heard, "should ended ");
}

TEST_F(FieldFocus, theFieldLosesTheKeyboardWhenItIsTakenOut) {
    edit(field);
    type("1");
    field->removeFromSuperview();
    QCoreApplication::processEvents();
    EXPECT_EQ(line(), nullptr);
    EXPECT_EQ(window->firstResponder(), window);
    EXPECT_EQ(utf8(field->stringValue()), "1");
}

TEST_F(FieldFocus, aFieldThatIsDisabledIsNotEditedByAClick) {
    field->setEnabled(false);
    click(field, {20, 12});
    QCoreApplication::processEvents();
    EXPECT_EQ(line(), nullptr);
    EXPECT_EQ(listener->heard, "");
}

} // namespace
} // namespace zr::test
