#pragma once

#include "waiting.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/session.h>
#include <zrbasic/platform/runtime/message.h>
#include <zrbasic/ui/text_field.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

namespace zr::test {

/// A titled window on the screen, with views in it that are used with real events.
class FieldWindow : public testing::Test {
  protected:
    FieldWindow()
        : window(make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{40, 40}, {320, 160}},
                                NSUInteger(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable))) {}

    ~FieldWindow() override {
        window->makeFirstResponder(nullptr);
        window->orderOut(nullptr);
        window->setContentView(nullptr);
        window = nullptr;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    /// A view in the window.
    template <class View = ZRXTextField>
    Ref<View> add(NSRect frame) {
        auto view = make<View>(&View::initWithFrame, frame);
        window->contentView()->addSubview(view);
        return view;
    }

    void show() {
        window->makeKeyAndOrderFront(nullptr);
        ASSERT_TRUE(eventually([this] {
            const QWidget* const host = qt::widget(window.get());
            return host && host->isActiveWindow();
        }));
    }

    /// Begins editing, with everything selected.
    void edit(NSTextField* field) {
        window->makeFirstResponder(field);
        ASSERT_TRUE(eventually([] { return line() != nullptr; }));
    }

    /// The line editor of Qt that has the keyboard; null when none has.
    static QLineEdit* line() { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }
    static QWidget* focused() { return QApplication::focusWidget(); }

    static void type(const char* text) { QTest::keyClicks(focused(), QString::fromUtf8(text)); }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(focused(), key, modifiers);
    }
    /// What no key of a keyboard stands for.
    static void typeText(const QString& text) {
        QKeyEvent down(QEvent::KeyPress, 0, Qt::NoModifier, text);
        QKeyEvent up(QEvent::KeyRelease, 0, Qt::NoModifier, text);
        QApplication::sendEvent(focused(), &down);
        QApplication::sendEvent(focused(), &up);
    }
    static void commit(const QString& text, const QString& preedit = {}) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(text);
        QApplication::sendEvent(focused(), &event);
    }

    /// Where a point of a view is in its window, in pixels from the upper left.
    QPoint pixelOf(NSView* view, NSPoint point) const {
        const NSPoint inWindow = view->convertPoint_toView(point, nullptr);
        const double height = window->contentView()->frame().size.height;
        return {int(inWindow.x), int(height - inWindow.y)};
    }
    QWindow* handle() const { return qt::widget(window.get())->windowHandle(); }

    NSText* editor() const { return window->fieldEditor_forObject(true, nullptr).get(); }
    static std::string utf8(NSString* text) { return text ? text->utf8() : "(null)"; }

    Ref<NSWindow> window;
};

} // namespace zr::test
