#include <zrbasic/platform/qt/event_loop_p.h>

#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/runtime/exception.h>

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <gtest/gtest.h>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

namespace zr {
namespace {

using qt::duringEvent;
using qt::handleEventsUntil;

/// Runs something of the test's as Qt's event.
class Runner : public QObject {
  public:
    explicit Runner(std::function<void()> work) : m_work(std::move(work)) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

    bool event(QEvent* event) override {
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        duringEvent([this] { m_work(); });
        return true;
    }

  private:
    std::function<void()> m_work;
};

/// Ends a test that would hang.
class Watchdog {
  public:
    Watchdog() {
        m_timer.setSingleShot(true);
        m_timer.callOnTimeout([] { qFatal("the loop does not end"); });
        m_timer.start(20000);
    }

  private:
    QTimer m_timer;
};

TEST(QtEventLoop, asksAtFirst) {
    int asked = 0;
    handleEventsUntil([&] { return ++asked == 1; });
    EXPECT_EQ(asked, 1);
}

TEST(QtEventLoop, asksAfterWhatWasHandled) {
    const Watchdog watchdog;
    bool isDone = false;
    QTimer::singleShot(0, [&] { isDone = true; });
    handleEventsUntil([&] { return isDone; });
    EXPECT_TRUE(isDone);
    isDone = false;
    const Runner runner([&] { isDone = true; });
    currentToolkit().runLoopUntil([&] { return isDone; });
    EXPECT_TRUE(isDone);
}

TEST(QtEventLoop, nestsAndEndsFromTheInside) {
    const Watchdog watchdog;
    std::string log;
    bool isOuterDone = false;
    bool isInnerDone = false;
    QTimer::singleShot(0, [&] {
        log += "outer[";
        QTimer::singleShot(0, [&] {
            log += "stop outer,";
            isOuterDone = true;
            QTimer::singleShot(0, [&] {
                log += "stop inner";
                isInnerDone = true;
            });
        });
        handleEventsUntil([&] { return isInnerDone; });
        log += "]";
    });
    handleEventsUntil([&] { return isOuterDone; });
    EXPECT_EQ(log, "outer[stop outer,stop inner]") << "the outer one waits for the inner one";
}

TEST(QtEventLoop, runsTheMainQueue) {
    const Watchdog watchdog;
    std::string log;
    dispatch_async(dispatch_get_main_queue(), [&] {
        log += "a";
        dispatch_async(dispatch_get_main_queue(), [&] { log += "b"; });
    });
    handleEventsUntil([&] { return log.size() == 2; });
    EXPECT_EQ(log, "ab");
    const auto before = std::chrono::steady_clock::now();
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, 60 * 1000 * 1000), dispatch_get_main_queue(), [&] { log += "d"; });
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, 20 * 1000 * 1000), dispatch_get_main_queue(), [&] { log += "c"; });
    handleEventsUntil([&] { return log.size() == 4; });
    EXPECT_EQ(log, "abcd");
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(60));
}

TEST(QtEventLoop, otherThreadsWakeItUp) {
    const Watchdog watchdog;
    std::thread::id runner;
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        dispatch_async(dispatch_get_main_queue(), [&] { runner = std::this_thread::get_id(); });
    });
    handleEventsUntil([&] { return runner != std::thread::id(); });
    other.join();
    EXPECT_EQ(runner, std::this_thread::get_id());
}

TEST(QtEventLoop, aCallbackThatEndsTheLoopLeavesTheRestToTheNext) {
    const Watchdog watchdog;
    std::string log;
    dispatch_async(dispatch_get_main_queue(), [&] { log += "a"; });
    dispatch_async(dispatch_get_main_queue(), [&] { log += "b"; });
    handleEventsUntil([&] { return !log.empty(); });
    EXPECT_EQ(log, "a");
    handleEventsUntil([&] { return log.size() > 1; });
    EXPECT_EQ(log, "ab");
}

TEST(QtEventLoop, aLoopInsideOfACallbackRunsTheOnesBehindIt) {
    const Watchdog watchdog;
    std::string log;
    dispatch_async(dispatch_get_main_queue(), [&] {
        log += "[";
        handleEventsUntil([&] { return log.size() > 1; });
        log += "]";
    });
    dispatch_async(dispatch_get_main_queue(), [&] { log += "b"; });
    handleEventsUntil([&] { return log.size() > 2; });
    EXPECT_EQ(log, "[b]");
}

