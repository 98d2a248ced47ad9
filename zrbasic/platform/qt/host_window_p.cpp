#include <zrbasic/platform/qt/host_window_p.h>

#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/view_widget_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QApplication>
#include <QEvent>
#include <QPointer>

namespace zr::qt {
namespace {

template <class Callback>
void forEachViewWidget(QWidget& topLevel, Callback callback) {
    if (auto* const itself = dynamic_cast<ViewWidget*>(&topLevel)) {
        callback(*itself);
    }
    const auto inner = topLevel.findChildren<QWidget*>();
    for (QWidget* const widget : inner) {
        if (auto* const found = dynamic_cast<ViewWidget*>(widget)) {
            callback(*found);
        }
    }
}

/// Views without a superview, in front first.
std::vector<Ref<NSView>> outermostViewsIn(QWidget& topLevel) {
    std::vector<Ref<NSView>> views;
    forEachViewWidget(topLevel, [&views](ViewWidget& widget) {
        if (Ref<NSView> view = widget.view(); view && !view->superview()) {
            views.insert(views.begin(), std::move(view));
        }
    });
    return views;
}

bool performKeyEquivalentIn(NSView& view, NSEvent* event) {
    const Ref<NSView> kept(&view);
    const Ref<NSArray> subviews = view.subviews();
    for (NSUInteger i = subviews->count(); i > 0; --i) {
        const id subview = subviews->objectAtIndex(i - 1);
        if (performKeyEquivalentIn(*static_cast<NSView*>(subview.get()), event)) {
            return true;
        }
    }
    return send<bool>(&view, "performKeyEquivalent:"_sel, event);
}

/// A window that Qt runs: events that no view in it has dealt with go on to Qt's widgets.
class ForeignWindow final : public NSWindow {
    ZR_DECLARE_CLASS(ForeignWindow, NSWindow)
  public:
    ~ForeignWindow() override;

    void setTopLevel(QWidget* topLevel) { m_topLevel = topLevel; }
    [[nodiscard]] bool takeUnhandled() { return std::exchange(m_wasReached, false); }

    bool canBecomeKeyWindow() const override { return true; }
    void noResponderFor(SEL) override { m_wasReached = true; }
    std::vector<Ref<NSView>> outermostViews() const override;
    void selectNextKeyView(NSObject*) override { moveKeyboard(true); }
    void selectPreviousKeyView(NSObject*) override { moveKeyboard(false); }

    bool performKeyEquivalent(NSEvent* event) override {
        if (!m_topLevel || !event) {
            return false;
        }
        for (const Ref<NSView>& view : outermostViewsIn(*m_topLevel)) {
            if (performKeyEquivalentIn(*view, event)) {
                return true;
            }
        }
        // A dialog that Qt runs modally is one as well.
        return !QApplication::activeModalWidget() && NSWindow::performKeyEquivalent(event);
    }

  private:
    void moveKeyboard(bool isForwards);

