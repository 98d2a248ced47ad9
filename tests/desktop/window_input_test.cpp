#include "desktop_testing.h"

#include <zrbasic/core/number_formatters.h>
#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/ui/text_field.h>

#include <QApplication>
#include <QTimer>

namespace zr {
namespace {

using test::becomes;
using test::click;
using test::middleOf;
using test::outputOf;
using test::pressKeys;
using test::serverNumber;
using test::type;

class DesktopClicks : public NSObject {
    ZR_OBJECT(DesktopClicks, NSObject)
  public:
    void clicked(NSObject*) {
        ++clicks;
        if (endsSession) {
            NSApplication::sharedApplication()->stopModalWithCode(7);
        }
    }
    ZR_METHOD(clicked, "clicked:")
    bool windowShouldClose(NSObject*) {
        ++asked;
        return mayClose;
    }
    ZR_METHOD(windowShouldClose, "windowShouldClose:")

    int clicks = 0;
    int asked = 0;
    bool mayClose = false;
    bool endsSession = false;
};

class InputOnDesktop : public test::Desktop {
  protected:
    Ref<NSButton> addButton(NSWindow* window, NSRect frame) {
        Ref<NSButton> button = NSButton::buttonWithTitle_target_action("Press"_ns, clicks, "clicked:"_sel);
        button->setFrame(frame);
        window->contentView()->addSubview(button);
        return button;
    }
    static QString activeOnServer() { return outputOf("xdotool", {"getactivewindow"}).trimmed(); }

    Ref<DesktopClicks> clicks = make<DesktopClicks>();
};

TEST_F(InputOnDesktop, aClickPressesAButton) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 300, 200), "Button"_ns);
    const Ref<NSButton> button = addButton(window, NSMakeRect(40, 60, 120, 30));
    QTest::qWait(50);
    click(middleOf(button));
    EXPECT_TRUE(becomes([this] { return clicks->clicks == 1; }));
    // Beside it nothing happens.
    click({window->frame().origin.x + 250, window->frame().origin.y + 20});
    QTest::qWait(100);
    EXPECT_EQ(clicks->clicks, 1);
    button->setEnabled(false);
    click(middleOf(button));
    QTest::qWait(100);
    EXPECT_EQ(clicks->clicks, 1);
}

TEST_F(InputOnDesktop, aPriceIsTypedAndNothingElse) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 300, 200), "Price"_ns);
    const Ref<ZRXTextField> field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSMakeRect(40, 60, 160, 26));
    field->setFormatter(make<ZRPriceNumberInputFormatter>());
    field->setTarget(clicks);
    field->setAction("clicked:"_sel);
    window->contentView()->addSubview(field);
    QTest::qWait(50);
    click(middleOf(field));
    ASSERT_TRUE(becomes([&field] { return field->currentEditor() != nullptr; }));
    type("12x.3 4.5");
    EXPECT_TRUE(becomes([&field] { return field->stringValue()->utf8() == "12.345"; })) << field->stringValue()->utf8();
    pressKeys({"BackSpace", "Home", "7"});
    EXPECT_TRUE(becomes([&field] { return field->stringValue()->utf8() == "712.34"; })) << field->stringValue()->utf8();
    EXPECT_EQ(clicks->clicks, 0);
    pressKeys({"Return"});
    EXPECT_TRUE(becomes([this] { return clicks->clicks == 1; }));
    EXPECT_EQ(field->stringValue()->utf8(), "712.34");
}

TEST_F(InputOnDesktop, theWindowThatIsClickedBecomesKey) {
    const Ref<NSWindow> left = showWindow(NSMakeRect(50, 150, 300, 200), "Left"_ns);
    const Ref<NSWindow> right = showWindow(NSMakeRect(600, 150, 300, 200), "Right"_ns);
    EXPECT_TRUE(right->isKeyWindow());
    EXPECT_FALSE(left->isKeyWindow());
    EXPECT_EQ(activeOnServer(), serverNumber(right));
    int resigned = 0;
    const id listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
        NSWindowDidResignKeyNotification(), right, [&resigned](NSNotification*) { ++resigned; });
    click({left->frame().origin.x + 100, left->frame().origin.y + 50});
    EXPECT_TRUE(becomes([&left] { return left->isKeyWindow(); }));
    EXPECT_FALSE(right->isKeyWindow());
    EXPECT_EQ(resigned, 1);
    EXPECT_EQ(activeOnServer(), serverNumber(left));
    right->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(becomes([&right] { return activeOnServer() == serverNumber(right); }));
    EXPECT_TRUE(right->isKeyWindow());
    outputOf("wmctrl", {"-i", "-a", serverNumber(left)});
    EXPECT_TRUE(becomes([&left] { return left->isKeyWindow(); }));
    NSNotificationCenter::defaultCenter()->removeObserver(listening);
}

