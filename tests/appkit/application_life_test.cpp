#include <zrbasic/platform/appkit/application.h>

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <tests/appkit/window_testing.h>
#include <tests/foundation/checks.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

namespace zr {
namespace {

using test::later;

/// Answers, and writes down that it was asked.
class LifeDelegate : public NSObject {
    ZR_OBJECT(LifeDelegate, NSObject)
    ZR_METHOD(applicationShouldTerminate, "applicationShouldTerminate:")
    ZR_METHOD(applicationWillTerminate, "applicationWillTerminate:")

    NSUInteger applicationShouldTerminate(NSObject* sender) {
        log += sender == NSApplication::sharedApplication() ? "asked " : "asked for another ";
        if (whileAsked) {
            whileAsked();
        }
        return reply;
    }
    void applicationWillTerminate(NSNotification* notification) {
        const bool isRight = notification->name()->isEqual(NSApplicationWillTerminateNotification()) &&
                             notification->object() == NSApplication::sharedApplication();
        log += isRight ? "told " : "told something else ";
        if (whileTold) {
            whileTold();
        }
    }

    NSUInteger reply = NSTerminateNow;
    std::string log;
    std::function<void()> whileAsked;
    std::function<void()> whileTold;
};

class ApplicationEnd : public testing::Test {
  protected:
    ApplicationEnd() {
        application->setDelegate(delegate);
        m_listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
            NSApplicationWillTerminateNotification(), application,
            [this](NSNotification*) { delegate->log += application->isTerminated() ? "posted late " : "posted "; });
    }
    ~ApplicationEnd() override {
        NSNotificationCenter::defaultCenter()->removeObserver(m_listening);
        application->setDelegate(nullptr);
        if (application->isTerminated()) {
            application->run();
        }
    }

    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<LifeDelegate> delegate = make<LifeDelegate>();

