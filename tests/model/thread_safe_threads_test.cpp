#include <zrbasic/model/thread_safe.h>

#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/thread.h>
#include <zrbasic/platform/runtime/declare.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

using namespace zr;

class MainThread : public testing::Test {
  protected:
    void SetUp() override {
        while (drainMainQueue() != 0) {
        }
    }
};

TEST_F(MainThread, runsAtOnceWhenThere) {
    bool hasRun = false;
    mainThreadExecute([&] { hasRun = NSThread::isMainThread(); });
    EXPECT_TRUE(hasRun);
    EXPECT_EQ(drainMainQueue(), 0u) << "and only once";
}

TEST_F(MainThread, runsLaterWhenCalledElsewhere) {
    std::string log;
    std::thread([&] {
        mainThreadExecute([&] { log += NSThread::isMainThread() ? "a" : "?"; });
        mainThreadExecute([&] { log += "b"; });
    }).join();
    EXPECT_EQ(log, "") << "nobody has run the queue yet";
    EXPECT_EQ(drainMainQueue(), 2u);
    EXPECT_EQ(log, "ab");
}

TEST_F(MainThread, comesBeforeWhatIsStillQueued) {
    std::string log;
    std::thread([&] { mainThreadExecute([&] { log += "queued "; }); }).join();
    mainThreadExecute([&] { log += "at once "; });
    drainMainQueue();
    EXPECT_EQ(log, "at once queued ");
}

TEST_F(MainThread, keepsTheOrderOfOneBackgroundThread) {
    constexpr int count = 5000;
    int next = 0;
    bool isInOrder = true;
    std::thread other([&] {
        for (int i = 0; i < count; ++i) {
            mainThreadExecute([&, i] { isInOrder = isInOrder && next++ == i; });
        }
    });
    EXPECT_TRUE(runMainQueueUntil(DISPATCH_TIME_FOREVER, [&] { return next == count || !isInOrder; }));
    other.join();
    EXPECT_TRUE(isInOrder);
}

TEST_F(MainThread, runsNestedCallbacksAtOnce) {
    std::string log;
    std::thread([&] {
        mainThreadExecute([&] {
            log += "(";
            mainThreadExecute([&] { log += "inner"; });
            log += ")";
        });
    }).join();
    drainMainQueue();
    EXPECT_EQ(log, "(inner)");
}

TEST_F(MainThread, doesNothingWithoutACallback) {
    mainThreadExecute(nullptr);
    mainThreadExecute({});
    std::thread([] { mainThreadExecute(nullptr); }).join();
    EXPECT_EQ(drainMainQueue(), 0u);
}

TEST_F(MainThread, letsExceptionsThrough) {
    const auto raise = [] { NSException::raise(NSGenericException, "on purpose"); };
    EXPECT_THROW(mainThreadExecute(raise), NSException);
    std::thread([&] { EXPECT_NO_THROW(mainThreadExecute(raise)); }).join();
    EXPECT_THROW(drainMainQueue(), NSException) << "whoever runs the queue gets it";
}

TEST_F(MainThread, answersAsAMessageToAnyClass) {
    int calls = 0;
    const std::function<void()> count = [&] { ++calls; };
    send<>(NSObject::classObject(), "mainThreadExecute:"_sel, count);
    send<>(NSThread::classObject(), "mainThreadExecute:"_sel, count);
    EXPECT_EQ(calls, 2);
    send<>(NSObject::classObject(), "mainThreadExecute:"_sel, std::function<void()>());
    EXPECT_EQ(calls, 2);
    EXPECT_THROW(send<>(NSObject::classObject(), "mainThreadExecute:"_sel, make<NSObject>()), NSException)
        << "an object is no callback";
}

} // namespace
