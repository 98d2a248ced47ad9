#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

using test::keyEvent;

/// Writes down the buttons that were pressed.
class Presses : public NSObject {
    ZR_OBJECT(Presses, NSObject)
  public:
    void pressed(NSObject* sender) {
        const auto* const button = cast<NSButton>(sender);
        heard += button ? button->title()->utf8() + " " : "? ";
        if (whenPressed) {
            whenPressed();
        }
    }
    ZR_METHOD(pressed, "pressed:")

    std::string heard;
    std::function<void()> whenPressed;
};

/// In a key window, 100 by 30 points at 20, 10.
class Button : public testing::Test {
  protected:
    void SetUp() override {
        m_window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {200, 100}},
                                  NSUInteger{NSWindowStyleMaskTitled});
        m_presses = make<Presses>();
        m_button = NSButton::buttonWithTitle_target_action("Buy"_ns, m_presses, "pressed:"_sel);
        m_button->setFrame({{20, 10}, {100, 30}});
        m_window->contentView()->addSubview(m_button);
        m_window->makeKeyAndOrderFront(nullptr);
    }
    void TearDown() override { test::hideAllWindows(); }

    void down(NSPoint at) { send<void>(m_button, "mouseDown:"_sel, test::mouseEvent(NSEventTypeLeftMouseDown, at)); }
    void drag(NSPoint at) {
        send<void>(m_button, "mouseDragged:"_sel, test::mouseEvent(NSEventTypeLeftMouseDragged, at));
    }
    void up(NSPoint at) { send<void>(m_button, "mouseUp:"_sel, test::mouseEvent(NSEventTypeLeftMouseUp, at)); }
    void click() {
        down(inside);
        up(inside);
    }
    std::vector<NSInteger> statesOfClicks(int count) {
        std::vector<NSInteger> states;
        for (int i = 0; i < count; ++i) {
            click();
            states.push_back(m_button->state());
        }
        return states;
    }

    static constexpr NSPoint inside{50, 20};
    static constexpr NSPoint outside{150, 20};

    test::WindowToolkit m_toolkit;
    Ref<NSWindow> m_window;
    Ref<Presses> m_presses;
    Ref<NSButton> m_button;
};

TEST_F(Button, isPressedByAClick) {
    down(inside);
    EXPECT_TRUE(m_button->isHighlighted());
    EXPECT_EQ(m_presses->heard, "") << "not before it is let go";
    up(inside);
    EXPECT_FALSE(m_button->isHighlighted());
    EXPECT_EQ(m_presses->heard, "Buy ");
    up(inside);
    EXPECT_EQ(m_presses->heard, "Buy ");
}

TEST_F(Button, isNotPressedWhenThePointerHasLeftIt) {
    down(inside);
    drag(outside);
    EXPECT_FALSE(m_button->isHighlighted());
    drag(inside);
    EXPECT_TRUE(m_button->isHighlighted());
    drag(outside);
    up(outside);
    EXPECT_EQ(m_presses->heard, "");
    drag(inside);
    EXPECT_FALSE(m_button->isHighlighted()) << "it is no longer pressed";
    down(outside);
    up(inside);
    EXPECT_EQ(m_presses->heard, "") << "the press was elsewhere";
}

TEST_F(Button, countsItsEdgesToOneSide) {
    down({20, 40});
    EXPECT_TRUE(m_button->isHighlighted()) << "the upper left corner is on it";
    up({120, 40});
    EXPECT_EQ(m_presses->heard, "") << "the right edge is beyond it";
    down({20, 10});
    EXPECT_FALSE(m_button->isHighlighted()) << "so is the lower one";
}

TEST_F(Button, doesNothingWhileDisabled) {
    m_button->setEnabled(false);
    click();
    m_button->performClick(nullptr);
    m_button->keyDown(keyEvent(" "_ns));
    EXPECT_EQ(m_presses->heard, "");
    m_button->setEnabled(true);
    down(inside);
    m_button->setEnabled(false);
    EXPECT_FALSE(m_button->isHighlighted());
    m_button->setEnabled(true);
    up(inside);
    EXPECT_EQ(m_presses->heard, "") << "it was disabled in between";
}

TEST_F(Button, isLetGoWhenItLeavesItsWindow) {
    down(inside);
    m_button->removeFromSuperview();
    EXPECT_FALSE(m_button->isHighlighted());
    up({30, 10});
    EXPECT_EQ(m_presses->heard, "");
}

TEST_F(Button, mayBeLetGoOfByItsAction) {
    m_presses->whenPressed = [this] {
        m_button->removeFromSuperview();
        m_button = nullptr;
    };
    NSButton* const button = m_button;
    button->mouseDown(test::mouseEvent(NSEventTypeLeftMouseDown, inside));
    button->mouseUp(test::mouseEvent(NSEventTypeLeftMouseUp, inside));
    EXPECT_EQ(m_presses->heard, "Buy ");
    EXPECT_EQ(m_button, nullptr);
}

