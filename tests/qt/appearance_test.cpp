#include "../appkit/appearance_testing.h"
#include "field_testing.h"
#include "session_testing.h"
#include "table_on_screen.h"
#include "view_testing.h"

#include <zrbasic/platform/appkit/alert.h>
#include <zrbasic/platform/appkit/color_panel.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/qt/palette_p.h>

#include <QColorDialog>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QToolTip>
#include <QVBoxLayout>

namespace zr::test {
namespace {

bool isDark(const QColor& color) {
    return color.lightnessF() < 0.5;
}

bool isDark(const QWidget& widget) {
    return isDark(widget.palette().color(QPalette::Window)) && !isDark(widget.palette().color(QPalette::WindowText));
}

/// Of a widget as it is drawn.
QColor colorAt(QWidget& widget, QPoint place) {
    return widget.grab().toImage().pixelColor(place);
}

/// Notes when it is told.
class ListeningView : public LoggingView {
    ZR_OBJECT(ListeningView, LoggingView)
  public:
    void viewDidChangeEffectiveAppearance() override { ++told; }

    int told = 0;
};

Ref<ListeningView> listeningView() {
    return make<ListeningView>(&ListeningView::initWithFrame, NSRect{{0, 0}, {60, 40}});
}

class AppearanceOnScreen : public FieldWindow {};

TEST_F(AppearanceOnScreen, fillsWindowsWhereNoViewDraws) {
    show();
    const QColor light = colorAt(*qt::widget(window.get()), {5, 5});
    EXPECT_EQ(light, qt::paletteOfAppearance().color(QPalette::Window));
    {
        const InAppearance dark(NSAppearanceNameDarkAqua());
        settle();
        EXPECT_EQ(colorAt(*qt::widget(window.get()), {5, 5}), qt::paletteOfAppearance().color(QPalette::Window));
        EXPECT_TRUE(isDark(colorAt(*qt::widget(window.get()), {5, 5})));
    }
    settle();
    EXPECT_EQ(colorAt(*qt::widget(window.get()), {5, 5}), light);
}

TEST_F(AppearanceOnScreen, hasEveryViewDrawnAgainOnce) {
    const auto outer = listeningView();
    const auto inner = listeningView();
    outer->addSubview(inner);
    window->contentView()->addSubview(outer);
    show();
    settle();
    const int before = inner->drawn;
    const InAppearance dark(NSAppearanceNameDarkAqua());
    EXPECT_TRUE(eventually([&] { return inner->drawn > before; }));
    EXPECT_EQ(outer->told, 1);
    EXPECT_EQ(inner->told, 1);
}

TEST_F(AppearanceOnScreen, leavesAnApplicationThatTheSessionHasJoinedAsItIs) {
    QWidget foreign;
    const QPalette before = QApplication::palette();
    const QPalette tips = QToolTip::palette();
    const QString style = QApplication::style()->objectName();
    show();
    const InAppearance dark(NSAppearanceNameDarkAqua());
    settle();
    EXPECT_EQ(QApplication::palette(), before);
    EXPECT_EQ(QToolTip::palette(), tips);
    EXPECT_EQ(foreign.palette(), before);
    EXPECT_EQ(QApplication::style()->objectName(), style);
    EXPECT_TRUE(isDark(*qt::widget(window.get())));
}

TEST_F(AppearanceOnScreen, keepsOutTheColoursOfAnApplicationThatTheSessionHasJoined) {
    const QPalette before = QApplication::palette();
    QPalette garish(Qt::green);
    garish.setColor(QPalette::Base, Qt::red);
    garish.setColor(QPalette::Text, Qt::yellow);
    QApplication::setPalette(garish);
    QWidget foreign;
    auto* const layout = new QVBoxLayout(&foreign);
    const auto table = make<NSTableView>(&NSTableView::initWithFrame, NSRect{{0, 0}, {100, 100}});
    layout->addWidget(qt::widget(table));
    foreign.show();
    const auto field = add<NSTextField>({{10, 100}, {140, 26}});
    field->setStringValue("12"_ns);
    show();
    edit(field);
    settle();
    EXPECT_EQ(colorAt(*qt::widget(window.get()), {5, 5}), qt::paletteOfAppearance().color(QPalette::Window));
    EXPECT_EQ(colorAt(*qt::widget(table), {50, 50}), QColor(Qt::white));
    EXPECT_EQ(line()->palette().color(QPalette::Text), QColor(Qt::black));
    EXPECT_EQ(line()->palette().color(QPalette::Highlight), qt::paletteOfAppearance().color(QPalette::Highlight));
    EXPECT_EQ(foreign.palette().color(QPalette::Base), QColor(Qt::red));
    QApplication::setPalette(before);
}

TEST_F(AppearanceOnScreen, reachesViewsInTheLayoutsOfOthersAndNothingElseThere) {
    QWidget foreign;
    auto* const layout = new QVBoxLayout(&foreign);
    const auto view = listeningView();
    layout->addWidget(qt::widget(view));
    const auto text = make<NSTextView>(&NSTextView::initWithFrame, NSRect{{0, 0}, {60, 40}});
    layout->addWidget(qt::widget(text));
    QWidget dialog(&foreign, Qt::Dialog);
    auto* const inner = new QVBoxLayout(&dialog);
    const auto inDialog = listeningView();
    inner->addWidget(qt::widget(inDialog));
    foreign.show();
    dialog.show();
    ASSERT_TRUE(eventually([&] { return view->window() && inDialog->window() && view->drawn > 0; }));
    const QColor ground = foreign.palette().color(QPalette::Window);
    const int before = view->drawn;
    const InAppearance dark(NSAppearanceNameDarkAqua());
    EXPECT_EQ(view->told, 1);
    EXPECT_EQ(inDialog->told, 1) << "though its window belongs to the other one";
    EXPECT_TRUE(eventually([&] { return view->drawn > before; }));
    EXPECT_EQ(foreign.palette().color(QPalette::Window), ground);
    EXPECT_TRUE(isDark(colorAt(*qt::widget(text), {50, 30})));
}

TEST_F(AppearanceOnScreen, isRightInAViewThatWasElsewhereWhenItChanged) {
    const auto text = add<NSTextView>({{10, 10}, {100, 40}});
    text->setString("abc"_ns);
    show();
    settle();
    EXPECT_FALSE(isDark(colorAt(*qt::widget(window.get()), {100, 140})));
    text->removeFromSuperview();
    const InAppearance dark(NSAppearanceNameDarkAqua());
    window->contentView()->addSubview(text);
    settle();
    EXPECT_TRUE(isDark(colorAt(*qt::widget(window.get()), {100, 140})));
    const auto* const browser = qt::widget(window.get())->findChild<QTextBrowser*>();
    ASSERT_TRUE(browser);
    EXPECT_FALSE(isDark(browser->document()->begin().begin().fragment().charFormat().foreground().color()));
}

TEST_F(AppearanceOnScreen, recoloursLinksThatWereLeftInTheBlueOfHTMLAlone) {
    const auto text = add<NSTextView>({{10, 10}, {200, 40}});
    const auto colorOf = [&](NSColor* color) {
        text->textStorage()->setAttributedString(
            make<NSAttributedString>(&NSAttributedString::initWithString_attributes, "rules"_ns,
                                     dictionary({{NSLinkAttributeName(), "https://example.com"_ns},
                                                 {NSForegroundColorAttributeName(), color}})));
        const auto* const browser = qt::widget(window.get())->findChild<QTextBrowser*>();
        return browser->document()->begin().begin().fragment().charFormat().foreground().color();
    };
    const Ref<NSColor> blueOfHTML = NSColor::colorWithRed_green_blue_alpha(0, 0, 0xee / 255.0, 1);
    show();
    EXPECT_EQ(colorOf(blueOfHTML), QColor(0, 0, 0xee)) << "on paper it is right";
    const InAppearance dark(NSAppearanceNameDarkAqua());
    EXPECT_EQ(colorOf(blueOfHTML), qt::linkTextColor());
    EXPECT_EQ(colorOf(NSColor::blueColor()), qt::linkTextColor());
    EXPECT_EQ(colorOf(NSColor::redColor()), QColor(Qt::red));
    EXPECT_EQ(colorOf(NSColor::blackColor()), QColor(Qt::black)) << "whoever wants it can have it";
}

TEST_F(AppearanceOnScreen, changesAFieldWhileItIsEdited) {
    const auto field = add<NSTextField>({{10, 100}, {140, 26}});
    show();
    edit(field);
    type("12");
    QLineEdit* const before = line();
    EXPECT_EQ(before->palette().color(QPalette::Text), QColor(Qt::black));
    {
        const InAppearance dark(NSAppearanceNameDarkAqua());
        ASSERT_EQ(line(), before);
        EXPECT_FALSE(isDark(line()->palette().color(QPalette::Text)));
        EXPECT_EQ(line()->text(), QStringLiteral("12"));
        EXPECT_TRUE(line()->isUndoAvailable()) << "what was typed can still be taken back";
        type("3");
        EXPECT_EQ(utf8(editor()->string()), "123");
    }
    EXPECT_EQ(line()->palette().color(QPalette::Text), QColor(Qt::black));
}

TEST_F(AppearanceOnScreen, keepsTheColoursThatAFieldWasGiven) {
    const auto field = add<NSTextField>({{10, 100}, {140, 26}});
    field->setTextColor(NSColor::redColor());
    show();
    edit(field);
    const InAppearance dark(NSAppearanceNameDarkAqua());
    EXPECT_EQ(line()->palette().color(QPalette::Text), QColor(Qt::red));
}

TEST_F(AppearanceOnScreen, isThatOfMenusThatHangOnOurViews) {
    const auto field = add<NSTextField>({{10, 100}, {140, 26}});
    show();
    edit(field);
    const InAppearance dark(NSAppearanceNameDarkAqua());
    QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, line()->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(line(), &event);
    QMenu* menu = nullptr;
    ASSERT_TRUE(eventually([&menu] {
        menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu != nullptr;
    }));
    EXPECT_TRUE(isDark(*menu));
    menu->close();
    settle();

    QWidget foreign;
    QMenu theirs(&foreign);
    theirs.popup({10, 10});
    EXPECT_FALSE(isDark(theirs)) << "other people's look as these like";
    theirs.close();
}

/// What shows at the moment; null for none.
QWidget* toolTip() {
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const auto found = std::find_if(widgets.begin(), widgets.end(), [](const QWidget* widget) {
        return widget->inherits("QTipLabel") && widget->isVisible();
    });
    return found == widgets.end() ? nullptr : *found;
}

QWidget* showToolTip(QWidget& of) {
    QHelpEvent event(QEvent::ToolTip, {5, 5}, of.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&of, &event);
    return eventually([] { return toolTip() != nullptr; }) ? toolTip() : nullptr;
}

TEST_F(AppearanceOnScreen, isThatOfToolTipsOfOurViews) {
    const auto view = add<NSView>({{10, 10}, {100, 40}});
    view->setToolTip("Price"_ns);
    show();
    const InAppearance dark(NSAppearanceNameDarkAqua());
    QWidget* const tip = showToolTip(*widgetOf(view));
    ASSERT_TRUE(tip);
    EXPECT_TRUE(isDark(tip->palette().color(QPalette::ToolTipBase)));
    EXPECT_FALSE(isDark(tip->palette().color(QPalette::ToolTipText)));
    QToolTip::hideText();
    ASSERT_TRUE(eventually([] { return toolTip() == nullptr; }));

    QWidget foreign;
    foreign.setToolTip(QStringLiteral("Theirs"));
    foreign.resize(50, 50);
    foreign.show();
    QWidget* const theirs = showToolTip(foreign);
    ASSERT_TRUE(theirs);
    EXPECT_EQ(theirs->palette().color(QPalette::ToolTipBase), QToolTip::palette().color(QPalette::ToolTipBase));
    QToolTip::hideText();
    EXPECT_TRUE(eventually([] { return toolTip() == nullptr; }));
}

TEST_F(AppearanceOnScreen, isThatOfAnAlertAlsoWhileItIsOpen) {
    const auto alert = make<NSAlert>();
    alert->setMessageText("Send?"_ns);
    const InAppearance dark(NSAppearanceNameDarkAqua());
    QTimer timer;
    bool wasSeen = false;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) {
            return;
        }
        timer.stop();
        wasSeen = true;
        EXPECT_TRUE(isDark(*box));
        EXPECT_TRUE(isDark(*box->buttons().front()));
        EXPECT_TRUE(isDark(colorAt(*box, {3, 3})));
        {
            const InAppearance light(nullptr);
            EXPECT_FALSE(isDark(*box));
        }
        EXPECT_TRUE(isDark(*box));
        box->buttons().front()->click();
    });
    timer.start(10);
    (void)currentToolkit().askUser(*alert);
    EXPECT_TRUE(wasSeen);
}

