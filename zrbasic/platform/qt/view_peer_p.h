#pragma once

#include <zrbasic/platform/appkit/view.h>

#include <QMargins>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace zr::qt {

class ViewWidget;

/// A view's peer with a widget of its own, in which the widgets of its subviews lie.
///
/// The widget is made when it is asked for, and again when Qt has deleted it. Subclasses put Qt's own controls into it.
class WidgetPeer : public ViewPeer {
  public:
    explicit WidgetPeer(NSView& view);
    ~WidgetPeer() override;

    [[nodiscard]] NSView& view() const { return m_view; }
    /// With everything in it, at the place that the view says.
    [[nodiscard]] QWidget* widget();
    /// Null when there is none at the moment.
    [[nodiscard]] QWidget* presentWidget() const;

    void viewChanged(ViewChange change) override;
    void takeKeyboard() override;
    void playRotation(NSPoint anchor, std::span<const double> angles, double seconds,
                      std::function<void()> end) override;
    bool drawInto(NSBitmapImageRep& bitmap, NSRect rect) override;

    /// Whether Qt decides where the view lies: in a layout, or in another widget that is no view's.
    [[nodiscard]] bool isPlacedByQt() const;

  protected:
    /// Called once for each widget that is made, before subviews are put into it.
    virtual void populate(QWidget& widget);
    /// What in it takes key presses; the widget itself unless overridden.
    [[nodiscard]] virtual QWidget* keyboardWidget();
    /// Whether the view draws itself by `drawRect:`; not where a control of Qt covers it all.
    [[nodiscard]] virtual bool drawsView() const;
    /// How far the widget reaches beyond the view's frame, in pixels; nothing unless overridden.
    [[nodiscard]] virtual QMargins overhang() const;

  private:
    friend class ViewWidget;

    void setUp();
    void placeSubviews();
    void arrange(const std::vector<QWidget*>& fromBackToFront);
    void place();
    void leaveSurroundings();
    void applyVisibility();
    /// The view takes the place that its widget has.
    void adoptPlace();
    /// Which window its widget has come to lie in.
    void surroundingsChanged();
    /// Qt has deleted the widget of a subview.
    void lostSubview();

    NSView& m_view;
    QPointer<ViewWidget> m_widget;
    /// Of the subviews.
    std::vector<QPointer<ViewWidget>> m_placed;
    /// The extent that was asked for, where Qt's layouts do not know better.
    NSSize m_wantedSize;
    NSRect m_placedBounds;
    bool m_mustPlaceSubviews = true;
    bool m_isAdopting = false;
    bool m_wasLaidOut = false;
};

/// The peer of that view, as makeViewPeer of the toolkit gives it.
[[nodiscard]] std::unique_ptr<ViewPeer> makePeer(NSView& view);
/// The view that a widget stands for; null for other widgets, Qt's own controls inside of a view among them.
[[nodiscard]] NSView* viewOf(const QWidget* widget);

} // namespace zr::qt