  private:
    id m_listening;
};

TEST_F(ApplicationEnd, asksThenTellsThenPostsThenEndsTheRun) {
    bool wasAfter = false;
    later([&] {
        EXPECT_FALSE(application->isTerminated());
        application->terminate(nullptr);
        EXPECT_TRUE(application->isTerminated());
        EXPECT_EQ(delegate->log, "asked told posted ");
    });
    later([&] { wasAfter = true; });
    application->run();
    EXPECT_FALSE(wasAfter) << "what comes later is left alone";
    EXPECT_FALSE(application->isTerminated()) << "the run has ended for it";
    drainMainQueue();
    EXPECT_TRUE(wasAfter);
}

TEST_F(ApplicationEnd, outsideOfARunEndsALaterOneAtOnce) {
    send<void>(application, "terminate:"_sel, NSNull::null());
    EXPECT_TRUE(application->isTerminated());
    application->terminate(nullptr);
    EXPECT_EQ(delegate->log, "asked told posted ") << "once is enough";
    bool wasRun = false;
    later([&] { wasRun = true; });
    send<void>(application, "run"_sel);
    EXPECT_FALSE(wasRun);
    later([&] { application->terminate(nullptr); });
    application->run();
    EXPECT_TRUE(wasRun) << "and the next one runs again";
    EXPECT_EQ(delegate->log, "asked told posted asked told posted ");
}

TEST_F(ApplicationEnd, canBeRefused) {
    delegate->reply = NSTerminateCancel;
    application->terminate(nullptr);
    EXPECT_FALSE(application->isTerminated());
    application->terminate(nullptr);
    EXPECT_EQ(delegate->log, "asked asked ");
    delegate->reply = NSTerminateNow;
    application->terminate(nullptr);
    EXPECT_TRUE(application->isTerminated());
}

TEST_F(ApplicationEnd, canBePutOff) {
    delegate->reply = NSTerminateLater;
    application->terminate(nullptr);
    application->terminate(nullptr);
    EXPECT_EQ(delegate->log, "asked ") << "it is not asked again meanwhile";
    EXPECT_FALSE(application->isTerminated());
    application->replyToApplicationShouldTerminate(false);
    EXPECT_FALSE(application->isTerminated());
    application->replyToApplicationShouldTerminate(true);
    EXPECT_FALSE(application->isTerminated()) << "nothing is asked any more";
    application->terminate(nullptr);
    application->replyToApplicationShouldTerminate(true);
    EXPECT_TRUE(application->isTerminated());
    EXPECT_EQ(delegate->log, "asked asked told posted ");
}

TEST_F(ApplicationEnd, canBePutOffAndAnsweredBeforehand) {
    delegate->reply = NSTerminateLater;
    delegate->whileAsked = [&] { application->replyToApplicationShouldTerminate(false); };
    application->terminate(nullptr);
    EXPECT_FALSE(application->isTerminated());
    delegate->whileAsked = [&] { application->replyToApplicationShouldTerminate(true); };
    application->terminate(nullptr);
    EXPECT_TRUE(application->isTerminated());
}

TEST_F(ApplicationEnd, isNotBegunTwice) {
    delegate->whileAsked = [&] { application->terminate(nullptr); };
    delegate->whileTold = [&] { application->terminate(nullptr); };
    application->terminate(nullptr);
    EXPECT_EQ(delegate->log, "asked told posted ");
}

TEST_F(ApplicationEnd, doesNotComeWhenTheQuestionRaises) {
    delegate->whileAsked = [] { NSException::raise(NSGenericException, "who asks?"); };
    EXPECT_EQ(test::raisedName([&] { application->terminate(nullptr); }), NSGenericException);
    EXPECT_FALSE(application->isTerminated());
    delegate->whileAsked = nullptr;
    delegate->whileTold = [] { NSException::raise(NSGenericException, "too late"); };
    EXPECT_EQ(test::raisedName([&] { application->terminate(nullptr); }), NSGenericException);
    EXPECT_TRUE(application->isTerminated()) << "who was told could not prevent it";
}

TEST_F(ApplicationEnd, needsNoDelegateAndNoAnswers) {
    for (const id& other : {id(), id(make<NSObject>()), id(NSNull::null())}) {
        application->setDelegate(other);
        EXPECT_EQ(application->delegate(), other);
        application->terminate(nullptr);
        EXPECT_TRUE(application->isTerminated());
        application->run();
    }
    {
        const auto brief = make<LifeDelegate>();
        application->setDelegate(brief);
    }
    EXPECT_EQ(application->delegate(), nullptr) << "it is not kept";
}

TEST_F(ApplicationEnd, endsModalSessionsToo) {
    const auto outer = make<NSWindow>();
    const auto inner = make<NSWindow>();
    std::string log;
    later([&] {
        later([&] { application->terminate(nullptr); });
        log += std::to_string(application->runModalForWindow(inner)) + ' ';
    });
    later([&] {});
    log += std::to_string(application->runModalForWindow(outer));
    EXPECT_EQ(log, "-1001 -1001");
    EXPECT_EQ(application->modalWindow(), nullptr);
    const auto late = make<NSWindow>();
    EXPECT_EQ(application->runModalForWindow(late), NSModalResponseAbort);
    EXPECT_FALSE(late->isVisible());
    outer->orderOut(nullptr);
    inner->orderOut(nullptr);
    drainMainQueue();
}

TEST_F(ApplicationEnd, endsRunsInsideOneAnother) {
    int runs = 0;
    later([&] {
        later([&] { application->terminate(nullptr); });
        application->run();
        EXPECT_TRUE(application->isTerminated()) << "the outer run has not ended yet";
        ++runs;
    });
    application->run();
    ++runs;
    EXPECT_EQ(runs, 2);
    EXPECT_FALSE(application->isTerminated());
}

TEST_F(ApplicationEnd, exceptionsEndTheRun) {
    later([] { NSException::raise(NSGenericException, "in an event"); });
    EXPECT_EQ(test::raisedName([&] { application->run(); }), NSGenericException);
    EXPECT_FALSE(application->isTerminated());
    later([&] { application->terminate(nullptr); });
    application->run();
    EXPECT_FALSE(application->isTerminated()) << "the run that raised no longer counts";
}

Ref<NSWindow> titled(const char* title) {
    auto window = make<NSWindow>();
    window->setTitle(NSString::fromUtf8(title));
    return window;
}

class HiddenApplication : public testing::Test {
  protected:
    HiddenApplication() {
        for (const Ref<NSString>& name :
             {NSApplicationDidHideNotification(), NSApplicationDidUnhideNotification(),
              NSApplicationDidBecomeActiveNotification(), NSApplicationDidResignActiveNotification()}) {
            m_listening.push_back(NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
                name, application, [this](NSNotification* notification) {
                    posted += notification->name()->utf8().substr(std::string("NSApplicationDid").size());
                    posted.resize(posted.size() - std::string("Notification").size());
                    posted += ' ';
                }));
        }
    }
    ~HiddenApplication() override {
        for (const id& listening : m_listening) {
            NSNotificationCenter::defaultCenter()->removeObserver(listening);
        }
        application->setActivationPolicy(NSApplicationActivationPolicyRegular);
        application->unhide(nullptr);
        for (const Ref<NSWindow>& window : {front, back}) {
            window->orderOut(nullptr);
            window->dropPeer();
        }
        application->setActive(false);
    }

    test::RecordingToolkit toolkit;
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<NSWindow> front = titled("front");
    const Ref<NSWindow> back = titled("back");
    std::string posted;

  private:
    std::vector<id> m_listening;
};

TEST_F(HiddenApplication, showsNoWindow) {
    back->makeKeyAndOrderFront(nullptr);
    front->makeKeyAndOrderFront(nullptr);
    application->activateIgnoringOtherApps(true);
    (void)toolkit.taken();
    posted.clear();
    application->hide(nullptr);
    EXPECT_TRUE(application->isHidden());
    EXPECT_EQ(toolkit.taken(), "front out\nback out\n");
    EXPECT_EQ(posted, "ResignActive Hide ");
    EXPECT_FALSE(front->isVisible());
    EXPECT_FALSE(front->isKeyWindow());
    EXPECT_EQ(application->orderedWindows()->count(), 0U);
    EXPECT_EQ(application->keyWindow(), nullptr);
    send<void>(application, "hide:"_sel, NSNull::null());
    EXPECT_EQ(posted, "ResignActive Hide ") << "it is hidden already";
}

