#include "field_testing.h"

#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/appkit/text_field_cell.h>
#include <zrbasic/platform/foundation/formatter.h>
#include <zrbasic/platform/qt/accessibility_p.h>
#include <zrbasic/ui/label.h>

#include <QAccessible>

#include <vector>

namespace zr::test {
namespace {

/// Views in a widget of Qt's, and what is told about them.
class Accessibility : public FieldWindow {
  protected:
    QWidget* widgetOf(NSView* view) {
        show();
        QWidget* found = nullptr;
        const QPoint middle = pixelOf(view, {view->frame().size.width / 2, view->frame().size.height / 2});
        found = qt::widget(window.get())->childAt(middle);
        return found;
    }
    QAccessibleInterface* told(NSView* view) { return QAccessible::queryAccessibleInterface(widgetOf(view)); }
};

TEST_F(Accessibility, aFieldIsEditableText) {
    const auto field = add({{20, 100}, {200, 24}});
    field->setPlaceholderString("Quantity"_ns);
    field->setStringValue("12 pieces"_ns);
    QAccessibleInterface* const about = told(field);
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(about->role(), QAccessible::EditableText);
    EXPECT_EQ(about->text(QAccessible::Name), "Quantity");
    EXPECT_EQ(about->text(QAccessible::Value), "12 pieces");
    EXPECT_TRUE(about->state().editable);
    EXPECT_TRUE(about->state().focusable);
    EXPECT_FALSE(about->state().passwordEdit);
    QAccessibleTextInterface* const text = about->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->text(3, 9), "pieces");
    EXPECT_EQ(text->text(-5, 500), "12 pieces");
    EXPECT_EQ(text->text(7, 3), "");
    EXPECT_EQ(text->characterCount(), 9);
}

TEST_F(Accessibility, theLabelThatWasGivenGoesFirst) {
    const auto field = add({{20, 100}, {200, 24}});
    field->setPlaceholderString("Quantity"_ns);
    field->setAccessibilityLabel("How many"_ns);
    EXPECT_EQ(told(field)->text(QAccessible::Name), "How many");
    field->setAccessibilityLabel(nullptr);
    EXPECT_EQ(told(field)->text(QAccessible::Name), "Quantity");
}

TEST_F(Accessibility, aDisabledFieldSaysSo) {
    const auto field = add({{20, 100}, {200, 24}});
    EXPECT_FALSE(told(field)->state().disabled);
    field->setEnabled(false);
    EXPECT_TRUE(told(field)->state().disabled);
    EXPECT_FALSE(told(field)->state().focusable);
}

TEST_F(Accessibility, aLabelIsStaticTextAndItsOwnName) {
    const auto label = add<ZRXLabel>({{20, 100}, {200, 24}});
    label->setStringValue("Balance"_ns);
    QAccessibleInterface* const about = told(label);
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(about->role(), QAccessible::StaticText);
    EXPECT_EQ(about->text(QAccessible::Name), "Balance");
    EXPECT_FALSE(about->state().editable);
    EXPECT_TRUE(about->state().readOnly);
}

TEST_F(Accessibility, buttonsSayWhatKindTheyAreAndWhetherTheyAreOn) {
    struct Row {
        const char* name;
        NSButtonType type;
        QAccessible::Role role;
        bool isCheckable;
    };
    for (const Row& row : {Row{"push", NSButtonTypeMomentaryPushIn, QAccessible::PushButton, false},
                           Row{"check box", NSButtonTypeSwitch, QAccessible::CheckBox, true},
                           Row{"radio", NSButtonTypeRadio, QAccessible::RadioButton, true}}) {
        SCOPED_TRACE(row.name);
        const auto button = add<NSButton>({{20, 100}, {200, 24}});
        button->setTitle("Buy"_ns);
        button->setButtonType(row.type);
        QAccessibleInterface* const about = told(button);
        ASSERT_NE(about, nullptr);
        EXPECT_EQ(about->role(), row.role);
        EXPECT_EQ(about->text(QAccessible::Name), "Buy");
        EXPECT_EQ(about->state().checkable, row.isCheckable);
        EXPECT_FALSE(about->state().checked);
        button->setState(NSControlStateValueOn);
        EXPECT_EQ(about->state().checked, row.isCheckable);
        button->removeFromSuperview();
    }
}

class AccessibleTarget : public NSObject {
    ZR_OBJECT(AccessibleTarget, NSObject)
  public:
    void act(NSObject*) { ++presses; }
    ZR_METHOD(act, "act:")

