#pragma once

#include <QWidget>

namespace zr::qt {

/// The border of a view's layer, which lies above everything in the view. The pointer goes through it.
class LayerOverlay final : public QWidget {
  public:
    explicit LayerOverlay(QWidget& over);
    ~LayerOverlay() override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace zr::qt