TEST_F(InputOnDesktop, theFirstClickIntoAnotherWindowCounts) {
    const Ref<NSWindow> left = showWindow(NSMakeRect(50, 150, 300, 200), "Left"_ns);
    const Ref<NSButton> button = addButton(left, NSMakeRect(40, 60, 120, 30));
    const Ref<NSWindow> right = showWindow(NSMakeRect(600, 150, 300, 200), "Right"_ns);
    click(middleOf(button));
    EXPECT_TRUE(becomes([&left] { return left->isKeyWindow(); }));
    EXPECT_TRUE(becomes([this] { return clicks->clicks == 1; }));
}

TEST_F(InputOnDesktop, aWindowClosedByTheWindowManagerAsksItsDelegate) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 300, 200), "Closing time"_ns);
    window->setDelegate(clicks);
    int closing = 0;
    const id listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
        NSWindowWillCloseNotification(), window, [&closing](NSNotification*) { ++closing; });
    outputOf("wmctrl", {"-c", "Closing time"});
    EXPECT_TRUE(becomes([this] { return clicks->asked == 1; }));
    QTest::qWait(100);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(outputOf("wmctrl", {"-l"}).contains("Closing time"));
    EXPECT_EQ(closing, 0);
    clicks->mayClose = true;
    outputOf("wmctrl", {"-c", "Closing time"});
    EXPECT_TRUE(becomes([&window] { return !window->isVisible(); }));
    EXPECT_EQ(clicks->asked, 2);
    EXPECT_EQ(closing, 1);
    EXPECT_TRUE(becomes([] { return !outputOf("wmctrl", {"-l"}).contains("Closing time"); }));
    NSNotificationCenter::defaultCenter()->removeObserver(listening);
}

TEST_F(InputOnDesktop, aWindowThatIsNotClosableStays) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 300, 200), "Staying"_ns, NSWindowStyleMaskTitled);
    outputOf("wmctrl", {"-c", "Staying"});
    QTest::qWait(200);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(outputOf("wmctrl", {"-l"}).contains("Staying"));
}

TEST_F(InputOnDesktop, aModalWindowKeepsClicksFromTheOthers) {
    const Ref<NSWindow> other = showWindow(NSMakeRect(50, 150, 300, 200), "Other"_ns);
    const Ref<NSButton> outside = addButton(other, NSMakeRect(40, 60, 120, 30));
    const Ref<NSWindow> modal = makeWindow(NSMakeRect(600, 150, 300, 200), "Modal"_ns);
    const Ref<NSButton> inside = addButton(modal, NSMakeRect(40, 60, 120, 30));
    int clicksOutside = -1;
    bool stayed = false;
    QTimer::singleShot(0, [&] {
        EXPECT_TRUE(becomes([&modal] { return qt::widget(modal) && qt::widget(modal)->isActiveWindow(); }));
        click(middleOf(outside));
        EXPECT_TRUE(becomes([&modal] { return activeOnServer() == serverNumber(modal); })) << "gets the keys back";
        EXPECT_TRUE(modal->isKeyWindow());
        outputOf("wmctrl", {"-c", "Other"});
        QTest::qWait(100);
        clicksOutside = clicks->clicks;
        stayed = other->isVisible();
        clicks->endsSession = true;
        outputOf("wmctrl", {"-i", "-a", serverNumber(modal)});
        click(middleOf(inside));
    });
    // Nobody would end the session if its button did not work.
    QTimer::singleShot(30'000, qApp, [] { NSApplication::sharedApplication()->stopModalWithCode(-1); });
    EXPECT_EQ(NSApplication::sharedApplication()->runModalForWindow(modal), 7);
    EXPECT_EQ(clicksOutside, 0);
    EXPECT_TRUE(stayed);
    clicks->endsSession = false;
    modal->orderOut(nullptr);
    click(middleOf(outside));
    EXPECT_TRUE(becomes([this] { return clicks->clicks == 2; }));
}

} // namespace
} // namespace zr