TEST_F(HiddenApplication, comesBackAsItWas) {
    back->makeKeyAndOrderFront(nullptr);
    front->orderFront(nullptr);
    application->hide(nullptr);
    (void)toolkit.taken();
    posted.clear();
    send<void>(application, "unhide:"_sel, nullptr);
    EXPECT_FALSE(application->isHidden());
    EXPECT_EQ(toolkit.taken(), "back above all\nfront above all\nback keyboard\nback keyboard\n")
        << "the key one is the one before";
    EXPECT_EQ(posted, "Unhide BecomeActive ");
    EXPECT_TRUE(back->isKeyWindow());
    EXPECT_TRUE(front->isVisible());
    EXPECT_EQ(application->orderedWindows()->objectAtIndex(0), front);
    application->unhide(nullptr);
    EXPECT_EQ(posted, "Unhide BecomeActive ") << "there is nothing to bring back";
}

TEST_F(HiddenApplication, keepsWhatIsOrderedMeanwhile) {
    back->makeKeyAndOrderFront(nullptr);
    application->hide(nullptr);
    (void)toolkit.taken();
    front->makeKeyAndOrderFront(nullptr);
    back->orderOut(nullptr);
    EXPECT_FALSE(front->isVisible());
    EXPECT_FALSE(front->isKeyWindow());
    EXPECT_EQ(toolkit.taken(), "back out\n") << "nothing shows up";
    application->activateIgnoringOtherApps(false);
    EXPECT_FALSE(application->isHidden()) << "activating unhides";
    EXPECT_TRUE(front->isVisible());
    EXPECT_TRUE(front->isKeyWindow());
    EXPECT_FALSE(back->isVisible());
    EXPECT_TRUE(toolkit.taken().starts_with("front above all\nfront keyboard\n"));
}

TEST_F(HiddenApplication, shownInAModalSessionComesBack) {
    application->hide(nullptr);
    later([&] {
        EXPECT_TRUE(front->isVisible()) << "nobody could answer it otherwise";
        application->stopModal();
    });
    EXPECT_EQ(application->runModalForWindow(front), NSModalResponseStop);
    EXPECT_FALSE(application->isHidden());
}

TEST_F(HiddenApplication, withoutAToolkitIsStateAlone) {
    setCurrentToolkit(nullptr);
    const auto window = make<NSWindow>();
    window->makeKeyAndOrderFront(nullptr);
    application->hide(nullptr);
    EXPECT_FALSE(window->isVisible());
    application->unhide(nullptr);
    EXPECT_TRUE(window->isKeyWindow());
    window->orderOut(nullptr);
}

TEST_F(HiddenApplication, activationIsWhatTheDesktopSays) {
    EXPECT_FALSE(application->isActive());
    back->orderFront(nullptr);
    (void)toolkit.taken();
    send<void>(application, "activateIgnoringOtherApps:"_sel, true);
    EXPECT_TRUE(application->isActive());
    EXPECT_TRUE(back->isKeyWindow()) << "the front window";
    EXPECT_EQ(toolkit.taken(), "back keyboard\n");
    application->setActive(false);
    application->setActive(false);
    EXPECT_FALSE(application->isActive());
    application->activateIgnoringOtherApps(true);
    EXPECT_EQ(toolkit.taken(), "back keyboard\n") << "the key window asks for it";
    EXPECT_EQ(posted, "BecomeActive ResignActive BecomeActive ");
}

TEST_F(HiddenApplication, activationCanBeProhibited) {
    EXPECT_EQ(application->activationPolicy(), NSApplicationActivationPolicyRegular);
    EXPECT_TRUE(application->setActivationPolicy(NSApplicationActivationPolicyProhibited));
    application->activateIgnoringOtherApps(true);
    EXPECT_FALSE(application->isActive());
    EXPECT_TRUE(send<bool>(application, "setActivationPolicy:"_sel, 1));
    EXPECT_EQ(application->activationPolicy(), NSApplicationActivationPolicyAccessory);
    for (const NSInteger policy :
         {NSInteger{-1}, NSInteger{3}, std::numeric_limits<NSInteger>::max(), std::numeric_limits<NSInteger>::min()}) {
        EXPECT_FALSE(send<bool>(application, "setActivationPolicy:"_sel, policy));
    }
    EXPECT_EQ(application->activationPolicy(), NSApplicationActivationPolicyAccessory);
    application->activateIgnoringOtherApps(true);
    EXPECT_TRUE(application->isActive()) << "an accessory may be";
}

} // namespace
} // namespace zr
