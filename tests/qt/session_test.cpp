#include <zrbasic/platform/qt/session.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/session_p.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <QApplication>
#include <QEventLoop>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <gtest/gtest.h>
#include <thread>
#include "session_testing.h"

namespace zr {
namespace {

using qt::Session;
using qt::sessionOfTests;

Ref<NSView> viewOfSize(double width, double height) {
    return make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, width, height));
}

Ref<NSWindow> window() {
    return make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSMakeRect(100, 100, 200, 100),
                          NSUInteger{NSWindowStyleMaskTitled});
}

TEST(QtSession, putsTheToolkitInUse) {
    EXPECT_FALSE(currentToolkit().screens().empty());
    EXPECT_GT(currentToolkit().metricsOfFont(nullptr).ascender, 0);
    EXPECT_EQ(NSScreen::screens()->count(), NSUInteger(QGuiApplication::screens().size()));
    const QScreen* const primary = QGuiApplication::primaryScreen();
    EXPECT_EQ(NSScreen::mainScreen()->frame(),
              NSMakeRect(0, 0, primary->geometry().width(), primary->geometry().height()));
    EXPECT_EQ(NSScreen::mainScreen()->backingScaleFactor(), primary->devicePixelRatio());
    EXPECT_EQ(NSMaxY(NSScreen::mainScreen()->visibleFrame()),
              primary->geometry().height() - (primary->availableGeometry().y() - primary->geometry().y()));
}

TEST(QtSession, thereIsOneAtATime) {
    try {
        const Session another;
        ADD_FAILURE() << "nothing was raised";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSInternalInconsistencyException);
    }
    EXPECT_FALSE(currentToolkit().screens().empty()) << "the first one goes on";
    std::string name;
    std::thread([&] {
        try {
            const Session another;
        } catch (const NSException& exception) {
            name = exception.name();
        }
    }).join();
    EXPECT_EQ(name, NSInternalInconsistencyException);
}

TEST(QtSession, givesTheWidgetOfARootView) {
    const auto root = viewOfSize(100, 50);
    const auto inner = viewOfSize(10, 10);
    root->addSubview(inner);
    QWidget* const widget = qt::widget(root);
    ASSERT_TRUE(widget);
    EXPECT_EQ(qt::widget(root), widget) << "the same one again";
    EXPECT_EQ(widget->size(), QSize(100, 50));
    EXPECT_EQ(qt::widget(inner), nullptr) << "it lies in another view";
    EXPECT_EQ(qt::widget(static_cast<NSView*>(nullptr)), nullptr);
    EXPECT_EQ(qt::widget(static_cast<NSWindow*>(nullptr)), nullptr);
}

TEST(QtSession, makesAnotherWidgetWhenQtHasDeletedOne) {
    const auto root = viewOfSize(100, 50);
    auto host = std::make_unique<QWidget>();
    auto* const layout = new QVBoxLayout(host.get());
    layout->addWidget(qt::widget(root));
    const QPointer<QWidget> first = qt::widget(root);
    ASSERT_TRUE(first);
    host.reset();
    EXPECT_FALSE(first);
    const QPointer<QWidget> second = qt::widget(root);
    EXPECT_TRUE(second);
    EXPECT_EQ(second->parentWidget(), nullptr);
}

TEST(QtSession, aWindowHasAWidgetOnceItWasShown) {
    const auto shown = window();
    EXPECT_EQ(qt::widget(shown), nullptr);
    shown->orderFront(nullptr);
    ASSERT_TRUE(qt::widget(shown));
    EXPECT_TRUE(qt::widget(shown)->isWindow());
    EXPECT_TRUE(qt::widget(shown)->isVisible());
    shown->close();
    EXPECT_TRUE(!qt::widget(shown) || !qt::widget(shown)->isVisible());
}

