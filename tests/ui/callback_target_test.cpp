#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/runtime/message.h>
#include <zrbasic/ui/callback_target.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

Ref<NSButton> button() {
    return NSButton::buttonWithTitle_target_action("Buy"_ns, nullptr, {});
}

TEST(CallbackTarget, aControlRunsItsCallbackWithItself) {
    const Ref<NSButton> buy = button();
    std::vector<id> senders;
    setCallback(buy, [&](NSObject* sender) { senders.push_back(id(sender)); });
    buy->performClick(nullptr);
    buy->performClick(nullptr);
    EXPECT_EQ(senders, (std::vector<id>{buy, buy}));
    EXPECT_EQ(buy->action(), "invoke:"_sel);
}

TEST(CallbackTarget, aMenuItemRunsItsCallbackWithItself) {
    const auto menu = make<NSMenu>();
    const auto item = menu->addItemWithTitle_action_keyEquivalent("Quit"_ns, {}, ""_ns);
    id seen;
    setCallback(item, [&](NSObject* sender) { seen = id(sender); });
    menu->performActionForItemAtIndex(0);
    EXPECT_EQ(seen, item);
}

TEST(CallbackTarget, theLatestCallbackCountsAndTheOneBeforeIsLetGo) {
    const Ref<NSButton> buy = button();
    const auto kept = std::make_shared<int>(0);
    setCallback(buy, [kept](NSObject*) { ++*kept; });
    EXPECT_EQ(kept.use_count(), 2);
    int later = 0;
    setCallback(buy, [&](NSObject*) { ++later; });
    EXPECT_EQ(kept.use_count(), 1);
    buy->performClick(nullptr);
    EXPECT_EQ(*kept, 0);
    EXPECT_EQ(later, 1);
}

TEST(CallbackTarget, anEmptyCallbackLeavesNoTarget) {
    const Ref<NSButton> buy = button();
    int count = 0;
    setCallback(buy, [&](NSObject*) { ++count; });
    setCallback(buy, {});
    buy->performClick(nullptr);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(buy->target(), nullptr);
    EXPECT_EQ(buy->action(), SEL());
    ZRXCallbackTarget::targetWithCallback({})->invoke(buy);
}

TEST(CallbackTarget, theCallbackMayReplaceItselfAndEndItsControl) {
    Ref<NSButton> buy = button();
    const auto kept = std::make_shared<int>(0);
    setCallback(buy, [&buy, kept](NSObject* sender) {
        setCallback(static_cast<NSControl*>(sender), [](NSObject*) { FAIL(); });
        buy = nullptr;
        ++*kept;
    });
    const Ref<NSButton> clicked = std::exchange(buy, buy);
    clicked->performClick(nullptr);
    EXPECT_EQ(*kept, 1);
    EXPECT_EQ(kept.use_count(), 1);
}

TEST(CallbackTarget, isHandedWhateverIsSentAlong) {
    std::vector<id> seen;
    const auto target = ZRXCallbackTarget::targetWithCallback([&](NSObject* sender) { seen.push_back(id(sender)); });
    send<void>(target, "invoke:"_sel, NSNull::null());
    send<void>(target, "invoke:"_sel, static_cast<NSObject*>(nullptr));
    EXPECT_EQ(seen, (std::vector<id>{id(NSNull::null()), nullptr}));
}

TEST(CallbackTarget, anExceptionOfTheCallbackPassesThrough) {
    const Ref<NSButton> buy = button();
    setCallback(buy, [](NSObject*) { throw NSException("Refused", "no"); });
    EXPECT_THROW(buy->performClick(nullptr), NSException);
}

TEST(CallbackTarget, aNullReceiverDoesNothing) {
    int count = 0;
    setCallback(static_cast<NSControl*>(nullptr), [&](NSObject*) { ++count; });
    setCallback(static_cast<NSMenuItem*>(nullptr), [&](NSObject*) { ++count; });
    EXPECT_EQ(count, 0);
}

} // namespace
} // namespace zr
