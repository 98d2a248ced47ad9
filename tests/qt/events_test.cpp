#include "view_testing.h"

#include <zrbasic/ui/responder.h>

#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace zr::test {
namespace {

/// Takes every click wherever it is, as a shield over a screen does.
class ShieldView : public LoggingView {
    ZR_OBJECT(ShieldView, LoggingView)
  public:
    Ref<NSView> hitTest(NSPoint point) override { return isShut ? Ref<NSView>(this) : LoggingView::hitTest(point); }

    bool isShut = true;
};

/// Lets the pointer through to what is behind.
class GlassView : public LoggingView {
    ZR_OBJECT(GlassView, LoggingView)
  public:
    Ref<NSView> hitTest(NSPoint) override { return nullptr; }
};

class ViewEvents : public ViewWindow {
  protected:
    void SetUp() override {
        view = add({{100, 100}, {100, 100}});
        view->takesKeys = true;
        show();
        view->take();
    }

    Ref<LoggingView> view;
};

TEST_F(ViewEvents, aClickComesWithItsPlaceInTheWindow) {
    QTest::mousePress(handle(), Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier, pixel(120, 150));
    EXPECT_EQ(view->take(), "down ");
    EXPECT_EQ(view->last->type(), NSEventTypeLeftMouseDown);
    EXPECT_EQ(view->last->locationInWindow(), NSMakePoint(120, 150));
    EXPECT_EQ(view->last->modifierFlags(), NSEventModifierFlagShift | NSEventModifierFlagCommand);
    EXPECT_EQ(view->last->clickCount(), 1);
    EXPECT_EQ(view->convertPoint_fromView(view->last->locationInWindow(), nullptr), NSMakePoint(20, 50));
    const double pressed = view->last->timestamp();
    QTest::mouseMove(handle(), pixel(310, 20));
    EXPECT_EQ(view->take(), "dragged ");
    EXPECT_EQ(view->last->locationInWindow(), NSMakePoint(310, 20));
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(310, 20));
    EXPECT_EQ(view->take(), "up ");
    EXPECT_GE(view->last->timestamp(), pressed);
    EXPECT_EQ(content->take(), "in ");
}

TEST_F(ViewEvents, everyButtonHasItsOwnOperations) {
    struct Row {
        Qt::MouseButton button;
        const char* log;
        NSInteger number;
    };
    for (const Row& row :
         {Row{Qt::LeftButton, "down dragged up ", 0}, Row{Qt::RightButton, "rightDown rightDragged rightUp ", 1},
          Row{Qt::MiddleButton, "otherDown otherDragged otherUp ", 2},
          Row{Qt::BackButton, "otherDown otherDragged otherUp ", 3}}) {
        SCOPED_TRACE(row.log);
        QTest::mousePress(handle(), row.button, {}, pixel(150, 150));
        QTest::mouseMove(handle(), pixel(160 + row.number, 150));
        QTest::mouseRelease(handle(), row.button, {}, pixel(160 + row.number, 150));
        EXPECT_EQ(view->take(), row.log);
        EXPECT_EQ(view->last->buttonNumber(), row.number);
    }
}

TEST_F(ViewEvents, clicksAreCountedAsLongAsTheyAreSoonAndNear) {
    const auto press = [&](double x, int delay) {
        QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(x, 150), delay);
        QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(x, 150));
        return view->last->clickCount();
    };
    QTest::qWait(600);
    const NSInteger first = press(150, -1);
    EXPECT_EQ(first, 1);
    QTest::mouseDClick(handle(), Qt::LeftButton, {}, pixel(150, 150));
    EXPECT_EQ(view->last->clickCount(), 2);
    EXPECT_EQ(press(190, -1), 1);
    QTest::mouseClick(handle(), Qt::RightButton, {}, pixel(190, 150));
    EXPECT_EQ(view->last->clickCount(), 1);
}

TEST_F(ViewEvents, theWheelIsCountedInLines) {
    turnWheel(handle(), pixel(150, 150), {0, 240});
    EXPECT_EQ(view->take(), "wheel ");
    EXPECT_EQ(view->last->deltaY(), 2);
    EXPECT_EQ(view->last->deltaX(), 0);
    turnWheel(handle(), pixel(150, 150), {-60, 0});
    EXPECT_EQ(view->last->deltaX(), -0.5);
    turnWheel(handle(), pixel(10, 10), {0, 120});
    EXPECT_EQ(content->take(), "in wheel ");
}

