#pragma once

#include <zrbasic/platform/appkit/color_panel.h>
#include <zrbasic/platform/qt/view_peer_p.h>

#include <QColor>
#include <QPointer>

namespace zr::qt {

class ColorDialog;

/// What fills the colour panel on the screen: Qt's own colour dialog, as a part of the panel's window.
///
/// No part of it takes the keyboard, so that choosing a colour leaves what is being edited alone.
class ColorPickerPeer final : public WidgetPeer {
  public:
    explicit ColorPickerPeer(ColorPickerView& view);
    ~ColorPickerPeer() override;

    void viewChanged(ViewChange change) override;

  protected:
    void populate(QWidget& widget) override;
    bool drawsView() const override;

  private:
    friend class ColorDialog;

    void showPanel();
    /// The panel becomes as large as the dialog wants to be.
    void fitPanel();
    void userDidChoose(const QColor& color, bool isDragging);

    ColorPickerView& m_picker;
    QPointer<ColorDialog> m_dialog;
    /// What the dialog has for the panel's colour.
    QColor m_shown;
    /// What Qt reports meanwhile is our own doing.
    bool m_isShowing = false;
};

} // namespace zr::qt