TEST_F(Button, isPressedByTheSpaceAndReturnKeys) {
    m_window->makeFirstResponder(m_button);
    for (const char* key : {" ", "\r", "\x03"}) {
        send<void>(m_window->firstResponder(), "keyDown:"_sel, keyEvent(NSString::fromUtf8(key)));
    }
    EXPECT_EQ(m_presses->heard, "Buy Buy Buy ");
    m_button->keyDown(keyEvent(" "_ns, 0, true));
    EXPECT_EQ(m_presses->heard, "Buy Buy Buy ") << "holding a key down does not press again";
    m_button->keyDown(keyEvent("a"_ns));
    m_button->keyDown(keyEvent(" "_ns, NSEventModifierFlagCommand));
    m_button->keyDown(keyEvent(nullptr));
    EXPECT_EQ(m_presses->heard, "Buy Buy Buy ");
}

TEST_F(Button, isPressedByItsKeyEquivalent) {
    m_button->setKeyEquivalent("\r"_ns);
    m_window->keyDown(keyEvent("\r"_ns));
    m_window->keyDown(keyEvent("\x03"_ns));
    EXPECT_EQ(m_presses->heard, "Buy Buy ") << "both keys say return";
    EXPECT_FALSE(m_window->performKeyEquivalent(keyEvent("\r"_ns, NSEventModifierFlagCommand)));
    m_button->setKeyEquivalent("b"_ns);
    m_button->setKeyEquivalentModifierMask(NSEventModifierFlagCommand | NSEventModifierFlagCapsLock);
    EXPECT_FALSE(m_window->performKeyEquivalent(keyEvent("b"_ns)));
    EXPECT_FALSE(m_window->performKeyEquivalent(keyEvent("B"_ns, NSEventModifierFlagCommand)));
    EXPECT_TRUE(m_window->performKeyEquivalent(keyEvent("b"_ns, NSEventModifierFlagCommand)));
    EXPECT_EQ(m_presses->heard, "Buy Buy Buy ");
    EXPECT_TRUE(m_window->performKeyEquivalent(keyEvent("b"_ns, NSEventModifierFlagCommand, true)));
    EXPECT_EQ(m_presses->heard, "Buy Buy Buy ") << "it is the button's, but it presses once";
}

TEST_F(Button, leavesItsKeyToOthersWhileItCannotBeUsed) {
    m_button->setKeyEquivalent("\r"_ns);
    m_button->setHidden(true);
    EXPECT_FALSE(m_window->performKeyEquivalent(keyEvent("\r"_ns)));
    m_button->setHidden(false);
    m_window->contentView()->setHidden(true);
    EXPECT_FALSE(m_window->performKeyEquivalent(keyEvent("\r"_ns)));
    m_window->contentView()->setHidden(false);
    m_button->setEnabled(false);
    EXPECT_FALSE(m_window->performKeyEquivalent(keyEvent("\r"_ns)));
    m_button->setEnabled(true);
    m_button->setKeyEquivalent(nullptr);
    EXPECT_FALSE(m_window->performKeyEquivalent(keyEvent(""_ns))) << "no key is none";
    EXPECT_FALSE(m_window->performKeyEquivalent(nullptr));
    EXPECT_EQ(m_presses->heard, "");
}

