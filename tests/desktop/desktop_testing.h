#pragma once

#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/session.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

/// What the tests do as the user of a desktop: other programs move the pointer, press keys, and look at the screen.
namespace zr::test {

inline bool becomes(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 5000);
}

/// What another program writes, run to its end while events go on.
inline QString outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 10'000));
    EXPECT_EQ(process.error(), QProcess::UnknownError) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << program.toStdString() << ' ' << arguments.join(' ').toStdString() << ": "
                                     << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// A screen point of ours, with the origin at the lower left, as the X server counts it.
inline QStringList serverPoint(NSPoint point) {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    const double height = screen->frame().size.height;
    return {QString::number(qRound(point.x)), QString::number(qRound(height - point.y))};
}

inline void click(NSPoint point, const char* button = "1") {
    outputOf("xdotool", QStringList{"mousemove"} + serverPoint(point) + QStringList{"click", button});
}

inline void pressKeys(const QStringList& keys) {
    outputOf("xdotool", QStringList{"key", "--delay", "20"} + keys);
}

/// A key by its number, as the keyboard sends it: xdotool would switch to the first layout for it.
inline void pressKeyNumbered(int number) {
    static const char* const program =
        "import ctypes, sys\n"
        "x, test = ctypes.CDLL('libX11.so.6'), ctypes.CDLL('libXtst.so.6')\n"
        "x.XOpenDisplay.restype = ctypes.c_void_p\n"
        "server = ctypes.c_void_p(x.XOpenDisplay(None))\n"
        "for isDown in (1, 0):\n"
        "    test.XTestFakeKeyEvent(server, int(sys.argv[1]), isDown, 0)\n"
        "x.XSync(server, 0)\n";
    outputOf("python3", {"-c", program, QString::number(number)});
}

inline void type(const char* text) {
    outputOf("xdotool", {"type", "--delay", "20", text});
}

/// The middle of a view on the screen.
inline NSPoint middleOf(NSView* view) {
    const NSRect rect = view->window()->convertRectToScreen(view->convertRect_toView(view->bounds(), nullptr));
    return {rect.origin.x + rect.size.width / 2, rect.origin.y + rect.size.height / 2};
}

/// The X server's number for a window that is shown.
inline QString serverNumber(NSWindow* window) {
    QWidget* const widget = qt::widget(window);
    return widget ? QString::number(widget->winId()) : QString();
}

/// A number behind a label in what xwininfo says.
inline double numberBehind(const QString& text, const char* label) {
    const qsizetype place = text.indexOf(QLatin1String(label));
    return place < 0 ? -1e9 : text.mid(place + qsizetype(qstrlen(label))).trimmed().section('\n', 0, 0).toDouble();
}

/// A window of the X server in screen points of ours.
inline NSRect rectOnServer(const QString& number) {
    const QString info = outputOf("xwininfo", {"-id", number});
    const double height = numberBehind(info, "Height:");
    const double top = numberBehind(info, "Absolute upper-left Y:");
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    return {{numberBehind(info, "Absolute upper-left X:"), screen->frame().size.height - top - height},
            {numberBehind(info, "Width:"), height}};
}

/// What a window has inside of the window manager's decorations.
inline NSRect contentOnServer(NSWindow* window) {
    return rectOnServer(serverNumber(window));
}

/// The same with them. They are a window around ours, or several; the outermost lies in the screen itself.
inline NSRect outlineOnServer(NSWindow* window) {
    QString outermost = serverNumber(window);
    for (;;) {
        const QString line = outputOf("xwininfo", {"-children", "-id", outermost}).section("Parent window id: ", 1);
        if (line.isEmpty() || line.section('\n', 0, 0).contains("(the root window)")) {
            return rectOnServer(outermost);
        }
        outermost = line.section(' ', 0, 0);
    }
}

inline std::string text(NSRect rect) {
    const auto number = [](double value) { return QString::number(value).toStdString(); };
    return number(rect.origin.x) + ',' + number(rect.origin.y) + ' ' + number(rect.size.width) + 'x' +
           number(rect.size.height);
}

class Desktop : public testing::Test {
  protected:
    static constexpr NSUInteger ordinaryStyle = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                                NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable;

    ~Desktop() override {
        for (const Ref<NSWindow>& window : m_windows) {
            window->setDelegate(nullptr);
            window->orderOut(nullptr);
        }
        QTest::qWait(50);
    }

    Ref<NSWindow> makeWindow(NSRect content, NSString* title, NSUInteger style = ordinaryStyle) {
        Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, content, style);
        window->setTitle(title);
        m_windows.push_back(window);
        return window;
    }
    /// Shown, decorated and with the keyboard.
    Ref<NSWindow> showWindow(NSRect content, NSString* title, NSUInteger style = ordinaryStyle) {
        Ref<NSWindow> window = makeWindow(content, title, style);
        window->makeKeyAndOrderFront(nullptr);
        EXPECT_TRUE(becomes([&window] { return qt::widget(window) && qt::widget(window)->isActiveWindow(); }));
        QTest::qWait(100);
        return window;
    }

  private:
    std::vector<Ref<NSWindow>> m_windows;
};

} // namespace zr::test