    int presses = 0;
};

TEST_F(Accessibility, buttonsAndLabelsWithAnActionCanBePressed) {
    const auto target = make<AccessibleTarget>();
    const auto button = add<NSButton>({{20, 100}, {200, 24}});
    const auto label = add<ZRXLabel>({{20, 60}, {200, 24}});
    for (const Ref<NSControl>& control : {Ref<NSControl>(button), Ref<NSControl>(label)}) {
        SCOPED_TRACE(control->isa()->name());
        control->setTarget(target);
        control->setAction("act:"_sel);
        target->presses = 0;
        QAccessibleActionInterface* const actions = told(control)->actionInterface();
        ASSERT_NE(actions, nullptr);
        EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(target->presses, 1);
        control->setEnabled(false);
        actions->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(target->presses, 1);
    }
}

TEST_F(Accessibility, theEditorIsAChildOfTheFieldItEdits) {
    const auto field = add({{20, 100}, {200, 24}});
    field->setPlaceholderString("Price"_ns);
    QWidget* const outside = widgetOf(field);
    edit(field);
    type("1.5");
    QAccessibleInterface* const about = QAccessible::queryAccessibleInterface(outside);
    QAccessibleInterface* const inner = QAccessible::queryAccessibleInterface(line());
    ASSERT_NE(inner, nullptr);
    EXPECT_EQ(inner->text(QAccessible::Name), "Price");
    EXPECT_TRUE(inner->state().focused);
    EXPECT_EQ(inner->parent()->parent(), about);
    EXPECT_EQ(about->text(QAccessible::Value), "1.5");
    EXPECT_EQ(about->textInterface()->cursorPosition(), 3);
    about->textInterface()->setSelection(0, 0, 2);
    EXPECT_EQ(line()->selectedText(), "1.");
}

TEST_F(Accessibility, aTableIsQtsOwn) {
    const auto table = add<NSTableView>({{0, 0}, {200, 100}});
    QAccessibleInterface* about = told(table);
    while (about && about->role() != QAccessible::Table) {
        about = about->parent();
    }
    ASSERT_NE(about, nullptr);
    EXPECT_NE(about->tableInterface(), nullptr);
}

/// Only a desktop with a reader on it switches announcements on, so what would be announced is looked at.
TEST_F(Accessibility, changesOfTextNameAndStateAreAnnounced) {
    const auto field = add({{20, 100}, {200, 24}});
    QWidget& widget = *widgetOf(field);
    const auto announced = [&](NSView& view, ViewChange change) {
        std::vector<int> types;
        for (const auto& event : qt::announcementsOf(view, change, widget)) {
            EXPECT_EQ(event->object(), &widget);
            types.push_back(event->type());
        }
        return types;
    };
    using Types = std::vector<int>;
    field->setStringValue("7"_ns);
    const auto events = qt::announcementsOf(*field, ViewChange::Content, widget);
    ASSERT_EQ(events.size(), 1u);
    ASSERT_EQ(events[0]->type(), QAccessible::TextUpdated);
    EXPECT_EQ(static_cast<QAccessibleTextUpdateEvent&>(*events[0]).textInserted(), "7");
    EXPECT_EQ(announced(*field, ViewChange::Content), Types());
    EXPECT_EQ(announced(*field, ViewChange::Enabled), Types{QAccessible::StateChanged});
    EXPECT_EQ(announced(*field, ViewChange::Accessibility), Types{QAccessible::NameChanged});
    EXPECT_EQ(announced(*field, ViewChange::Frame), Types());
    field->setEditable(false);
    field->setStringValue("label"_ns);
    EXPECT_EQ(announced(*field, ViewChange::Content), Types{QAccessible::NameChanged});
    const auto box = add<NSButton>({{20, 60}, {200, 24}});
    box->setButtonType(NSButtonTypeSwitch);
    box->setTitle("label"_ns);
    EXPECT_EQ(announced(*box, ViewChange::Content), Types{QAccessible::StateChanged});
}

TEST_F(Accessibility, nothingIsSaidOfAPasswordThatChanges) {
    const auto field = add<ZRXSecureTextField>({{20, 100}, {200, 24}});
    QWidget& widget = *widgetOf(field);
    field->setStringValue("pass"_ns);
    EXPECT_TRUE(qt::announcementsOf(*field, ViewChange::Content, widget).empty());
}

TEST_F(Accessibility, aCellForPasswordsMakesAnyFieldOne) {
    const auto field = add<NSTextField>({{20, 100}, {200, 24}});
    field->setCell(make<NSSecureTextFieldCell>());
    field->setEditable(true);
    field->setStringValue("pass"_ns);
    QAccessibleInterface* const about = told(field);
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->state().passwordEdit);
    EXPECT_EQ(about->text(QAccessible::Value), "");
    ASSERT_NE(about->textInterface(), nullptr);
    EXPECT_EQ(about->textInterface()->characterCount(), 0);
    field->setEditable(false);
    EXPECT_EQ(about->text(QAccessible::Name), "");
}

/// Has no text for anything.
class RaisingFormatter : public NSFormatter {
    ZR_OBJECT(RaisingFormatter, NSFormatter)
  public:
    Ref<NSString> stringForObjectValue(NSObject*) override { NSException::raise(NSGenericException, "no text"); }
};

TEST_F(Accessibility, nothingRaisesThroughAReader) {
    const auto field = add({{20, 100}, {200, 24}});
    field->setStringValue("12"_ns);
    QAccessibleInterface* const about = told(field);
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(about->text(QAccessible::Value), "12");
    testing::internal::CaptureStderr();
    field->setFormatter(make<RaisingFormatter>());
    EXPECT_NO_THROW(EXPECT_EQ(about->text(QAccessible::Value), ""));
    EXPECT_NO_THROW(EXPECT_EQ(about->textInterface()->text(0, 2), ""));
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_NE(reported.find("no text"), std::string::npos) << reported;
}

} // namespace
} // namespace zr::test
