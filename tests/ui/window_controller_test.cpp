#include <zrbasic/model/object_helpers.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/ui/window.h>
#include <zrbasic/ui/window_controller.h>

#include <tests/appkit/window_testing.h>

namespace zr {
namespace {

using Cache = _ZRShowingWindowControllerCache;

/// Writes down what it is asked to do, and what it is asked by.
class NotedController : public NSWindowController {
    ZR_OBJECT(NotedController, NSWindowController)
  public:
    void showWindow(NSObject* sender) override {
        const Ref<NSMutableDictionary> kept = Cache::sharedCache()->cachedWindowControllers();
        notes += kept->objectForKey(objectIdentifier(window())) == this ? "kept show" : "show";
        notes += sender ? " by " + cast<NSString>(sender)->utf8() : "";
        NSWindowController::showWindow(sender);
    }
    std::string notes;
};

/// The same for a window.
class NotedWindow : public NSWindow {
    ZR_OBJECT(NotedWindow, NSWindow)
  public:
    void orderFront(NSObject* sender) override {
        notes += sender ? "front by " + cast<NSString>(sender)->utf8() + ' ' : "front ";
        NSWindow::orderFront(sender);
    }
    void makeKeyAndOrderFront(NSObject* sender) override {
        notes += sender ? "key by " + cast<NSString>(sender)->utf8() + ' ' : "key ";
    }
    void orderWindow_relativeTo(NSWindowOrderingMode place, NSInteger number) override {
        notes += "order " + std::to_string(place) + ' ' + std::to_string(number) + ' ';
        NSWindow::orderWindow_relativeTo(place, number);
    }
    std::string notes;
};

class ShownWindows : public testing::Test {
  protected:
    void SetUp() override {
        m_before = Cache::sharedCache()->cachedWindowControllers();
        Cache::sharedCache()->setCachedWindowControllers(nullptr);
    }
    void TearDown() override {
        test::hideAllWindows();
        Cache::sharedCache()->setCachedWindowControllers(m_before);
    }

    static Ref<NSMutableDictionary> kept() { return Cache::sharedCache()->cachedWindowControllers(); }
    static Ref<NSWindowController> controllerOf(NSWindow* window) {
        return cast<NSWindowController>(kept()->objectForKey(objectIdentifier(window)));
    }
    template <class T = NSWindowController>
    static Ref<T> controllerFor(NSWindow* window) {
        return make<T>(&NSWindowController::initWithWindow, window);
    }

