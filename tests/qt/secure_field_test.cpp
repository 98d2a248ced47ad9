#include "field_testing.h"
#include "pictures.h"

#include <zrbasic/platform/appkit/text_field_cell.h>

#include <QAccessible>
#include <QClipboard>
#include <QMenu>

namespace zr::test {
namespace {

class SecureField : public FieldWindow {
  protected:
    void SetUp() override {
        field = add<ZRXSecureTextField>({{20, 100}, {200, 24}});
        show();
        QGuiApplication::clipboard()->setText("untouched");
    }

    Ref<ZRXSecureTextField> field;
};

TEST_F(SecureField, whatIsTypedShowsAsBullets) {
    edit(field);
    type("pass");
    EXPECT_EQ(utf8(field->stringValue()), "pass");
    EXPECT_EQ(line()->displayText(), QString(4, QChar(0x2022)));
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(utf8(field->cell()->attributedStringValue()->string()),
              "\xE2\x80\xA2\xE2\x80\xA2\xE2\x80\xA2\xE2\x80\xA2");
}

TEST_F(SecureField, bulletsDoNotMoveWhenEditingBegins) {
    field->setStringValue("pass"_ns);
    QWidget& host = *qt::widget(window.get());
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        const QImage idle = pictureOf(host, scale);
        edit(field);
        cast<NSTextView>(editor())->setInsertionPointColor(NSColor::clearColor());
        editor()->setSelectedRange(NSMakeRange(0, 0));
        const PictureDifference found = difference(idle, pictureOf(host, scale));
        EXPECT_EQ(found.largest, 0);
        window->makeFirstResponder(nullptr);
    }
}

TEST_F(SecureField, nothingOfItReachesTheClipboard) {
    field->setStringValue("pass"_ns);
    edit(field);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "untouched");
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "untouched");
    EXPECT_EQ(utf8(field->stringValue()), "pass");
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "untouched");
}

TEST_F(SecureField, itsMenuHasNothingToCopyWith) {
    field->setStringValue("pass"_ns);
    edit(field);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), line()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(line(), &event);
    auto* const menu = line()->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->findChild<QAction*>("Copy"), nullptr);
    EXPECT_EQ(menu->findChild<QAction*>("Cut"), nullptr);
    EXPECT_NE(menu->findChild<QAction*>("Paste"), nullptr);
    menu->close();
}

TEST_F(SecureField, readersAreToldThatItIsAPasswordAndNotWhich) {
    field->setStringValue("pass"_ns);
    edit(field);
    QAccessibleInterface* const inner = QAccessible::queryAccessibleInterface(line());
    ASSERT_NE(inner, nullptr);
    EXPECT_TRUE(inner->state().passwordEdit);
    EXPECT_FALSE(inner->text(QAccessible::Value).contains("pass"));
    QAccessibleInterface* const outer = inner->parent()->parent();
    ASSERT_NE(outer, nullptr);
    EXPECT_EQ(outer->role(), QAccessible::EditableText);
    EXPECT_TRUE(outer->state().passwordEdit);
    EXPECT_EQ(outer->text(QAccessible::Value), "");
    ASSERT_NE(outer->textInterface(), nullptr);
    EXPECT_EQ(outer->textInterface()->text(0, 10), "");
    EXPECT_EQ(outer->textInterface()->characterCount(), 0);
}

TEST_F(SecureField, theNextFieldOfTheWindowIsReadableAgain) {
    const auto plain = add({{20, 40}, {200, 24}});
    edit(field);
    type("pass");
    press(Qt::Key_Tab);
    ASSERT_TRUE(plain->currentEditor());
    type("abc");
    EXPECT_EQ(line()->echoMode(), QLineEdit::Normal);
    EXPECT_EQ(line()->displayText(), "abc");
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "abc");
}

TEST_F(SecureField, undoTakesBackAllOfAPassword) {
    edit(field);
    type("pass");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "");
    EXPECT_EQ(line()->text(), "");
}

} // namespace
} // namespace zr::test
