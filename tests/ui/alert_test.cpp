#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/ui/alert.h>
#include <zrbasic/ui/application.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

class QuietAlert : public NSAlert {
    ZR_OBJECT(QuietAlert, NSAlert)
  public:
    NSInteger runModal() override {
        ++runs;
        return 1000;
    }
    int runs = 0;
};

TEST(AlertHelper, saysTheTitleAndTheMessage) {
    const auto alert = alertWithTitle_message("Order refused"_ns, "The price is off the tick."_ns);
    EXPECT_EQ(alert->messageText()->utf8(), "Order refused");
    EXPECT_EQ(alert->informativeText()->utf8(), "The price is off the tick.");
    const auto untitled = alertWithMessage("Only this"_ns);
    EXPECT_EQ(untitled->messageText()->utf8(), make<NSAlert>()->messageText()->utf8());
    EXPECT_EQ(untitled->informativeText()->utf8(), "Only this");
    EXPECT_EQ(alertWithTitle_message(""_ns, ""_ns)->messageText()->utf8(), "") << "an empty text is a text";
}

TEST(AlertHelper, keepsTheDefaultTextForATitleThatIsNone) {
    const std::string standard = make<NSAlert>()->messageText()->utf8();
    EXPECT_EQ(standard, "Alert");
    for (const id& odd : {id(), id(NSNull::null()), id(box(7)), id(make<NSObject>())}) {
        const auto alert = alertWithTitle_message(odd, odd);
        EXPECT_EQ(alert->messageText()->utf8(), standard);
        EXPECT_EQ(alert->informativeText()->utf8(), "");
        EXPECT_EQ(alertWithMessage(odd)->informativeText()->utf8(), "");
    }
}

TEST(AlertHelper, makesAlertsOfTheReceivingClass) {
    EXPECT_TRUE(alertWithMessage<QuietAlert>("x"_ns)->isMemberOfClass(QuietAlert::classObject()));
    const id made = send<id>(QuietAlert::classObject(), "alertWithTitle:message:"_sel, "a"_ns, "b"_ns);
    ASSERT_NE(cast<QuietAlert>(made), nullptr);
    EXPECT_EQ(cast<NSAlert>(made)->messageText()->utf8(), "a");
    EXPECT_EQ(cast<NSAlert>(made)->informativeText()->utf8(), "b");
    const id plain = send<id>(NSAlert::classObject(), "alertWithMessage:"_sel, box(5));
    EXPECT_EQ(cast<NSAlert>(plain)->informativeText()->utf8(), "");
    EXPECT_NE(alertWithMessage("x"_ns), alertWithMessage("x"_ns)) << "a new one every time";
}

TEST(AlertHelper, isAModalWindowOfTheApplicationWhileItAsks) {
    const auto application = NSApplication::sharedApplication();
    test::WindowToolkit toolkit;
    bool isModal = false;
    toolkit.whenAsked = [&](NSAlert&) {
        isModal = isContainsModalWindow(application);
        return NSInteger{0};
    };
    EXPECT_FALSE(isContainsModalWindow(application));
    zr_runModal(alertWithMessage("x"_ns).get());
    EXPECT_TRUE(isModal);
    EXPECT_FALSE(isContainsModalWindow(application)) << "gone with the alert";
}

TEST(AlertHelper, runsAtOnceOnTheMainThread) {
    const auto alert = alertWithMessage<QuietAlert>("x"_ns);
    zr_runModal(alert);
    EXPECT_EQ(alert->runs, 1);
    send<void>(alert, "zr_runModal"_sel);
    EXPECT_EQ(alert->runs, 2);
    NSAlert* const none = nullptr;
    zr_runModal(none);
}

} // namespace
} // namespace zr