TEST(QtEventLoop, theMainQueueRunsInQtsOwnLoops) {
    const Watchdog watchdog;
    std::string log;
    QEventLoop loop;
    dispatch_async(dispatch_get_main_queue(), [&] { log += "a"; });
    dispatch_after(dispatch_time(DISPATCH_TIME_NOW, 1000 * 1000), dispatch_get_main_queue(), [&] {
        log += "b";
        loop.quit();
    });
    loop.exec();
    EXPECT_EQ(log, "ab");
    // Even inside a loop of ours that has ended already.
    QTimer::singleShot(0, [&] {
        QEventLoop inner;
        log += "c";
        dispatch_async(dispatch_get_main_queue(), [&] {
            log += "d";
            inner.quit();
        });
        inner.exec();
    });
    handleEventsUntil([&] { return log.size() > 2; });
    EXPECT_EQ(log, "abcd");
}

TEST(QtEventLoop, whatAnEventRaisesReachesTheCaller) {
    const Watchdog watchdog;
    const Runner runner([] { NSException::raise(NSRangeException, "too far"); });
    try {
        handleEventsUntil([] { return false; });
        ADD_FAILURE() << "nothing was raised";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSRangeException);
        EXPECT_EQ(exception.reason(), "too far");
    }
    bool isDone = false;
    QTimer::singleShot(0, [&] { isDone = true; });
    handleEventsUntil([&] { return isDone; });
    EXPECT_TRUE(isDone) << "the next loop knows nothing of it";
}

TEST(QtEventLoop, whatACallbackRaisesReachesTheCallerAndTheRestStays) {
    const Watchdog watchdog;
    bool hasRun = false;
    dispatch_async(dispatch_get_main_queue(), [] { throw std::bad_alloc(); });
    dispatch_async(dispatch_get_main_queue(), [&] { hasRun = true; });
    EXPECT_THROW(handleEventsUntil([&] { return hasRun; }), std::bad_alloc);
    EXPECT_FALSE(hasRun);
    handleEventsUntil([&] { return hasRun; });
    EXPECT_TRUE(hasRun);
}

TEST(QtEventLoop, whatTheQuestionRaisesReachesTheCaller) {
    EXPECT_THROW(handleEventsUntil([]() -> bool { throw NSException(NSGenericException, "no"); }), NSException);
    const Watchdog watchdog;
    int asked = 0;
    QTimer::singleShot(0, [] {});
    EXPECT_THROW(
        handleEventsUntil([&]() -> bool { return ++asked > 1 ? throw NSException(NSGenericException, "no") : false; }),
        NSException);
}

TEST(QtEventLoop, theInnermostLoopIsTheOneThatRaises) {
    const Watchdog watchdog;
    std::string log;
    const Runner outer([&] {
        const Runner inner([] { NSException::raise(NSGenericException, "inner"); });
        try {
            handleEventsUntil([] { return false; });
        } catch (const NSException& exception) {
            log += exception.reason();
        }
        NSException::raise(NSGenericException, "outer");
    });
    try {
        handleEventsUntil([] { return false; });
    } catch (const NSException& exception) {
        log += " " + exception.reason();
    }
    EXPECT_EQ(log, "inner outer");
}

TEST(QtEventLoop, withoutALoopOfOursWhatIsRaisedIsReportedAndDropped) {
    static std::string messages;
    messages.clear();
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { messages += message.toStdString(); });
    duringEvent([] { NSException::raise(NSRangeException, "too far"); });
    duringEvent([] { throw 5; });
    qInstallMessageHandler(before);
    EXPECT_NE(messages.find("NSRangeException: too far"), std::string::npos);
    EXPECT_NE(messages.find("unknown"), std::string::npos);
}

TEST(QtEventLoop, deletesWhatWasToBeDeletedLater) {
    const Watchdog watchdog;
    bool isGone = false;
    QTimer::singleShot(0, [&] {
        auto* const object = new QObject;
        QObject::connect(object, &QObject::destroyed, [&] { isGone = true; });
        object->deleteLater();
    });
    handleEventsUntil([&] { return isGone; });
    EXPECT_TRUE(isGone);
}

} // namespace
} // namespace zr