TEST(QtSession, itsEndTakesEverythingOffTheScreen) {
    const auto shown = window();
    const auto inner = viewOfSize(20, 10);
    shown->contentView()->addSubview(inner);
    shown->setTitle("before"_ns);
    shown->orderFront(nullptr);
    const auto root = viewOfSize(100, 50);
    const auto part = viewOfSize(10, 10);
    root->addSubview(part);
    const auto taken = viewOfSize(30, 30);
    root->addSubview(taken);
    const QPointer<QWidget> rootWidget = qt::widget(root);
    const QPointer<QWidget> windowWidget = qt::widget(shown);
    ASSERT_TRUE(rootWidget && windowWidget);
    taken->removeFromSuperview();

    sessionOfTests().reset();
    EXPECT_TRUE(currentToolkit().screens().empty()) << "no toolkit any more";
    EXPECT_EQ(shown->peer(), nullptr);
    EXPECT_EQ(inner->peer(), nullptr);
    EXPECT_EQ(root->peer(), nullptr);
    EXPECT_EQ(part->peer(), nullptr);
    EXPECT_EQ(taken->peer(), nullptr);
    EXPECT_EQ(qt::widget(root), nullptr);
    EXPECT_EQ(qt::widget(shown), nullptr);
    // Widgets that something of Qt's may still be using go with the next event.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(rootWidget);
    EXPECT_FALSE(windowWidget);

    // Plain state from here on.
    root->setFrame({{1, 2}, {3, 4}});
    shown->setTitle("after"_ns);
    EXPECT_EQ(root->frame(), NSMakeRect(1, 2, 3, 4));

    sessionOfTests() = std::make_unique<Session>();
    EXPECT_FALSE(currentToolkit().screens().empty());
    const QWidget* const again = qt::widget(root);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->size(), QSize(3, 4));
    shown->orderFront(nullptr);
    ASSERT_TRUE(qt::widget(shown));
    EXPECT_EQ(qt::widget(shown)->windowTitle(), QStringLiteral("after"));
    shown->close();
}

TEST(QtSession, theMainQueueWaitsForTheNextSession) {
    bool hasRun = false;
    sessionOfTests().reset();
    dispatch_async(dispatch_get_main_queue(), [&] { hasRun = true; });
    QCoreApplication::processEvents();
    EXPECT_FALSE(hasRun);
    sessionOfTests() = std::make_unique<Session>();
    QCoreApplication::processEvents();
    EXPECT_TRUE(hasRun);
}

TEST(QtSession, runsUntilTheApplicationTerminates) {
    bool hasRun = false;
    dispatch_async(dispatch_get_main_queue(), [&] {
        hasRun = true;
        send<void>(NSApplication::sharedApplication(), "terminate:"_sel, nullptr);
    });
    EXPECT_EQ(sessionOfTests()->run(), 0);
    EXPECT_TRUE(hasRun);
}

TEST(QtSession, terminatingEndsTheEventLoopOfTheApplicationThatItHasJoined) {
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [] { QCoreApplication::exit(1); });
    watchdog.start(5000);
    const auto application = NSApplication::sharedApplication();
    QTimer::singleShot(0, [&] { application->terminate(nullptr); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(application->isTerminated());
    // So that it counts for nobody else.
    application->run();
}

TEST(QtSession, aJoinedLoopEndsWhenEverybodyHasHeardOfTheEnd) {
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [] { QCoreApplication::exit(1); });
    watchdog.start(5000);
    const auto application = NSApplication::sharedApplication();
    bool hasAsked = false;
    const id listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
        NSApplicationWillTerminateNotification(), application, [&](NSNotification*) {
            QEventLoop asking;
            QTimer::singleShot(200, &asking, [&] { asking.exit(7); });
            hasAsked = asking.exec() == 7;
        });
    QTimer::singleShot(0, [&] { application->terminate(nullptr); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(hasAsked);
    NSNotificationCenter::defaultCenter()->removeObserver(listening);
    application->run();
}

TEST(QtSession, terminatingInARunOfItsOwnLeavesLaterLoopsAlone) {
    QTimer::singleShot(0, [] { NSApplication::sharedApplication()->terminate(nullptr); });
    EXPECT_EQ(sessionOfTests()->run(), 0);
    QTimer::singleShot(100, [] { QCoreApplication::exit(3); });
    EXPECT_EQ(QApplication::exec(), 3);
}

TEST(QtSession, choosesAPlatformUnlessTheUserHas) {
    const struct {
        const char* name;
        bool isChosen, hasX11, hasWayland;
        const char* platform;
    } rows[] = {
        {"neither display", false, false, false, "offscreen"}, {"X11 alone", false, true, false, "xcb"},
        {"Wayland alone", false, false, true, "wayland"},      {"X11 goes first", false, true, true, "xcb;wayland"},
        {"chosen by the user", true, true, true, ""},          {"chosen without a display", true, false, false, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
#ifdef Q_OS_MACOS
        EXPECT_EQ(qt::platformName(row.isChosen, row.hasX11, row.hasWayland), "") << "there is only one";
#else
        EXPECT_EQ(qt::platformName(row.isChosen, row.hasX11, row.hasWayland), row.platform);
#endif
    }
}

} // namespace
} // namespace zr
