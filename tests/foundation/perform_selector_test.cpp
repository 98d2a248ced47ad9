#include <zrbasic/platform/foundation/perform_selector.h>

#include "checks.h"
#include "loop_testing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/thread.h>

#include <gtest/gtest.h>

#include <limits>
#include <thread>

namespace {

using namespace zr;
using test::raised;
using test::raisedName;

class Performer : public NSObject {
    ZR_OBJECT(Performer, NSObject)

  public:
    Ref<NSString> greet() { return "hello"_ns; }
    ZR_METHOD(greet, "greet")
    Ref<NSString> echo(NSString* text) { return text; }
    ZR_METHOD(echo, "echo:")
    Ref<NSString> join(NSString* first, NSString* second) {
        return NSString::stringWithFormat("%@-%@"_ns, first, second);
    }
    ZR_METHOD(join, "join:with:")
    int number() { return 7; }
    ZR_METHOD(number, "number")
    void three(NSObject*, NSObject*, NSObject*) {}
    ZR_METHOD(three, "one:two:three:")

    void write(NSString* text) { *log += text ? text->utf8() : "-"; }
    ZR_METHOD(write, "write:")
    void writeMode() { *log += NSRunLoop::mainRunLoop()->currentMode()->utf8(); }
    ZR_METHOD(writeMode, "writeMode")
    void raise() { NSException::raise(NSGenericException, "on purpose"); }
    ZR_METHOD(raise, "raise")

    std::string* log = nullptr;
};

class PerformSelector : public test::LoopTest {
  protected:
    void SetUp() override {
        LoopTest::SetUp();
        performer->log = &log;
    }
    void later(NSString* text, NSArray* modes) {
        performSelectorOnMainThread_withObject_waitUntilDone_modes(performer, "write:"_sel, text, false, modes);
    }
    void later(NSString* text) {
        performSelectorOnMainThread_withObject_waitUntilDone(performer, "write:"_sel, text, false);
    }

    Ref<Performer> performer = make<Performer>();
};

TEST_F(PerformSelector, sendsAsManyArgumentsAsTheNameTakes) {
    const auto text = [](const id& result) { return result ? result->description()->utf8() : "null"; };
    EXPECT_EQ(text(performSelector_withObject(performer, "greet"_sel, "x"_ns)), "hello");
    EXPECT_EQ(text(performSelector_withObject(performer, "echo:"_sel, "x"_ns)), "x");
    EXPECT_EQ(text(performSelector_withObject(performer, "echo:"_sel, nullptr)), "null");
    EXPECT_EQ(text(performSelector_withObject(performer, "echo:"_sel, box(1))), "null") << "no string";
    EXPECT_EQ(text(performSelector_withObject_withObject(performer, "echo:"_sel, "x"_ns, "y"_ns)), "x");
    EXPECT_EQ(text(performSelector_withObject_withObject(performer, "join:with:"_sel, "x"_ns, "y"_ns)), "x-y");
    EXPECT_EQ(text(performSelector_withObject(performer, "number"_sel, nullptr)), "null") << "no object";
}

TEST_F(PerformSelector, raisesWhatCannotBeSent) {
    EXPECT_EQ(raisedName([&] { performSelector_withObject(performer, "noSuchOperation"_sel, nullptr); }),
              NSInvalidArgumentException);
    EXPECT_EQ(
        raisedName([&] { performSelector_withObject_withObject(performer, "one:two:three:"_sel, nullptr, nullptr); }),
        NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { performSelector_withObject(performer, SEL(), nullptr); }), NSInvalidArgumentException);
    EXPECT_EQ(
        raisedName([&] { performSelectorOnMainThread_withObject_waitUntilDone(performer, SEL(), nullptr, false); }),
        NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { performSelector_withObject_afterDelay(performer, SEL(), nullptr, 0); }),
              NSInvalidArgumentException);
    EXPECT_FALSE(timeUntilMainQueueWork());
}