    QPointer<QWidget> m_topLevel;
    bool m_wasReached = false;
};

ZR_DEFINE_CLASS(ForeignWindow) {}

ForeignWindow::~ForeignWindow() = default;

std::vector<Ref<NSView>> ForeignWindow::outermostViews() const {
    std::vector<Ref<NSView>> views = m_topLevel ? outermostViewsIn(*m_topLevel) : std::vector<Ref<NSView>>{};
    // Those in dialogs that belong to the widget are in windows of their own.
    std::erase_if(views, [this](const Ref<NSView>& view) { return view->window() != this; });
    return views;
}

void ForeignWindow::moveKeyboard(bool isForwards) {
    if (!m_topLevel) {
        return;
    }
    const Ref<NSResponder> first = firstResponder();
    auto* view = cast<NSView>(first.get());
    const Ref<NSText> editor = fieldEditor_forObject(false, nullptr);
    Ref<NSView> from(view);
    if (from && from == editor) {
        from = from->superview();
    }
    const Ref<NSView> chosen = !from ? nullptr : isForwards ? from->nextKeyView() : from->previousKeyView();
    if (chosen && chosen->window() == this && chosen->canBecomeKeyView()) {
        send<bool>(this, "makeFirstResponder:"_sel, chosen.get());
        return;
    }
    refreshTabStops(*m_topLevel);
    // From the place of the view itself, as an editor in it was made late and comes last for Qt.
    QWidget* start = m_topLevel->focusWidget();
    forEachViewWidget(*m_topLevel, [&](ViewWidget& widget) {
        if (from && widget.view() == from) {
            start = &widget;
        }
    });
    if (!start) {
        start = m_topLevel;
    }
    for (QWidget* widget = isForwards ? start->nextInFocusChain() : start->previousInFocusChain();
         widget && widget != start; widget = isForwards ? widget->nextInFocusChain() : widget->previousInFocusChain()) {
        if (widget->window() == m_topLevel && (widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled() &&
            widget->isVisibleTo(m_topLevel) && !widget->focusProxy()) {
            widget->setFocus(isForwards ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return;
        }
    }
}

/// What such a window does on the screen.
class ForeignPeer final : public WindowPeer {
  public:
    ForeignPeer(NSWindow& window, QWidget& topLevel) : m_window(window), m_topLevel(&topLevel) {}

    void windowChanged(WindowChange change) override {
        if (!m_topLevel || m_isFollowing) {
            return;
        }
        if (change == WindowChange::Frame) {
            m_topLevel->setGeometry(desktopRect(m_window.contentRectForFrameRect(m_window.frame())));
        } else if (change == WindowChange::Title) {
            m_topLevel->setWindowTitle(toQt(m_window.title()));
        } else if (change == WindowChange::FirstResponder) {
            const Ref<NSResponder> first = m_window.firstResponder();
            auto* const view = cast<NSView>(first.get());
            if (view && view->peer()) {
                view->peer()->takeKeyboard();
            } else if (QWidget* const focused = m_topLevel->focusWidget(); ViewWidget::around(focused)) {
                focused->clearFocus();
            }
        }
    }
    void orderAbove(NSWindow*) override {
        if (m_topLevel && !m_isFollowing) {
            m_topLevel->show();
            m_topLevel->raise();
        }
    }
    void orderBelow(NSWindow*) override {
        if (m_topLevel && !m_isFollowing) {
            m_topLevel->show();
            m_topLevel->lower();
        }
    }
    void orderOut() override {
        if (m_topLevel && !m_isFollowing) {
            m_topLevel->hide();
        }
    }
    void takeKeyboard() override {
        if (m_topLevel && !m_isFollowing && m_topLevel->isVisible()) {
            m_topLevel->activateWindow();
        }
    }
    void playFrameOrigins(std::span<const NSPoint> points, double seconds) override {
        if (m_topLevel) {
            playOrigins(m_window, *m_topLevel, points, seconds, [topLevel = m_topLevel, end = m_topLevel->pos()] {
                if (topLevel) {
                    topLevel->move(end);
                }
            });
        }
    }

    void setFollowing(bool isFollowing) { m_isFollowing = isFollowing; }

  private:
    NSWindow& m_window;
    QPointer<QWidget> m_topLevel;
    /// The window is being told of what the widget has done.
    bool m_isFollowing = false;
};

/// Belongs to the top-level widget, and keeps the window object as long as that lives.
class ForeignHost final : public QObject {
  public:
    explicit ForeignHost(QWidget& topLevel) : QObject(&topLevel), m_topLevel(topLevel) {
        m_window->setTopLevel(&topLevel);
        m_window->setTitle(fromQt(topLevel.windowTitle()));
        followFrame();
        m_window->setPeer(std::make_unique<ForeignPeer>(*m_window, topLevel));
        topLevel.installEventFilter(this);
        if (topLevel.isVisible()) {
            follow([this] { m_window->orderFront(nullptr); });
        }
    }

    ~ForeignHost() override {
        m_window->setTopLevel(nullptr);
        m_window->setPeer(nullptr);
        duringEvent([this] { m_window->orderOut(nullptr); });
    }

    [[nodiscard]] const Ref<ForeignWindow>& window() const { return m_window; }

    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
            case QEvent::Move:
            case QEvent::Resize:
                follow([this] { followFrame(); });
                break;
            case QEvent::Show:
                follow([this] { m_window->orderFront(nullptr); });
                break;
            case QEvent::Hide:
                follow([this] { m_window->orderOut(nullptr); });
                break;
            case QEvent::WindowActivate:
                follow([this] { send<void>(m_window, "makeKeyWindow"_sel); });
                break;
            default:
                break;
        }
        return false;
    }

  private:
    void followFrame() {
        m_window->setFrame_display(m_window->frameRectForContentRect(screenRect(m_topLevel.geometry())), false);
    }

    template <class Work>
    void follow(Work work) {
        const Ref<ForeignWindow> window = m_window;
        const auto setFollowing = [&window](bool isFollowing) {
            if (auto* const peer = dynamic_cast<ForeignPeer*>(window->peer())) {
                peer->setFollowing(isFollowing);
            }
        };
        setFollowing(true);
        duringEvent(work);
        setFollowing(false);
    }

    QWidget& m_topLevel;
    Ref<ForeignWindow> m_window = make<ForeignWindow>();
};

ForeignHost* hostOf(const QWidget& topLevel) {
    for (QObject* const child : topLevel.children()) {
        if (auto* const host = dynamic_cast<ForeignHost*>(child)) {
            return host;
        }
    }
    return nullptr;
}

} // namespace

Ref<NSWindow> presentForeignWindow(const QWidget& topLevel) {
    const ForeignHost* const host = hostOf(topLevel);
    return host ? Ref<NSWindow>(host->window()) : nullptr;
}

Ref<NSWindow> ensureForeignWindow(QWidget& topLevel) {
    Ref<NSWindow> present = presentForeignWindow(topLevel);
    return present ? present : Ref<NSWindow>((new ForeignHost(topLevel))->window());
}

void forgetForeignWindows() {
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* const widget : widgets) {
        delete hostOf(*widget);
    }
}

void refreshTabStops(QWidget& topLevel) {
    forEachViewWidget(topLevel, [](ViewWidget& widget) {
        const Ref<NSView> view = widget.view();
        const Ref<NSWindow> window = view ? view->window() : nullptr;
        const bool isStop = window && cast<ForeignWindow>(window.get()) && view->canBecomeKeyView();
        widget.setFocusPolicy(isStop ? Qt::TabFocus : Qt::NoFocus);
    });
}

bool takeUnhandled(NSWindow* window) {
    auto* const foreign = cast<ForeignWindow>(window);
    return foreign && foreign->takeUnhandled();
}

} // namespace zr::qt