TEST_F(ViewEvents, keysGoToTheFirstResponder) {
    window->makeFirstResponder(view);
    QTest::keyClick(handle(), Qt::Key_A);
    EXPECT_EQ(view->take(), "keyDown keyUp ");
    QTest::keyPress(handle(), 'X', Qt::ShiftModifier);
    EXPECT_TRUE(view->last->characters()->isEqual("X"_ns));
    EXPECT_EQ(view->last->modifierFlags(), NSEventModifierFlagShift);
    QTest::keyRelease(handle(), Qt::Key_X);
    view->take();
    QTest::keyPress(handle(), Qt::Key_Shift);
    QTest::keyRelease(handle(), Qt::Key_Shift);
    EXPECT_EQ(view->take(), "flags flags ");
    window->makeFirstResponder(nullptr);
    QTest::keyClick(handle(), Qt::Key_A);
    EXPECT_EQ(view->take(), "");
}

TEST_F(ViewEvents, keysThatTypeNothingHaveCharactersOfTheirOwn) {
    struct Row {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        char16_t character;
    };
    window->makeFirstResponder(view);
    for (const Row& row :
         {Row{Qt::Key_Up, {}, 0xF700}, Row{Qt::Key_Down, {}, 0xF701}, Row{Qt::Key_F1, {}, 0xF704},
          Row{Qt::Key_Delete, {}, 0xF728}, Row{Qt::Key_Backspace, {}, 0x7F}, Row{Qt::Key_Return, {}, '\r'},
          Row{Qt::Key_Enter, {}, 3}, Row{Qt::Key_Escape, {}, 0x1B}, Row{Qt::Key_Tab, {}, '\t'},
          Row{Qt::Key_Backtab, Qt::ShiftModifier, 0x19}, Row{Qt::Key_C, Qt::ControlModifier, 'c'},
          Row{Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier, 'C'}, Row{Qt::Key_C, Qt::MetaModifier, 'c'}}) {
        SCOPED_TRACE(int(row.character));
        QTest::keyPress(handle(), row.key, row.modifiers);
        ASSERT_NE(view->last->characters(), nullptr);
        ASSERT_EQ(view->last->characters()->length(), 1u);
        EXPECT_EQ(view->last->characters()->characterAtIndex(0), row.character);
        QTest::keyRelease(handle(), row.key, row.modifiers);
    }
}

TEST_F(ViewEvents, theControlKeyOfTheKeyboardIsTheCommandKey) {
    window->makeFirstResponder(view);
    struct Row {
        Qt::KeyboardModifier qt;
        NSUInteger flag;
    };
    for (const Row& row :
         {Row{Qt::ControlModifier, NSEventModifierFlagCommand}, Row{Qt::MetaModifier, NSEventModifierFlagControl},
          Row{Qt::AltModifier, NSEventModifierFlagOption}, Row{Qt::ShiftModifier, NSEventModifierFlagShift}}) {
        QTest::keyPress(handle(), Qt::Key_C, row.qt);
        EXPECT_EQ(view->last->modifierFlags(), row.flag);
        QTest::keyRelease(handle(), Qt::Key_C, row.qt);
    }
}

