#pragma once

#include <QScrollBar>

namespace zr::qt {

/// As quiet as the scrollers of views, and as wide: a knob and nothing else, in the colours of the palette.
class FlatScrollBar final : public QScrollBar {
  public:
    FlatScrollBar(Qt::Orientation orientation, QWidget* parent);
    ~FlatScrollBar() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    bool event(QEvent* event) override;

  private:
    void followParent();
    void followPalette();

    QRgb m_track = 0;
    QRgb m_knob = 0;
};

} // namespace zr::qt
