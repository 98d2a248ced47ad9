#include <zrbasic/platform/appkit/alert.h>
#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/run_loop.h>

#include <tests/appkit/window_testing.h>
#include <tests/foundation/checks.h>

#include <thread>

namespace zr {
namespace {

class Alert : public testing::Test {
  protected:
    void TearDown() override { test::hideAllWindows(); }

    test::WindowToolkit m_toolkit;
};

TEST_F(Alert, saysSomethingFromTheStart) {
    const auto alert = make<NSAlert>();
    EXPECT_EQ(alert->messageText()->utf8(), "Alert");
    EXPECT_EQ(alert->informativeText()->utf8(), "");
    EXPECT_EQ(alert->alertStyle(), NSAlertStyleWarning);
    EXPECT_EQ(alert->buttons()->count(), 0U);
    alert->setAlertStyle(NSAlertStyleCritical);
    EXPECT_EQ(alert->alertStyle(), NSAlertStyleCritical);
}

TEST_F(Alert, copiesItsTexts) {
    const auto alert = make<NSAlert>();
    const auto text = cast<NSMutableString>(NSMutableString::fromUtf8("No")->mutableCopy());
    alert->setMessageText(text);
    alert->setInformativeText(text);
    text->appendString("!"_ns);
    EXPECT_EQ(alert->messageText()->utf8(), "No");
    EXPECT_EQ(alert->informativeText()->utf8(), "No");
    alert->setMessageText(nullptr);
    alert->setInformativeText(nullptr);
    EXPECT_EQ(alert->messageText()->utf8(), "");
    EXPECT_EQ(alert->informativeText()->utf8(), "");
}

TEST_F(Alert, hasADefaultAndACancelButton) {
    const auto alert = make<NSAlert>();
    const auto first = alert->addButtonWithTitle("Cancel"_ns);
    const auto second = alert->addButtonWithTitle("Delete"_ns);
    const auto third = alert->addButtonWithTitle("Cancel"_ns);
    const auto fourth = alert->addButtonWithTitle(nullptr);
    EXPECT_EQ(first->keyEquivalent()->utf8(), "\r") << "the first one is the default, whatever it says";
    EXPECT_EQ(second->keyEquivalent()->utf8(), "");
    EXPECT_EQ(third->keyEquivalent()->utf8(), "\x1b");
    EXPECT_EQ(fourth->title()->utf8(), "");
    EXPECT_EQ(fourth->tag(), 1003);
    ASSERT_EQ(alert->buttons()->count(), 4U);
    EXPECT_EQ(alert->buttons()->objectAtIndex(1), second);
}

TEST_F(Alert, givesTheButtonThatWasPressed) {
    const auto alert = make<NSAlert>();
    alert->addButtonWithTitle("Yes"_ns);
    alert->addButtonWithTitle("No"_ns);
    NSInteger pressed = 0;
    m_toolkit.whenAsked = [&](NSAlert& asked) {
        EXPECT_EQ(&asked, alert.get());
        EXPECT_TRUE(NSRunLoop::mainRunLoop()->currentMode()->isEqual(NSModalPanelRunLoopMode()));
        return pressed;
    };
    EXPECT_EQ(alert->runModal(), NSAlertFirstButtonReturn);
    pressed = 1;
    EXPECT_EQ(alert->runModal(), NSAlertSecondButtonReturn);
    EXPECT_TRUE(NSRunLoop::mainRunLoop()->currentMode()->isEqual(NSDefaultRunLoopMode()));
    EXPECT_EQ(alert->buttons()->count(), 2U);
}

TEST_F(Alert, getsAButtonWhenItHasNone) {
    const auto alert = make<NSAlert>();
    m_toolkit.whenAsked = [](NSAlert& asked) {
        EXPECT_EQ(asked.buttons()->count(), 1U);
        return NSInteger{0};
    };
    EXPECT_EQ(alert->runModal(), 1000);
    EXPECT_EQ(cast<NSButton>(alert->buttons()->firstObject())->title()->utf8(), "OK");
    alert->runModal();
    EXPECT_EQ(alert->buttons()->count(), 1U) << "and no second one";
}

TEST_F(Alert, isAbortedWhenNobodyCanBeAsked) {
    EXPECT_EQ(make<NSAlert>()->runModal(), NSModalResponseAbort);
    NSInteger elsewhere = 0;
    m_toolkit.whenAsked = [](NSAlert&) { return NSInteger{0}; };
    const auto alert = make<NSAlert>();
    std::thread([&] { elsewhere = alert->runModal(); }).join();
    EXPECT_EQ(elsewhere, NSModalResponseAbort) << "only the main thread can ask";
}

TEST_F(Alert, isKeptWhileItAsks) {
    auto alert = make<NSAlert>();
    NSAlert* const running = alert;
    Weak<NSAlert> watched(running);
    m_toolkit.whenAsked = [&](NSAlert& asked) {
        alert = nullptr;
        EXPECT_EQ(asked.messageText()->utf8(), "Alert");
        return NSInteger{0};
    };
    EXPECT_EQ(running->runModal(), 1000);
    EXPECT_EQ(watched.lock(), nullptr);
}

TEST_F(Alert, leavesTheModeWhenAskingRaises) {
    m_toolkit.whenAsked = [](NSAlert&) -> NSInteger { NSException::raise(NSGenericException, "in the middle of it"); };
    const auto alert = make<NSAlert>();
    EXPECT_EQ(test::raisedName([&] { (void)alert->runModal(); }), NSGenericException);
    EXPECT_TRUE(NSRunLoop::mainRunLoop()->currentMode()->isEqual(NSDefaultRunLoopMode()));
}

TEST_F(Alert, hasAModalPanelForAWindow) {
    const auto alert = make<NSAlert>();
    const auto window = alert->window();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(alert->window(), window);
    EXPECT_TRUE(window->isModalPanel());
    EXPECT_TRUE(send<bool>(window, "isModalPanel"_sel));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Alert, panelIsNoModalOneByItself) {
    const auto panel = make<NSPanel>();
    EXPECT_FALSE(panel->isModalPanel());
    EXPECT_FALSE(panel->worksWhenModal());
    EXPECT_FALSE(panel->becomesKeyOnlyIfNeeded());
    EXPECT_FALSE(panel->isFloatingPanel());
    panel->setWorksWhenModal(true);
    EXPECT_TRUE(send<bool>(panel, "worksWhenModal"_sel));
    EXPECT_FALSE(panel->becomesKeyOnlyIfNeeded());
    panel->setBecomesKeyOnlyIfNeeded(true);
    EXPECT_TRUE(send<bool>(panel, "becomesKeyOnlyIfNeeded"_sel));
    panel->orderFront(nullptr);
    m_toolkit.taken();
    panel->setFloatingPanel(true);
    EXPECT_TRUE(send<bool>(panel, "isFloatingPanel"_sel));
    EXPECT_EQ(m_toolkit.taken(), "style\n");
}

} // namespace
} // namespace zr
