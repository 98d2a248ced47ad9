#include "view_testing.h"

#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/ui/window.h>

namespace zr::test {
namespace {

class ButtonTarget : public NSObject {
    ZR_OBJECT(ButtonTarget, NSObject)
  public:
    void pressed(NSObject*) { ++presses; }
    ZR_METHOD(pressed, "pressed:")

    int presses = 0;
};

/// A button of 100 by 30 points at 20, 20 of a window.
class ButtonOnScreen : public ViewWindow {
  protected:
    void SetUp() override {
        target = make<ButtonTarget>();
        button = NSButton::buttonWithTitle_target_action("Buy"_ns, target, "pressed:"_sel);
        button->setFrame({{20, 20}, {100, 30}});
        content->addSubview(button);
        content->passesKeysOn = true;
        show();
    }
    ~ButtonOnScreen() override { button = nullptr; }

    /// The colour of the point, counted from the button's lower left.
    [[nodiscard]] QColor colorAt(double x, double y) const {
        settle();
        return host()->grab().toImage().pixelColor(pixel(20 + x, 20 + y));
    }

    Ref<ButtonTarget> target;
    Ref<NSButton> button;
};

TEST_F(ButtonOnScreen, isPressedByTheMouse) {
    click(70, 35);
    EXPECT_EQ(target->presses, 1);
    QTest::mousePress(handle(), Qt::LeftButton, {}, pixel(70, 35));
    EXPECT_TRUE(button->isHighlighted());
    QTest::mouseRelease(handle(), Qt::LeftButton, {}, pixel(300, 200));
    EXPECT_EQ(target->presses, 1) << "let go elsewhere";
    EXPECT_FALSE(button->isHighlighted());
    click(300, 200);
    EXPECT_EQ(target->presses, 1);
}

TEST_F(ButtonOnScreen, isPressedByTheKeyboard) {
    window->makeFirstResponder(button);
    QTest::keyClick(handle(), Qt::Key_Space);
    EXPECT_EQ(target->presses, 1);
    QTest::keyClick(handle(), Qt::Key_Return);
    EXPECT_EQ(target->presses, 2);
    QTest::keyClick(handle(), Qt::Key_A);
    EXPECT_EQ(target->presses, 2);
}

TEST_F(ButtonOnScreen, isPressedByTheReturnKeyFromAnywhereWhenItIsTheDefault) {
    const auto other = add({{200, 200}, {50, 50}});
    other->takesKeys = true;
    other->passesKeysOn = true;
    window->makeFirstResponder(other);
    QTest::keyClick(handle(), Qt::Key_Return);
    EXPECT_EQ(target->presses, 0);
    button->setKeyEquivalent("\r"_ns);
    QTest::keyClick(handle(), Qt::Key_Return);
    EXPECT_EQ(target->presses, 1);
    QTest::keyClick(handle(), Qt::Key_Enter);
    EXPECT_EQ(target->presses, 2);
}

TEST_F(ButtonOnScreen, isOneOfTheTabStops) {
    const auto check = NSButton::checkboxWithTitle_target_action("Hold"_ns, nullptr, SEL());
    check->setFrameOrigin({200, 20});
    content->addSubview(check);
    window->makeFirstResponder(button);
    QTest::keyClick(handle(), Qt::Key_Tab);
    EXPECT_EQ(window->firstResponder(), check);
    QTest::keyClick(handle(), Qt::Key_Space);
    EXPECT_EQ(check->state(), 1);
    QTest::keyClick(handle(), Qt::Key_Backtab);
    EXPECT_EQ(window->firstResponder(), button);
}

TEST_F(ButtonOnScreen, showsBorderFillingAndRing) {
    EXPECT_EQ(colorAt(3.5, 15), QColor(Qt::white)) << "inside";
    EXPECT_LT(colorAt(0.5, 15).lightness(), 200) << "a border of one point";
    EXPECT_EQ(colorAt(1.5, 15), QColor(Qt::white));
    button->setKeyEquivalent("\r"_ns);
    const QColor accent = colorAt(5, 15);
    EXPECT_GT(accent.blue(), accent.red() + 100);
    button->setKeyEquivalent(nullptr);
    window->makeFirstResponder(button);
    EXPECT_EQ(colorAt(1.5, 15), accent) << "a ring of two points";
    EXPECT_EQ(colorAt(2.5, 15), QColor(Qt::white));
    button->setFocusRingType(NSFocusRingTypeNone);
    button->setNeedsDisplay(true);
    EXPECT_EQ(colorAt(1.5, 15), QColor(Qt::white));
}

TEST_F(ButtonOnScreen, ofTheTitleBarTellsTheDesktop) {
    EXPECT_TRUE(host()->windowFlags() & Qt::WindowCloseButtonHint);
    hideAllWindowButtons(window);
    settle();
    EXPECT_FALSE(host()->close()) << "what has no close button is not closed by its user";
    EXPECT_TRUE(window->isVisible());
    closeButton(window)->performClick(nullptr);
    EXPECT_FALSE(window->isVisible()) << "the program can";
}

TEST_F(ButtonOnScreen, aShakeOfTheWindowEndsWhereItBegan) {
    const QPoint before = host()->pos();
    bool hasMoved = false;
    beginShakeAnimation(window);
    EXPECT_TRUE(eventually([&] {
        hasMoved = hasMoved || host()->pos() != before;
        return hasMoved;
    }));
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(eventually([&] { return timer.elapsed() > 700 && host()->pos() == before; }));
    EXPECT_EQ(window->frame().origin, (NSPoint{50, 50}));
}

} // namespace
} // namespace zr::test