    Ref<NSMutableDictionary> m_before;
};

TEST_F(ShownWindows, haveAControllerMadeAndKeptUntilTheyClose) {
    auto window = make<NSWindow>();
    zr_showWindow_withSender(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isKeyWindow());
    ASSERT_EQ(kept()->count(), 1U);
    const auto controller = controllerOf(window);
    ASSERT_NE(controller, nullptr);
    EXPECT_EQ(window->windowController(), controller);
    EXPECT_TRUE(controller->isMemberOfClass(NSWindowController::classObject()));
    window->close();
    EXPECT_EQ(kept()->count(), 0U);
}

TEST_F(ShownWindows, areForgottenWithTheirControllersWhenTheyClose) {
    auto window = make<NSWindow>();
    const Weak<NSWindow> watched(window.get());
    zr_showWindow(window.get(), nullptr);
    const Weak<NSWindowController> controller(window->windowController().get());
    window = nullptr;
    ASSERT_NE(watched.lock(), nullptr) << "shown, and nobody else holds it";
    ASSERT_NE(controller.lock(), nullptr);
    watched.lock()->close();
    EXPECT_EQ(watched.lock(), nullptr);
    EXPECT_EQ(controller.lock(), nullptr);
}

TEST_F(ShownWindows, keepTheLaterOfTwoControllers) {
    const auto window = make<NSWindow>();
    auto first = controllerFor(window);
    const auto second = controllerFor(window);
    const Weak<NSWindowController> watched(first.get());
    zr_showWindow(first.get(), nullptr);
    EXPECT_EQ(controllerOf(window), first);
    zr_showWindow(first.get(), nullptr);
    EXPECT_EQ(kept()->count(), 1U) << "showing again changes nothing";
    zr_showWindow(second.get(), nullptr);
    EXPECT_EQ(kept()->count(), 1U);
    EXPECT_EQ(controllerOf(window), second);
    first = nullptr;
    EXPECT_EQ(watched.lock(), nullptr);
}

TEST_F(ShownWindows, areKeptBeforeTheyAreShown) {
    const auto window = make<NSWindow>();
    const auto controller = controllerFor<NotedController>(window);
    zr_showWindow(controller.get(), "menu"_ns);
    EXPECT_EQ(controller->notes, "kept show by menu");
    controller->notes.clear();
    zr_showWindow(window.get(), "key"_ns);
    EXPECT_EQ(controller->notes, "kept show by key") << "by the window's own controller";
    controller->notes.clear();
    zr_showWindow_withSender(window, nullptr);
    EXPECT_EQ(controller->notes, "kept show");
}

TEST_F(ShownWindows, areOrderedAsTheyAreAsked) {
    const auto other = make<NSWindow>();
    other->orderFront(nullptr);
    const NSInteger number = other->windowNumber();
    const auto window = make<NotedWindow>();
    const auto controller = controllerFor(window);
    zr_makeKeyAndOrderFrontWindow(controller, "a"_ns);
    zr_orderFrontWindow(controller, "b"_ns);
    zr_orderWindow_relativeTo(controller.get(), NSWindowBelow, number);
    EXPECT_EQ(window->notes, "key by a front by b order -1 " + std::to_string(number) + ' ');
    EXPECT_EQ(controllerOf(window), controller);
    window->notes.clear();
    zr_makeKeyAndOrderFront(window, "c"_ns);
    zr_orderFront(window, nullptr);
    zr_orderWindow_relativeTo(window.get(), NSWindowAbove, 0);
    EXPECT_EQ(window->notes, "key by c front order 1 0 ");
    window->notes.clear();
    zr_makeKeyAndOrderFrontWindow_withSender(window, nullptr);
    zr_orderFrontWindow_withSender(window, "d"_ns);
    zr_orderWindow_orderingMode_relativeTo(window, NSWindowOut, 0);
    EXPECT_EQ(window->notes, "key front by d order 0 0 ");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(controllerOf(window), controller) << "hidden is not closed";
}

TEST_F(ShownWindows, areKeptByEachWayOfOrderingThem) {
    using Show = void (*)(NSWindow*);
    const Show ways[] = {[](NSWindow* window) { zr_showWindow_withSender(window, nullptr); },
                         [](NSWindow* window) { zr_makeKeyAndOrderFrontWindow_withSender(window, nullptr); },
                         [](NSWindow* window) { zr_orderFrontWindow_withSender(window, nullptr); },
                         [](NSWindow* window) { zr_orderWindow_orderingMode_relativeTo(window, NSWindowAbove, 0); }};
    for (std::size_t i = 0; i < std::size(ways); ++i) {
        SCOPED_TRACE(i);
        const auto window = make<NSWindow>();
        ways[i](window);
        EXPECT_TRUE(window->isVisible());
        EXPECT_NE(controllerOf(window), nullptr);
        window->close();
        EXPECT_EQ(kept()->count(), 0U);
    }
}

TEST_F(ShownWindows, answerMessages) {
    const auto window = make<NSWindow>();
    send<void>(window, "zr_orderFront:"_sel, nullptr);
    const auto controller = controllerOf(window);
    ASSERT_NE(controller, nullptr);
    send<void>(window, "zr_showWindow:"_sel, nullptr);
    send<void>(window, "zr_makeKeyAndOrderFront:"_sel, nullptr);
    send<void>(window, "zr_orderWindow:relativeTo:"_sel, NSWindowBelow, NSInteger{0});
    send<void>(controller, "zr_showWindow:"_sel, nullptr);
    send<void>(controller, "zr_orderWindow:relativeTo:"_sel, NSWindowAbove, NSInteger{0});
    NSObject* const subject = NSWindowController::classObject();
    send<void>(subject, "zr_showWindow:withSender:"_sel, window, nullptr);
    send<void>(subject, "zr_orderWindow:orderingMode:relativeTo:"_sel, window, NSWindowOut, NSInteger{0});
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(controllerOf(window), controller);
    send<void>(subject, "zr_showWindow:withSender:"_sel, "no window"_ns, nullptr);
    EXPECT_EQ(kept()->count(), 1U);
}

TEST_F(ShownWindows, areNothingForNull) {
    NSWindow* const noWindow = nullptr;
    NSWindowController* const noController = nullptr;
    zr_showWindow(noWindow, nullptr);
    zr_makeKeyAndOrderFront(noWindow, nullptr);
    zr_orderFront(noWindow, nullptr);
    zr_orderWindow_relativeTo(noWindow, NSWindowAbove, 0);
    zr_showWindow(noController, nullptr);
    zr_makeKeyAndOrderFrontWindow(noController, nullptr);
    zr_orderFrontWindow(noController, nullptr);
    zr_orderWindow_relativeTo(noController, NSWindowAbove, 0);
    zr_showWindow_withSender(noWindow, nullptr);
    zr_makeKeyAndOrderFrontWindow_withSender(noWindow, nullptr);
    zr_orderFrontWindow_withSender(noWindow, nullptr);
    zr_orderWindow_orderingMode_relativeTo(noWindow, NSWindowAbove, 0);
    EXPECT_EQ(kept()->count(), 0U);
}

TEST_F(ShownWindows, areNotKeptByAControllerWithoutAWindow) {
    const auto controller = controllerFor<NotedController>(nullptr);
    zr_showWindow(controller.get(), nullptr);
    zr_orderFrontWindow(controller, nullptr);
    EXPECT_EQ(controller->notes, "show") << "it is asked all the same";
    EXPECT_EQ(kept()->count(), 0U);
    Cache::sharedCache()->cacheWindowController(nullptr);
    EXPECT_EQ(kept()->count(), 0U);
}

TEST_F(ShownWindows, areOneCacheForAll) {
    const auto cache = Cache::sharedCache();
    EXPECT_EQ(Cache::sharedCache(), cache);
    EXPECT_EQ(send<id>(Cache::classObject(), "sharedCache"_sel), cache);
    EXPECT_EQ(kept(), kept()) << "made once";
    const auto mine = NSMutableDictionary::dictionary();
    cache->setCachedWindowControllers(mine);
    EXPECT_EQ(kept(), mine);
    const auto window = make<NSWindow>();
    zr_showWindow(window.get(), nullptr);
    EXPECT_EQ(mine->count(), 1U);
    send<void>(cache, "setCachedWindowControllers:"_sel, "no dictionary"_ns);
    EXPECT_EQ(kept()->count(), 0U);
    window->close();
    EXPECT_EQ(mine->count(), 1U) << "it is no longer the cache's";
}

TEST_F(ShownWindows, giveAWindowThatWasNeverShownAnIdentifierAndNothingElse) {
    const auto cache = Cache::sharedCache();
    const auto shown = make<NSWindow>();
    const auto other = make<NSWindow>();
    zr_showWindow(shown.get(), nullptr);
    other->close();
    for (const id& odd : {id(), id(NSNull::null()), id("window"_ns), id(other)}) {
        cache->windowWillClose(NSNotification::notificationWithName_object(NSWindowWillCloseNotification(), odd));
    }
    cache->windowWillClose(nullptr);
    EXPECT_EQ(kept()->count(), 1U);
    EXPECT_EQ(objectIdentifier(other)->length(), 36U);
    NSNotificationCenter::defaultCenter()->postNotificationName_object(NSWindowWillCloseNotification(), shown);
    EXPECT_EQ(kept()->count(), 0U) << "the announcement counts, not the window's state";
    EXPECT_TRUE(shown->isVisible());
}

TEST_F(ShownWindows, canBeShownAgain) {
    const auto window = make<NSWindow>();
    for (int i = 0; i < 3; ++i) {
        zr_showWindow(window.get(), nullptr);
        EXPECT_EQ(kept()->count(), 1U);
        window->close();
        EXPECT_EQ(kept()->count(), 0U);
        EXPECT_EQ(window->windowController(), nullptr) << "it is gone with the close";
    }
}

TEST_F(ShownWindows, areStillTheirControllersWhileOthersHearOfTheirClose) {
    const auto window = make<NSWindow>();
    zr_showWindow(window.get(), nullptr);
    const auto center = NSNotificationCenter::defaultCenter();
    bool isStillThere = false;
    // A controller that others hold outlives the cache's share.
    const Ref<NSWindowController> held = window->windowController();
    const id observer = center->addObserverForName_object_usingBlock(
        NSWindowWillCloseNotification(), window,
        [&](NSNotification*) { isStillThere = window->windowController() == held; });
    window->close();
    EXPECT_TRUE(isStillThere);
    EXPECT_EQ(window->windowController(), held);
    center->removeObserver(observer);
}

} // namespace
} // namespace zr