TEST_F(PerformSelector, doesNothingForANullReceiver) {
    EXPECT_FALSE(performSelector_withObject(nullptr, "echo:"_sel, "x"_ns));
    EXPECT_FALSE(performSelector_withObject_withObject(nullptr, "join:with:"_sel, nullptr, nullptr));
    performSelectorOnMainThread_withObject_waitUntilDone(nullptr, "write:"_sel, nullptr, false);
    performSelectorOnMainThread_withObject_waitUntilDone(nullptr, "write:"_sel, nullptr, true);
    performSelector_withObject_afterDelay(nullptr, "write:"_sel, nullptr, 0);
    EXPECT_FALSE(performSelector_withObject(nullptr, SEL(), nullptr));
    performSelectorOnMainThread_withObject_waitUntilDone(nullptr, SEL(), nullptr, true);
    performSelector_withObject_afterDelay(nullptr, SEL(), nullptr, 0);
    EXPECT_FALSE(timeUntilMainQueueWork());
}

TEST_F(PerformSelector, sendsToTheNullObject) {
    EXPECT_FALSE(performSelector_withObject(NSNull::null(), "isEqual:"_sel, nullptr));
    performSelectorOnMainThread_withObject_waitUntilDone(NSNull::null(), "isEqual:"_sel, NSNull::null(), false);
    EXPECT_EQ(raised([] { runReady(); }), "");
    later(nullptr);
    runReady();
    EXPECT_EQ(written(), "-");
}

TEST_F(PerformSelector, sendsLaterEvenOnTheMainThread) {
    later("a"_ns);
    dispatch_async(dispatch_get_main_queue(), [this] { log += 'b'; });
    later("c"_ns);
    EXPECT_EQ(written(), "");
    runReady();
    EXPECT_EQ(written(), "abc");
}

TEST_F(PerformSelector, sendsAtOnceOnTheMainThreadWhenItWaits) {
    later("a"_ns);
    performSelectorOnMainThread_withObject_waitUntilDone(performer, "write:"_sel, "b"_ns, true);
    EXPECT_EQ(written(), "b") << "before what is queued";
    performSelectorOnMainThread_withObject_waitUntilDone_modes(performer, "write:"_sel, "c"_ns, true,
                                                               array({NSModalPanelRunLoopMode()}));
    EXPECT_EQ(written(), "c") << "whatever the mode";
    EXPECT_EQ(
        raised([this] { performSelectorOnMainThread_withObject_waitUntilDone(performer, "raise"_sel, nullptr, true); }),
        "NSGenericException: on purpose");
    runReady();
    EXPECT_EQ(written(), "a");
}

TEST_F(PerformSelector, waitsForItsModes) {
    later("d"_ns, array({NSDefaultRunLoopMode()}));
    later("m"_ns, array({NSModalPanelRunLoopMode()}));
    later("t"_ns, array({NSEventTrackingRunLoopMode(), "own"_ns}));
    later("c"_ns, array({NSRunLoopCommonModes()}));
    later("x"_ns);
    {
        const RunLoopModeScope modal(NSModalPanelRunLoopMode());
        runReady();
        EXPECT_EQ(written(), "mcx") << "the common modes include the modal one, and are what is meant without modes";
    }
    runReady();
    EXPECT_EQ(written(), "d");
    const RunLoopModeScope own("own"_ns);
    later("y"_ns);
    runReady();
    EXPECT_EQ(written(), "t") << "a mode of one's own is not a common one";
}

TEST_F(PerformSelector, isNeverSentWithoutAMode) {
    for (const bool wait : {false, true}) {
        for (const Ref<NSArray>& modes : {Ref<NSArray>(), NSArray::array(), array({NSNull::null(), box(1)})}) {
            performSelectorOnMainThread_withObject_waitUntilDone_modes(performer, "write:"_sel, "a"_ns, wait, modes);
            performSelector_withObject_afterDelay_inModes(performer, "write:"_sel, "a"_ns, 0, modes);
        }
    }
    // A caller that waited for this would wait for ever.
    std::thread([this] {
        performSelectorOnMainThread_withObject_waitUntilDone_modes(performer, "write:"_sel, "a"_ns, true, nullptr);
    }).join();
    EXPECT_FALSE(timeUntilMainQueueWork());
    EXPECT_EQ(written(), "");
}

TEST_F(PerformSelector, startsAModalLoopFromItsTurn) {
    // What a window does that is to be run modally as soon as the main thread has time.
    later("a"_ns);
    dispatch_async(dispatch_get_main_queue(), [this] {
        log += '(';
        const RunLoopModeScope modal(NSModalPanelRunLoopMode());
        later("b"_ns);
        runReady();
        performSelectorOnMainThread_withObject_waitUntilDone(performer, "writeMode"_sel, nullptr, true);
        log += ')';
    });
    later("c"_ns);
    runReady();
    EXPECT_EQ(written(), "a(cbNSModalPanelRunLoopMode)");
}

