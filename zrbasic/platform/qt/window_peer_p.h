#pragma once

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/delivery_p.h>

#include <QPointer>
#include <QTimer>
#include <QVariantAnimation>

#include <functional>

namespace zr::qt {

class TopLevelPeer;

/// The top-level widget of a window: the content view's widget fills it.
class HostWidget final : public DeliveringWidget {
  public:
    explicit HostWidget(NSWindow& window);
    ~HostWidget() override;

    /// Null when the window is gone or going, and when another widget stands for it now.
    [[nodiscard]] Ref<NSWindow> shownWindow() const;

  protected:
    bool handle(QEvent& event) override;

  private:
    friend class TopLevelPeer;

    [[nodiscard]] TopLevelPeer* peer(const Ref<NSWindow>& window) const;
    void geometryChanged(bool byDesktop);
    void wasActivated(const Ref<NSWindow>& window);
    /// From now on, for a moment, what the desktop reports may be what it was asked for before.
    void expectEchoes();

    Weak<NSWindow> m_window;
    QTimer m_echoes;
    bool m_wasPainted = false;
    /// The desktop has given it the keyboard; asked for that once more, it would do so after what else it was asked for.
    bool m_isGivenKeyboard = false;
};

/// A window's peer with a widget of its own.
///
/// The content view's place on the screen is that of the frame less the title that the window reckons with, to the
/// pixel and however large the desktop's own title is, so that points on the screen convert exactly.
class TopLevelPeer final : public WindowPeer {
  public:
    explicit TopLevelPeer(NSWindow& window);
    ~TopLevelPeer() override;

    /// Null before the window is first shown, and when Qt has deleted it.
    [[nodiscard]] QWidget* presentWidget() const;

    void windowChanged(WindowChange change) override;
    void orderAbove(NSWindow* relative) override;
    void orderBelow(NSWindow* relative) override;
    void orderOut() override;
    void takeKeyboard() override;
    void playFrameOrigins(std::span<const NSPoint> points, double seconds) override;

  private:
    friend class HostWidget;

    void ensureWidget();
    void placeContent();
    void show();
    void applyStyle();
    void applyLimits();
    void applyFrame();
    void applyFirstResponder();
    /// A user, or the desktop, has moved or resized the widget.
    void adoptGeometry();
    [[nodiscard]] QRect wantedGeometry() const;
    [[nodiscard]] bool mayBeClosedByUser() const;

    NSWindow& m_window;
    QPointer<HostWidget> m_widget;
    QPointer<QVariantAnimation> m_shake;
    bool m_isAdopting = false;
};

/// Where something on the screen lies in Qt's coordinates of the desktop, and back.
[[nodiscard]] QRect desktopRect(NSRect onScreen);
[[nodiscard]] NSRect screenRect(QRect onDesktop);
/// The window that such a widget, a top-level one, stands for, whether one of ours or a foreign one with views in it;
/// null when there is none.
[[nodiscard]] Ref<NSWindow> windowOf(const QWidget* topLevel);
/// Plays the ways of a window's frame on its widget, whose content lies inside of the frame as the window says.
QVariantAnimation* playOrigins(NSWindow& window, QWidget& widget, std::span<const NSPoint> points, double seconds,
                               std::function<void()> end);

} // namespace zr::qt