TEST_F(ViewEvents, shortcutsComeBeforeTheFirstResponder) {
    const Ref<LoggingView> other = add({{0, 0}, {10, 10}});
    other->shortcut = "s"_ns;
    other->take();
    window->makeFirstResponder(view);
    QTest::keyPress(handle(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(other->take(), "shortcut ");
    EXPECT_EQ(view->take(), "flags ");
    QTest::keyRelease(handle(), Qt::Key_S, Qt::ControlModifier);
    view->take();
    QTest::keyPress(handle(), Qt::Key_S);
    EXPECT_EQ(view->take(), "keyDown ");
    QTest::keyRelease(handle(), Qt::Key_S);
    view->take();
    QTest::keyPress(handle(), Qt::Key_T, Qt::ControlModifier);
    EXPECT_EQ(view->take(), "flags keyDown ");
    QTest::keyRelease(handle(), Qt::Key_T, Qt::ControlModifier);
}

TEST_F(ViewEvents, aPressMakesAViewThatAcceptsItTheFirstResponder) {
    const Ref<LoggingView> deaf = add({{0, 0}, {50, 50}});
    click(150, 150);
    EXPECT_EQ(window->firstResponder(), view);
    EXPECT_EQ(QApplication::focusWidget(), widgetOf(view));
    click(20, 20);
    EXPECT_EQ(window->firstResponder(), view);
    window->makeFirstResponder(nullptr);
    click(150, 150, Qt::RightButton);
    EXPECT_EQ(window->firstResponder(), window);
}

TEST_F(ViewEvents, anEventThatNobodyDealsWithGoesUpToTheWindow) {
    const auto plain = make<NSView>(&NSView::initWithFrame, NSRect{{0, 0}, {20, 20}});
    view->addSubview(plain);
    click(110, 110);
    EXPECT_EQ(view->take(), "down up ");
}

TEST_F(ViewEvents, aShieldTakesEveryClickInItsSuperview) {
    const auto shield = make<ShieldView>(&ShieldView::initWithFrame, NSRect{{0, 0}, {10, 10}});
    const Ref<LoggingView> inner = loggingView({{0, 0}, {10, 10}});
    shield->addSubview(inner);
    content->addSubview(shield);
    shield->take();
    inner->take();
    click(150, 150);
    EXPECT_EQ(shield->take(), "down up ");
    EXPECT_EQ(view->take(), "");
    click(5, 5);
    EXPECT_EQ(shield->take(), "down up ");
    EXPECT_EQ(inner->take(), "");
    turnWheel(handle(), pixel(150, 150), {0, 120});
    EXPECT_EQ(shield->take(), "wheel ");
    shield->isShut = false;
    click(150, 150);
    EXPECT_EQ(view->take(), "down up ");
    click(5, 5);
    EXPECT_EQ(inner->take(), "down up ");
}

TEST_F(ViewEvents, aDoubleClickOnAShieldIsOnePressMore) {
    const auto shield = make<ShieldView>(&ShieldView::initWithFrame, NSRect{{0, 0}, {10, 10}});
    content->addSubview(shield);
    shield->take();
    QTest::mouseDClick(handle(), Qt::LeftButton, {}, pixel(150, 150));
    EXPECT_EQ(shield->take(), "down up down up ");
    EXPECT_EQ(shield->last->clickCount(), 2);
}

TEST_F(ViewEvents, whoTookThePressGetsEverythingUntilAllButtonsAreUp) {
    const auto shield = make<ShieldView>(&ShieldView::initWithFrame, NSRect{{0, 0}, {10, 10}});
    content->addSubview(shield);
    shield->take();
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(150, 150));
    shield->isShut = false;
    QTest::mouseMove(handle(), pixel(160, 150));
    QTest::mousePress(handle(), Qt::RightButton, {}, pixel(160, 150));
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(160, 150));
    QTest::mouseRelease(handle(), Qt::RightButton, {}, pixel(160, 150));
    EXPECT_EQ(shield->take(), "down dragged rightDown up rightUp ");
    EXPECT_EQ(view->take(), "");
    click(150, 150);
    EXPECT_EQ(view->take(), "down up ");
}

TEST_F(ViewEvents, anUnhitViewLetsClicksThroughToWhatIsBehind) {
    const auto glass = make<GlassView>(&GlassView::initWithFrame, NSRect{{0, 0}, {400, 300}});
    content->addSubview(glass);
    glass->take();
    click(150, 150);
    EXPECT_EQ(glass->take(), "");
    EXPECT_EQ(view->take(), "down up ");
    const auto pane = make<GlassView>(&GlassView::initWithFrame, NSRect{{0, 0}, {400, 300}});
    window->setContentView(pane);
    settle();
    pane->take();
    click(150, 150);
    EXPECT_EQ(pane->take(), "");
}

TEST_F(ViewEvents, aShieldKeepsClicksFromControlsOfQtBehindIt) {
    QPushButton* const button = new QPushButton(widgetOf(view));
    int clicked = 0;
    QObject::connect(button, &QPushButton::clicked, button, [&clicked] { ++clicked; });
    button->resize(100, 100);
    button->show();
    click(150, 150);
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(view->take(), "");
    const auto shield = make<ShieldView>(&ShieldView::initWithFrame, NSRect{{0, 0}, {10, 10}});
    content->addSubview(shield);
    click(150, 150);
    EXPECT_EQ(clicked, 1);
}

TEST_F(ViewEvents, anObserverHearsOfOneViewsEventsAndNoOthers) {
    const Ref<LoggingView> other = add({{0, 0}, {50, 50}});
    other->take();
    int heard = 0;
    eventObserver_forEventAction(
        view, [&heard](NSEvent* event) { heard += event->type() == NSEventTypeLeftMouseDown; }, "mouseDown:"_sel);
    click(150, 150);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(view->take(), "down up ");
    click(20, 20);
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(other->take(), "down up ");
}