TEST_F(AppearanceOnScreen, isThatOfTheColourPanel) {
    const auto panel = NSColorPanel::sharedColorPanel();
    panel->orderFront(nullptr);
    const QWidget* const host = qt::widget(panel);
    ASSERT_TRUE(host);
    const auto* const dialog = host->findChild<QColorDialog*>();
    ASSERT_TRUE(dialog);
    EXPECT_FALSE(isDark(*dialog));
    {
        const InAppearance dark(NSAppearanceNameDarkAqua());
        EXPECT_TRUE(isDark(*dialog));
        for (const auto* const edit : dialog->findChildren<QLineEdit*>()) {
            EXPECT_TRUE(isDark(edit->palette().color(QPalette::Base)));
            EXPECT_FALSE(isDark(edit->palette().color(QPalette::Text)));
        }
    }
    EXPECT_FALSE(isDark(*dialog));
    panel->orderOut(nullptr);
}

TEST_F(AppearanceOnScreen, outlivesASession) {
    const InAppearance dark(NSAppearanceNameDarkAqua());
    show();
    EXPECT_TRUE(isDark(*qt::widget(window.get())));
    qt::sessionOfTests().reset();
    { const InAppearance light(nullptr); }
    qt::sessionOfTests() = std::make_unique<qt::Session>();
    window->orderFront(nullptr);
    ASSERT_TRUE(qt::widget(window.get()));
    EXPECT_TRUE(isDark(*qt::widget(window.get())));
    EXPECT_FALSE(isDark(QApplication::palette().color(QPalette::Window)));
}

/// A table in nobody's window.
class AppearanceOfTables : public TableOnScreen {};

TEST_F(AppearanceOfTables, isThatOfTheApplicationEverywhere) {
    settle();
    EXPECT_EQ(colorAt(*shown->viewport(), {2, 4}), QColor(Qt::white));
    {
        const InAppearance dark(NSAppearanceNameDarkAqua());
        settle();
        EXPECT_TRUE(isDark(colorAt(*shown->viewport(), {2, 4}))) << "a row";
        EXPECT_TRUE(isDark(colorAt(*shown->viewport(), {shown->viewport()->width() - 2, 4}))) << "beside the columns";
        EXPECT_TRUE(isDark(colorAt(*header().viewport(), {2, 4}))) << "a title";
        EXPECT_TRUE(isDark(colorAt(*header().viewport(), {header().viewport()->width() - 2, 4}))) << "beside them";
        EXPECT_TRUE(isDark(colorAt(*shown->verticalScrollBar(), {0, 0})));
    }
    settle();
    EXPECT_EQ(colorAt(*shown->viewport(), {2, 4}), QColor(Qt::white));
}

} // namespace
} // namespace zr::test
