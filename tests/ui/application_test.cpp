#include <zrbasic/ui/application.h>

#include "../foundation/checks.h"
#include "../foundation/temporary_defaults.h"

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/run_loop.h>

#include <tests/appkit/window_testing.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::later;

using DarkMode = test::TemporaryDefaults;

TEST_F(DarkMode, isOnForAnyStoredString) {
    const auto application = NSApplication::sharedApplication();
    const auto key = "AppleInterfaceStyle"_ns;
    EXPECT_FALSE(isDarkMode(application));
    const struct {
        const char* name;
        id value;
        bool isDark;
    } rows[] = {
        {"dark", id("Dark"_ns), true}, {"light", id("Light"_ns), true},          {"empty", id(""_ns), true},
        {"number", id(box(1)), false}, {"array", id(array({"Dark"_ns})), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        defaults->setObject_forKey(row.value, key);
        EXPECT_EQ(isDarkMode(application), row.isDark);
        EXPECT_EQ(send<bool>(application, "isDarkMode"_sel), row.isDark);
    }
    defaults->setObject_forKey("Dark"_ns, key);
    EXPECT_FALSE(isDarkMode(nullptr));
    defaults->removeObjectForKey(key);
    EXPECT_FALSE(isDarkMode(application));
}

TEST_F(DarkMode, mayBeSetForAllApplications) {
    const auto application = NSApplication::sharedApplication();
    defaults->setPersistentDomain_forName(dictionary({{"AppleInterfaceStyle"_ns, id("Dark"_ns)}}), NSGlobalDomain());
    EXPECT_TRUE(isDarkMode(application));
    defaults->removePersistentDomainForName(NSGlobalDomain());
    EXPECT_FALSE(isDarkMode(application));
}

TEST(FullScreenMode, isThatOfTheSharedApplication) {
    const auto shared = NSApplication::sharedApplication();
    const auto other = make<NSApplication>();
    other->setPresentationOptions(NSApplicationPresentationFullScreen);
    EXPECT_FALSE(isInFullScreenMode(other)) << "the receiver's own do not count";
    const struct {
        NSUInteger options;
        bool isFull;
    } rows[] = {{1024, true}, {1024 + 1, true}, {~NSUInteger{0}, true}, {~NSUInteger{1024}, false}, {0, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.options);
        shared->setPresentationOptions(row.options);
        EXPECT_EQ(isInFullScreenMode(shared), row.isFull);
        EXPECT_EQ(isInFullScreenMode(other), row.isFull);
        EXPECT_EQ(send<bool>(shared, "isInFullScreenMode"_sel), row.isFull);
        EXPECT_FALSE(isInFullScreenMode(nullptr));
    }
}

class ModalPanel : public NSWindow {
    ZR_OBJECT(ModalPanel, NSWindow)

  public:
    bool isModalPanel() const override { return true; }
};

TEST(ModalWindows, countShownOrNot) {
    const auto application = NSApplication::sharedApplication();
    const auto window = make<NSWindow>();
    EXPECT_FALSE(isContainsModalWindow(application));
    {
        const auto panel = make<ModalPanel>();
        EXPECT_TRUE(isContainsModalWindow(application));
        EXPECT_TRUE(send<bool>(application, "isContainsModalWindow"_sel));
        EXPECT_FALSE(isContainsModalWindow(make<NSApplication>())) << "those of the receiver";
        EXPECT_FALSE(isContainsModalWindow(nullptr));
    }
    EXPECT_FALSE(isContainsModalWindow(application));
}

Ref<NSWindow> named(NSString* identifier) {
    auto window = make<NSWindow>();
    window->setIdentifier(identifier);
    return window;
}

TEST(WindowsByIdentifier, areFoundByAnyPartOfIt) {
    const auto application = NSApplication::sharedApplication();
    const auto plain = make<NSWindow>();
    const auto window = named("xabcx"_ns);
    for (const Ref<NSString>& part : {"abc"_ns, "xabcx"_ns, "x"_ns, "bcx"_ns}) {
        SCOPED_TRACE(part->utf8());
        EXPECT_EQ(windowWithIdentifier(application, part), window);
        EXPECT_TRUE(containsWindowWithIdentifier(application, part));
    }
    for (const Ref<NSString>& other : {"ABC"_ns, "xabcxx"_ns, "ac"_ns, "a.c"_ns, "a*c"_ns, ""_ns}) {
        SCOPED_TRACE(other->utf8());
        EXPECT_EQ(windowWithIdentifier(application, other), nullptr);
        EXPECT_FALSE(containsWindowWithIdentifier(application, other));
    }
    window->setIdentifier(nullptr);
    EXPECT_EQ(windowWithIdentifier(application, "abc"_ns), nullptr);
}

TEST(WindowsByIdentifier, areTheEarlierOfTwo) {
    const auto application = NSApplication::sharedApplication();
    auto first = named("quoteDetail"_ns);
    const auto second = named("quote"_ns);
    second->orderFront(nullptr);
    EXPECT_EQ(windowWithIdentifier(application, "quote"_ns), first) << "not the equal one, nor the one in front";
    EXPECT_EQ(send<id>(application, "windowWithIdentifier:"_sel, "quote"_ns), first);
    first = nullptr;
    EXPECT_EQ(windowWithIdentifier(application, "quote"_ns), second);
    second->orderOut(nullptr);
}

TEST(WindowsByIdentifier, needAReceiverAndText) {
    const auto application = NSApplication::sharedApplication();
    const auto window = named("abc"_ns);
    EXPECT_EQ(windowWithIdentifier(nullptr, "abc"_ns), nullptr);
    EXPECT_FALSE(containsWindowWithIdentifier(nullptr, "abc"_ns));
    EXPECT_EQ(windowWithIdentifier(application, nullptr), nullptr);
    EXPECT_FALSE(containsWindowWithIdentifier(application, nullptr));
    EXPECT_EQ(send<id>(application, "windowWithIdentifier:"_sel, NSNull::null()), nullptr);
    EXPECT_FALSE(send<bool>(application, "containsWindowWithIdentifier:"_sel, box(1)));
    EXPECT_EQ(windowWithIdentifier(make<NSApplication>(), "abc"_ns), nullptr) << "those of the receiver";
    EXPECT_EQ(windowWithIdentifier(application, NSString::fromUtf16(std::u16string(100000, u'a'))), nullptr);
}

TEST(DeferredModalRun, beginsOnALaterPass) {
    const auto application = NSApplication::sharedApplication();
    auto window = make<NSWindow>();
    const Weak<NSWindow> watch(window);
    saftyRunModalForWindow(application, window);
    EXPECT_EQ(application->modalWindow(), nullptr) << "nothing has begun";
    EXPECT_FALSE(window->isVisible());
    window = nullptr;
    EXPECT_TRUE(watch.lock()) << "kept until then";
    bool wasRun = false;
    later([&] {
        wasRun = true;
        EXPECT_EQ(application->modalWindow(), watch.lock());
        application->modalWindow()->orderOut(nullptr);
        application->stopModal();
    });
    drainMainQueue();
    EXPECT_TRUE(wasRun);
    EXPECT_EQ(application->modalWindow(), nullptr);
    EXPECT_FALSE(watch.lock());
}

TEST(DeferredModalRun, mayBeAskedForInsideAnotherSession) {
    const auto application = NSApplication::sharedApplication();
    const auto outer = make<NSWindow>();
    const auto inner = make<NSWindow>();
    std::string log;
    later([&] {
        send<void>(application, "saftyRunModalForWindow:"_sel, inner);
        log += application->modalWindow() == outer ? "asked in outer, " : "asked elsewhere, ";
        later([&] {
            log += application->modalWindow() == inner ? "stops inner, " : "stops another, ";
            application->stopModal();
            later([&] {
                log += application->modalWindow() == outer ? "stops outer" : "stops another";
                application->stopModalWithCode(5);
            });
        });
    });
    EXPECT_EQ(application->runModalForWindow(outer), 5);
    EXPECT_EQ(log, "asked in outer, stops inner, stops outer");
    outer->orderOut(nullptr);
    inner->orderOut(nullptr);
}

TEST(DeferredModalRun, waitsForOneOfTheCommonModes) {
    const auto application = NSApplication::sharedApplication();
    const auto window = make<NSWindow>();
    saftyRunModalForWindow(application, window);
    {
        const RunLoopModeScope elsewhere("a mode of one's own"_ns);
        while (drainMainQueue() != 0) {
        }
        EXPECT_FALSE(window->isVisible());
    }
    later([&] { application->stopModal(); });
    while (drainMainQueue() != 0) {
    }
    EXPECT_TRUE(window->isVisible());
    window->orderOut(nullptr);
}

TEST(DeferredModalRun, ofNothingSchedulesNothing) {
    const auto application = NSApplication::sharedApplication();
    while (drainMainQueue() != 0) {
    }
    saftyRunModalForWindow(application, nullptr);
    saftyRunModalForWindow(nullptr, make<NSWindow>());
    send<void>(application, "saftyRunModalForWindow:"_sel, NSNull::null());
    EXPECT_FALSE(timeUntilMainQueueWork()) << "the queue has nothing to run";
    _saftyRunModalForWindow(application, nullptr);
    _saftyRunModalForWindow(nullptr, make<NSWindow>());
    send<void>(application, "_saftyRunModalForWindow:"_sel, "no window"_ns);
    EXPECT_EQ(application->modalWindow(), nullptr);
}

TEST(ModalRunAtOnce, returnsWhenTheSessionIsOver) {
    const auto application = NSApplication::sharedApplication();
    const auto window = make<NSWindow>();
    bool wasRun = false;
    later([&] {
        wasRun = application->modalWindow() == window;
        application->stopModal();
    });
    _saftyRunModalForWindow(application, window);
    EXPECT_TRUE(wasRun);
    later([] { NSException::raise(NSGenericException, "in the middle of it"); });
    EXPECT_EQ(test::raisedName([&] { send<void>(application, "_saftyRunModalForWindow:"_sel, window); }),
              NSGenericException);
    EXPECT_EQ(application->modalWindow(), nullptr);
    window->orderOut(nullptr);
}

} // namespace
} // namespace zr