TEST_F(ViewEvents, whatAHandlerRaisesDoesNotReachQt) {
    view->onEvent = [] { NSException::raise(NSGenericException, "from a handler"); };
    testing::internal::CaptureStderr();
    click(150, 150);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(view->take(), "down up ");
    EXPECT_NE(said.find("from a handler"), std::string::npos);
}

class ViewsInLayouts : public ViewEvents {
  protected:
    void SetUp() override {
        first = loggingView({{0, 0}, {100, 100}});
        second = loggingView({{0, 0}, {100, 100}});
        first->takesKeys = second->takesKeys = first->passesKeysOn = second->passesKeysOn = true;
        line = new QLineEdit;
        auto* const layout = new QVBoxLayout(&top);
        layout->addWidget(qt::widget(first.get()));
        layout->addWidget(line);
        layout->addWidget(qt::widget(second.get()));
        top.resize(200, 300);
        top.show();
        top.activateWindow();
        ASSERT_TRUE(eventually([this] { return top.isActiveWindow(); }));
        line->setFocus();
        settle();
        first->take();
        second->take();
    }

    ~ViewsInLayouts() override {
        first = nullptr;
        second = nullptr;
        settle();
    }

    QPoint middleOf(NSView* one) const { return widgetOf(one)->geometry().center(); }

    QWidget top;
    QLineEdit* line = nullptr;
    Ref<LoggingView> first;
    Ref<LoggingView> second;
};

TEST_F(ViewsInLayouts, clicksAndKeysReachAViewThere) {
    QTest::mouseClick(top.windowHandle(), Qt::LeftButton, {}, middleOf(first));
    EXPECT_EQ(first->take(), "down up ");
    const NSPoint inside = first->convertPoint_fromView(first->last->locationInWindow(), nullptr);
    EXPECT_NEAR(inside.x, widgetOf(first)->width() / 2.0, 1);
    EXPECT_NEAR(inside.y, widgetOf(first)->height() / 2.0, 1);
    EXPECT_EQ(first->window()->firstResponder(), first);
    EXPECT_EQ(QApplication::focusWidget(), widgetOf(first));
    QTest::keyClick(top.windowHandle(), Qt::Key_A);
    EXPECT_EQ(first->take(), "keyDown keyUp ");
    EXPECT_TRUE(first->window()->isKeyWindow());
}

TEST_F(ViewsInLayouts, theTabKeyGoesThroughViewsAndWidgetsAlike) {
    first->window()->makeFirstResponder(first);
    QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), line);
    EXPECT_EQ(first->window()->firstResponder(), first->window());
    QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(first->window()->firstResponder(), second);
    QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(first->window()->firstResponder(), first);
    QTest::keyClick(top.windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(first->window()->firstResponder(), second);
    first->takesKeys = false;
    QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), line);
}

TEST_F(ViewsInLayouts, aWidgetThatTakesTheKeyboardEndsTheFirstResponder) {
    first->window()->makeFirstResponder(first);
    EXPECT_EQ(QApplication::focusWidget(), widgetOf(first));
    line->setFocus();
    EXPECT_EQ(first->window()->firstResponder(), first->window());
    QTest::keyClick(top.windowHandle(), Qt::Key_A);
    EXPECT_EQ(line->text(), "a");
    EXPECT_EQ(first->take() + second->take(), "");
}

TEST_F(ViewsInLayouts, shortcutsOfViewsWorkThere) {
    second->shortcut = "k"_ns;
    QTest::keyClick(top.windowHandle(), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(second->take(), "shortcut ");
    EXPECT_EQ(line->text(), "");
}

TEST_F(ViewsInLayouts, theWheelScrollsWhatIsAroundAViewThatDoesNotUseIt) {
    QScrollArea area;
    const Ref<LoggingView> tall = loggingView({{0, 0}, {100, 2000}});
    area.setWidget(qt::widget(tall.get()));
    area.resize(200, 200);
    area.show();
    settle();
    tall->take();
    turnWheel(area.windowHandle(), {50, 50}, {0, -120});
    EXPECT_EQ(tall->take(), "wheel ");
    EXPECT_EQ(area.verticalScrollBar()->value(), 0);
    tall->passesWheelOn = true;
    turnWheel(area.windowHandle(), {50, 50}, {0, -120});
    EXPECT_EQ(tall->take(), "wheel ");
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
}

} // namespace
} // namespace zr::test
