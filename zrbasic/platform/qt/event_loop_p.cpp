#include <zrbasic/platform/qt/event_loop_p.h>

#include <zrbasic/platform/foundation/dispatch_queue.h>

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace zr::qt {
namespace {

struct Loop {
    FunctionRef<bool()> isDone;
    Loop* outer = nullptr;
    /// How many loops of Qt's own run around it.
    int level = QThread::currentThread()->loopLevel();
    /// What an event has raised.
    std::exception_ptr raised;
};

/// Null outside of all of them.
Loop* innermostLoop = nullptr;
/// Null without one.
MainQueueDrainer* drainerInUse = nullptr;

QEvent::Type wakeUpType() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

void wakeUpForQueue() {
    if (drainerInUse && timeUntilMainQueueWork()) {
        QCoreApplication::postEvent(drainerInUse, new QEvent(wakeUpType()));
    }
}

void report(const std::exception_ptr& raised) {
    try {
        std::rethrow_exception(raised);
    } catch (const std::exception& exception) {
        qCritical("An event has raised: %s", exception.what());
    } catch (...) {
        qCritical("An event has raised something unknown");
    }
}

} // namespace

void handleEventsUntil(FunctionRef<bool()> isDone) {
    Loop loop;
    loop.isDone = isDone;
    loop.outer = innermostLoop;
    innermostLoop = &loop;
    // However this ends, the loop around it takes over again, with what was left of the main queue.
    const struct Nesting {
        ~Nesting() {
            innermostLoop = innermostLoop->outer;
            wakeUpForQueue();
        }
    } nesting;
    // A callback of the main queue may be what runs this loop: nobody else sees to the ones behind it then.
    wakeUpForQueue();
    QEventLoop events;
    while (!isDone()) {
        events.processEvents(QEventLoop::WaitForMoreEvents);
        if (loop.raised) {
            std::rethrow_exception(loop.raised);
        }
    }
}

void duringEvent(FunctionRef<void()> work) {
    try {
        work();
    } catch (...) {
        if (innermostLoop && !innermostLoop->raised) {
            innermostLoop->raised = std::current_exception();
        } else {
            // One at a time can be raised again.
            report(std::current_exception());
        }
    }
}

MainQueueDrainer::MainQueueDrainer() {
    drainerInUse = this;
    setMainQueueWakeUpHandler([this] { QCoreApplication::postEvent(this, new QEvent(wakeUpType())); });
}

MainQueueDrainer::~MainQueueDrainer() {
    setMainQueueWakeUpHandler({});
    drainerInUse = nullptr;
}

bool MainQueueDrainer::event(QEvent* event) {
    if (event->type() == wakeUpType() || event->type() == QEvent::Timer) {
        drain();
        return true;
    }
    return QObject::event(event);
}

void MainQueueDrainer::drain() {
    if (m_timer != 0) {
        killTimer(std::exchange(m_timer, 0));
    }
    duringEvent([] {
        // A callback may end the loop; the ones behind it then belong to the loop around it. But where a loop of Qt's own
        // runs inside one that has ended already, the queue must not stand still meanwhile.
        if (!innermostLoop || QThread::currentThread()->loopLevel() > innermostLoop->level) {
            drainMainQueue();
        } else if (!innermostLoop->raised) {
            runMainQueueUntil(DISPATCH_TIME_NOW, innermostLoop->isDone);
        }
    });
    const auto left = timeUntilMainQueueWork();
    if (left && *left > std::chrono::nanoseconds::zero()) {
        // A time of day may be set nearer while the timer runs, so never too long.
        const auto wait = std::min<std::chrono::nanoseconds>(*left, std::chrono::minutes(1));
        if (m_timer != 0) {
            killTimer(m_timer);
        }
        m_timer = startTimer(std::chrono::ceil<std::chrono::milliseconds>(wait), Qt::PreciseTimer);
    }
}

} // namespace zr::qt
