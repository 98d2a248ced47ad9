#include <zrbasic/platform/qt/session.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/thread.h>
#include <zrbasic/platform/qt/accessibility_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/menu_p.h>
#include <zrbasic/platform/qt/palette_p.h>
#include <zrbasic/platform/qt/pointer_filter_p.h>
#include <zrbasic/platform/qt/session_p.h>
#include <zrbasic/platform/qt/toolkit_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

#include <QApplication>
#include <QThread>
#include <QTimer>

#include <optional>
#include <string>

namespace zr::qt {
namespace {

/// Borrowed; null while no session stands.
QtToolkit* toolkitOfSession = nullptr;

/// An application object of Qt, with the command line that it refers to as long as it lives.
class OwnApplication {
  public:
    OwnApplication() {
        const Ref<NSString> path = NSBundle::mainBundle()->executablePath();
        m_arguments.push_back(path ? path->utf8() : "application");
        // By the command line, as programs that this one starts inherit the environment.
        const QByteArray platform =
            platformName(qEnvironmentVariableIsSet("QT_QPA_PLATFORM"), !qEnvironmentVariableIsEmpty("DISPLAY"),
                         !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"));
        if (!platform.isEmpty()) {
            m_arguments.push_back("-platform");
            m_arguments.push_back(platform.toStdString());
        }
        for (std::string& argument : m_arguments) {
            m_pointers.push_back(argument.data());
        }
        m_count = int(m_arguments.size());
        m_pointers.push_back(nullptr);
        m_application.emplace(m_count, m_pointers.data());
        // Terminating is the application's own decision.
        QApplication::setQuitOnLastWindowClosed(false);
    }

  private:
    std::vector<std::string> m_arguments;
    std::vector<char*> m_pointers;
    int m_count = 0;
    std::optional<QApplication> m_application;
};

/// Has the application's own `QApplication::exec` return as well, which knows nothing of the end.
void endLoopOfQt(QObject* session, const Weak<NSNotification>& announcement) {
    if (announcement.lock()) {
        // Somebody who is told of the end still asks the user something.
        QTimer::singleShot(50, session, [session, announcement] { endLoopOfQt(session, announcement); });
    } else if (NSApplication::sharedApplication()->isTerminated() && QThread::currentThread()->loopLevel() > 0) {
        QCoreApplication::exit(0);
    }
}

void dropPeers(NSView& view) {
    const Ref<NSArray> subviews = view.subviews();
    for (NSUInteger i = 0; i < subviews->count(); ++i) {
        dropPeers(*cast<NSView>(subviews->objectAtIndex(i)));
    }
    view.dropPeer();
}

/// Takes everything off the screen, so that what lives on is plain state and nothing outlives Qt's application.
void dropAllPeers() {
    const Ref<NSArray> windows = NSApplication::sharedApplication()->windows();
    for (NSUInteger i = 0; i < windows->count(); ++i) {
        NSWindow* const window = cast<NSWindow>(windows->objectAtIndex(i));
        dropPeers(*window->contentView());
        window->dropPeer();
    }
    // What is left was never in a window of ours, or has left it.
    std::vector<Ref<NSView>> views;
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget* const widget : widgets) {
        if (NSView* const view = viewOf(widget)) {
            views.emplace_back(view);
        }
    }
    for (const Ref<NSView>& view : views) {
        dropPeers(*view);
    }
}

} // namespace

QByteArray platformName(bool isChosen, bool hasX11, bool hasWayland) {
#ifdef Q_OS_MACOS
    static_cast<void>(hasX11);
    static_cast<void>(hasWayland);
    static_cast<void>(isChosen);
    return {};
#else
    if (isChosen) {
        return {};
    }
    if (hasX11) {
        return hasWayland ? "xcb;wayland" : "xcb";
    }
    return hasWayland ? "wayland" : "offscreen";
#endif
}

struct Session::Parts {
    Parts() {
        if (!QCoreApplication::instance()) {
            application.emplace();
        }
        look.emplace(application.has_value());
        drainer.emplace();
        installApplicationFilters();
        installAccessibility();
        toolkitOfSession = &toolkit;
        before = setCurrentToolkit(&toolkit);
        listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
            NSApplicationWillTerminateNotification(), NSApplication::sharedApplication(),
            [this](NSNotification* announcement) {
                QTimer::singleShot(0, &*drainer, [session = &*drainer, told = Weak<NSNotification>(announcement)] {
                    endLoopOfQt(session, told);
                });
            });
    }

    ~Parts() {
        NSNotificationCenter::defaultCenter()->removeObserver(listening);
        closeMenus();
        dropAllPeers();
        setCurrentToolkit(before);
        toolkitOfSession = nullptr;
        removeAccessibility();
        removeApplicationFilters();
    }

    std::optional<OwnApplication> application;
    std::optional<LookOfSession> look;
    QtToolkit toolkit;
    std::optional<MainQueueDrainer> drainer;
    Toolkit* before = nullptr;
    id listening;
};

Session::Session() {
    if (!NSThread::isMainThread()) {
        NSException::raise(NSInternalInconsistencyException, "a session belongs to the main thread");
    }
    if (toolkitOfSession) {
        NSException::raise(NSInternalInconsistencyException, "there is a session already");
    }
    if (QCoreApplication::instance() && !qobject_cast<QApplication*>(QCoreApplication::instance())) {
        NSException::raise(NSInternalInconsistencyException, "the application object is one without widgets");
    }
    m_parts = std::make_unique<Parts>();
}

Session::~Session() = default;

int Session::run() {
    send<void>(NSApplication::sharedApplication().get(), "run"_sel);
    return 0;
}

QWidget* widget(NSView* view) {
    if (!view || !toolkitOfSession || view->superview()) {
        return nullptr;
    }
    auto* const peer = dynamic_cast<WidgetPeer*>(view->ensurePeer());
    return peer ? peer->widget() : nullptr;
}

QWidget* widget(NSWindow* window) {
    const auto* const peer = window && toolkitOfSession ? dynamic_cast<TopLevelPeer*>(window->peer()) : nullptr;
    return peer ? peer->presentWidget() : nullptr;
}

} // namespace zr::qt
