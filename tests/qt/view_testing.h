#pragma once

#include "waiting.h"

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/tracking_area.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/session.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QtTest/qtestspontaneevent.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace zr::test {

/// What waits in the loop, deletions as well.
inline void settle() {
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

/// As a mouse does it, `angle` in eighths of a degree.
inline void turnWheel(QWindow* window, QPoint at, QPoint angle = {0, 120}) {
    QWheelEvent event(at, window->mapToGlobal(at), {}, angle, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    // Only what comes from outside is handed up by Qt.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
}

inline QWidget* widgetOf(NSView* view) {
    auto* const peer = view ? dynamic_cast<qt::WidgetPeer*>(view->peer()) : nullptr;
    return peer ? peer->presentWidget() : nullptr;
}

/// A view that writes down what it is told, one word each.
class LoggingView : public NSView {
    ZR_OBJECT(LoggingView, NSView)
  public:
    bool isFlipped() const override { return flips; }
    bool acceptsFirstResponder() const override { return takesKeys; }
    NSSize intrinsicContentSize() const override { return natural; }

    void drawRect(NSRect rect) override {
        ++drawn;
        if (color) {
            setFill(color);
            NSRectFill(rect);
        }
    }
    void resetCursorRects() override {
        if (onResetCursorRects) {
            onResetCursorRects();
        }
    }
    void viewDidMoveToWindow() override { log += window() ? "in " : "out "; }

    void mouseDown(NSEvent* event) override { note("down", event); }
    void mouseUp(NSEvent* event) override { note("up", event); }
    void mouseDragged(NSEvent* event) override { note("dragged", event); }
    void mouseMoved(NSEvent* event) override { note("moved", event); }
    void mouseEntered(NSEvent* event) override { note("entered", event); }
    void mouseExited(NSEvent* event) override { note("exited", event); }
    void rightMouseDown(NSEvent* event) override { note("rightDown", event); }
    void rightMouseUp(NSEvent* event) override { note("rightUp", event); }
    void rightMouseDragged(NSEvent* event) override { note("rightDragged", event); }
    void otherMouseDown(NSEvent* event) override { note("otherDown", event); }
    void otherMouseUp(NSEvent* event) override { note("otherUp", event); }
    void otherMouseDragged(NSEvent* event) override { note("otherDragged", event); }
    void scrollWheel(NSEvent* event) override {
        note("wheel", event);
        if (passesWheelOn) {
            NSView::scrollWheel(event);
        }
    }
    void cursorUpdate(NSEvent* event) override { note("cursor", event); }
    void keyDown(NSEvent* event) override {
        note("keyDown", event);
        if (passesKeysOn) {
            NSView::keyDown(event);
        }
    }
    void keyUp(NSEvent* event) override { note("keyUp", event); }
    void flagsChanged(NSEvent* event) override { note("flags", event); }
    bool performKeyEquivalent(NSEvent* event) override {
        if (shortcut && event->characters()->isEqual(shortcut)) {
            note("shortcut", event);
            return true;
        }
        return false;
    }

    /// What was written since the last time.
    std::string take() { return std::exchange(log, {}); }

    std::string log;
    Ref<NSEvent> last;
    bool flips = false;
    bool takesKeys = false;
    bool passesKeysOn = false;
    bool passesWheelOn = false;
    NSSize natural{NSViewNoIntrinsicMetric, NSViewNoIntrinsicMetric};
    Ref<NSString> shortcut;
    Ref<NSColor> color;
    int drawn = 0;
    std::function<void()> onEvent;
    std::function<void()> onResetCursorRects;

  private:
    void note(const char* what, NSEvent* event) {
        log += what;
        log += ' ';
        last = Ref<NSEvent>(event);
        if (onEvent) {
            // Kept, as it may change what it is called from.
            const auto work = onEvent;
            work();
        }
    }
};

inline Ref<LoggingView> loggingView(NSRect frame) {
    auto view = make<LoggingView>(&LoggingView::initWithFrame, frame);
    return view;
}

/// A titled window with a logging view as its content, 400 by 300.
class ViewWindow : public testing::Test {
  protected:
    ViewWindow()
        : window(make<NSWindow>(
              &NSWindow::initWithContentRect_styleMask, NSRect{{50, 50}, {400, 300}},
              NSUInteger(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskResizable))),
          content(loggingView({{0, 0}, {400, 300}})) {
        content->passesKeysOn = true;
        window->setContentView(content);
    }

    ~ViewWindow() override {
        window->makeFirstResponder(nullptr);
        window->orderOut(nullptr);
        content = nullptr;
        window = nullptr;
        settle();
    }

    void show() {
        window->makeKeyAndOrderFront(nullptr);
        ASSERT_TRUE(eventually([this] { return host() && host()->isActiveWindow(); }));
        settle();
    }

    Ref<LoggingView> add(NSRect frame, NSView* to = nullptr) {
        Ref<LoggingView> view = loggingView(frame);
        (to ? to : content.get())->addSubview(view);
        return view;
    }

    QWidget* host() const { return qt::widget(window.get()); }
    QWindow* handle() const { return host()->windowHandle(); }
    /// From the window's coordinates to Qt's.
    static QPoint pixel(double x, double y) { return {int(x), int(300 - y)}; }

    void click(double x, double y, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(handle(), button, keys, pixel(x, y));
    }
    void moveTo(double x, double y) {
        QTest::mouseMove(handle(), pixel(x, y));
        settle();
    }

    Ref<NSWindow> window;
    Ref<LoggingView> content;
};

} // namespace zr::test