TEST_F(Button, sendsItsActionAlongTheRespondersWithoutATarget) {
    m_button->setTarget(nullptr);
    m_button->performClick(nullptr);
    EXPECT_EQ(m_presses->heard, "");
    m_button->setAction("performClose:"_sel);
    m_window->setStyleMask(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
    m_button->performClick(nullptr);
    EXPECT_FALSE(m_window->isVisible());
    m_button->setAction(SEL());
    m_button->performClick(nullptr);
}

using States = std::vector<NSInteger>;

TEST_F(Button, changesItsStateAsItsTypeSays) {
    EXPECT_EQ(statesOfClicks(2), (States{0, 0})) << "a momentary button";
    m_button->setButtonType(NSButtonTypeSwitch);
    EXPECT_EQ(statesOfClicks(3), (States{1, 0, 1})) << "a check box";
    m_button->setState(0);
    m_button->setAllowsMixedState(true);
    EXPECT_EQ(statesOfClicks(4), (States{-1, 1, 0, -1})) << "one with a third state";
    m_button->setAllowsMixedState(false);
    EXPECT_EQ(m_button->state(), 1) << "mixed is on where there is no mixed";
    m_button->setState(0);
    m_button->setButtonType(NSButtonTypeRadio);
    EXPECT_EQ(statesOfClicks(2), (States{1, 1})) << "a radio button stays on";
    m_button->setButtonType(NSButtonTypePushOnPushOff);
    EXPECT_EQ(statesOfClicks(2), (States{0, 1}));
}

TEST_F(Button, hasItsNewStateWhenItSendsItsAction) {
    m_button->setButtonType(NSButtonTypeSwitch);
    NSInteger state = 7;
    m_presses->whenPressed = [&] { state = m_button->state(); };
    click();
    EXPECT_EQ(state, 1);
}

TEST_F(Button, hasItsStateForAValue) {
    m_button->setButtonType(NSButtonTypeSwitch);
    m_button->setState(17);
    EXPECT_EQ(m_button->state(), 1) << "anything above 0 is on";
    EXPECT_TRUE(m_button->objectValue()->isEqual(box(1)));
    m_button->setState(-5);
    EXPECT_EQ(m_button->state(), 1);
    m_button->setObjectValue(box(0));
    EXPECT_EQ(m_button->state(), 0);
    m_button->setStringValue("1"_ns);
    EXPECT_EQ(m_button->state(), 1);
    for (const id& odd : {id(), id(NSNull::null()), id(make<NSObject>()), id("yes"_ns)}) {
        m_button->setState(1);
        m_button->setObjectValue(odd);
        EXPECT_EQ(m_button->state(), 0);
    }
    m_button->setIntegerValue(3);
    EXPECT_EQ(m_button->integerValue(), 1);
    EXPECT_EQ(m_button->title()->utf8(), "Buy") << "the title is no value";
}

TEST_F(Button, copiesItsTitleAndKey) {
    const auto text = cast<NSMutableString>(NSMutableString::fromUtf8("Sell")->mutableCopy());
    m_button->setTitle(text);
    m_button->setKeyEquivalent(text);
    text->appendString("!"_ns);
    EXPECT_EQ(m_button->title()->utf8(), "Sell");
    EXPECT_EQ(m_button->keyEquivalent()->utf8(), "Sell");
    m_button->setTitle(nullptr);
    m_button->setKeyEquivalent(nullptr);
    EXPECT_EQ(m_button->title()->utf8(), "");
    EXPECT_EQ(m_button->keyEquivalent()->utf8(), "");
}

TEST_F(Button, isNothingMuchWithAnotherCell) {
    m_button->setCell(make<NSCell>());
    m_button->setTitle("Sell"_ns);
    m_button->setImage(make<NSImage>());
    m_button->setState(1);
    m_button->setButtonType(NSButtonTypeSwitch);
    EXPECT_EQ(m_button->title()->utf8(), "");
    EXPECT_EQ(m_button->image(), nullptr);
    EXPECT_EQ(m_button->state(), 0);
    m_button->setCell(nullptr);
    click();
    m_button->performClick(nullptr);
    EXPECT_FALSE(m_button->isHighlighted());
    EXPECT_EQ(m_presses->heard, "");
}

TEST_F(Button, ignoresEventsThatAreNone) {
    m_button->mouseDown(nullptr);
    m_button->mouseDragged(nullptr);
    m_button->mouseUp(nullptr);
    EXPECT_FALSE(m_button->isHighlighted());
    down(inside);
    m_button->mouseUp(nullptr);
    m_button->keyDown(nullptr);
    EXPECT_FALSE(m_button->performKeyEquivalent(nullptr));
    EXPECT_EQ(m_presses->heard, "");
}

/// Does something else when it is clicked.
class Stubborn : public NSButton {
    ZR_OBJECT(Stubborn, NSButton)
  public:
    void performClick(NSObject*) override { ++clicks; }
    int clicks = 0;
};

TEST_F(Button, honoursAnOperationThatWasReplaced) {
    const auto stubborn = make<Stubborn>();
    stubborn->setKeyEquivalent("x"_ns);
    EXPECT_TRUE(stubborn->performKeyEquivalent(keyEvent("x"_ns)));
    stubborn->keyDown(keyEvent(" "_ns));
    EXPECT_EQ(stubborn->clicks, 2);
}

TEST_F(Button, isAsLargeAsItNeedsToBe) {
    EXPECT_EQ(m_button->cell()->cellSize(), (NSSize{3 * 7 + 20, 16 + 8}));
    EXPECT_EQ(NSButton::checkboxWithTitle_target_action("Hold"_ns, nullptr, SEL())->frame().size,
              (NSSize{14 + 6 + 28, 16}));
    EXPECT_EQ(NSButton::radioButtonWithTitle_target_action(nullptr, nullptr, SEL())->frame().size, (NSSize{14, 14}));
    m_button->setImage(make<NSImage>(&NSImage::initWithSize, NSSize{30, 40}));
    EXPECT_EQ(m_button->imagePosition(), NSImageLeft);
    EXPECT_EQ(m_button->cell()->cellSize(), (NSSize{30 + 6 + 21 + 20, 40 + 8}));
    m_button->setImagePosition(NSImageOnly);
    EXPECT_EQ(m_button->cell()->cellSize(), (NSSize{50, 48}));
    m_button->setBordered(false);
    EXPECT_EQ(m_button->cell()->cellSize(), (NSSize{30, 40}));
}

} // namespace
} // namespace zr
