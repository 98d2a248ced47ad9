#pragma once

#include <QWidget>

/// Widgets that are let go of while an event is handed to their objects.
namespace zr::qt {

/// Stands while objects are handed an event: what is discarded meanwhile stays in memory until Qt has done with it.
class [[nodiscard]] Delivery {
  public:
    Delivery();
    ~Delivery();
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;

    [[nodiscard]] static bool isUnderWay();
};

/// Takes a widget off the screen and deletes it, at once or, where something of it may be running, as soon as Qt's loop
/// comes round. Null does nothing, nor does anything once Qt's application is gone.
void discard(QWidget* widget);
/// Takes a widget out of its parent and off the screen, without moving the keyboard to its neighbour.
void takeOut(QWidget& widget);

/// A widget that hands its events to an object, and that is not deleted while it, or one that lies in it, does so: a
/// loop that runs inside of a handler carries out deletions that were asked for outside of it.
class DeliveringWidget : public QWidget {
  public:
    using QWidget::QWidget;

    bool event(QEvent* event) final;

  protected:
    /// What `event` is for other widgets.
    virtual bool handle(QEvent& event);

  private:
    [[nodiscard]] bool isDelivering() const;

    int m_deliveries = 0;
};

} // namespace zr::qt