TEST_F(PerformSelector, keepsReceiverAndArgumentUntilItIsSent) {
    const Weak<NSObject> receiver(performer);
    Ref<NSString> text = NSString::fromUtf8("argument");
    const Weak<NSString> argument(text);
    later(text);
    text = nullptr;
    performer = nullptr;
    EXPECT_FALSE(receiver.expired());
    EXPECT_FALSE(argument.expired());
    runReady();
    EXPECT_EQ(written(), "argument");
    EXPECT_TRUE(receiver.expired());
    EXPECT_TRUE(argument.expired());
}

TEST_F(PerformSelector, raisesToWhoRunsTheLoop) {
    performSelectorOnMainThread_withObject_waitUntilDone(performer, "raise"_sel, nullptr, false);
    later("a"_ns);
    performSelectorOnMainThread_withObject_waitUntilDone(performer, "noSuchOperation"_sel, nullptr, false);
    EXPECT_EQ(raised([] { drainMainQueue(); }), "NSGenericException: on purpose");
    EXPECT_EQ(raisedName([] { drainMainQueue(); }), NSInvalidArgumentException);
    EXPECT_EQ(written(), "a");
}

TEST_F(PerformSelector, sendsAfterADelay) {
    const auto after = [this](NSString* text, double delay) {
        performSelector_withObject_afterDelay(performer, "write:"_sel, text, delay);
    };
    after("c"_ns, 0.02);
    after("b"_ns, 0);
    after("a"_ns, -5);
    after("-"_ns, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(written(), "") << "never before it returns";
    const auto start = NSDate::date();
    EXPECT_TRUE(runUntil([this] { return log.size() == 4; }));
    EXPECT_EQ(log.back(), 'c');
    EXPECT_LE(start->timeIntervalSinceNow(), -0.019);
    EXPECT_EQ(written().substr(0, 3), "ba-");
    after("never"_ns, 1e10);
    runReady();
    EXPECT_FALSE(timeUntilMainQueueWork());
}

TEST_F(PerformSelector, sendsAfterADelayInItsModes) {
    {
        const RunLoopModeScope modal(NSModalPanelRunLoopMode());
        performSelector_withObject_afterDelay(performer, "write:"_sel, "d"_ns, 0);
        performSelector_withObject_afterDelay_inModes(performer, "write:"_sel, "m"_ns, 0,
                                                      array({NSNull::null(), NSModalPanelRunLoopMode()}));
        EXPECT_TRUE(runUntil([this] { return !log.empty(); }));
        settle();
        EXPECT_EQ(written(), "m");
    }
    EXPECT_TRUE(runUntil([this] { return !log.empty(); }));
    EXPECT_EQ(written(), "d");
    std::thread([this] { performSelector_withObject_afterDelay(performer, "write:"_sel, "x"_ns, 0); }).join();
    EXPECT_FALSE(timeUntilMainQueueWork()) << "other threads have no loop";
}

TEST_F(PerformSelector, answersMessages) {
    const id joined =
        send<id>(performer, "performSelector:withObject:withObject:"_sel, "join:with:"_sel, "a"_ns, "b"_ns);
    EXPECT_TRUE(joined->isEqual("a-b"_ns));
    send<>(performer, "performSelectorOnMainThread:withObject:waitUntilDone:"_sel, "write:"_sel, "a"_ns, true);
    send<>(performer, "performSelectorOnMainThread:withObject:waitUntilDone:modes:"_sel, "write:"_sel, "b"_ns, false,
           array({NSDefaultRunLoopMode()}));
    send<>(performer, "performSelectorOnMainThread:withObject:waitUntilDone:modes:"_sel, "write:"_sel, "x"_ns, false,
           "no list"_ns);
    send<>(performer, "performSelector:withObject:afterDelay:"_sel, "write:"_sel, "c"_ns, 0.001);
    send<>(performer, "performSelector:withObject:afterDelay:inModes:"_sel, "write:"_sel, "d"_ns, 0.002,
           array({NSDefaultRunLoopMode()}));
    EXPECT_TRUE(runUntil([this] { return log.size() == 4; }));
    EXPECT_EQ(written(), "abcd");
}

} // namespace
