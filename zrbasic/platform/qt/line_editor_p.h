#pragma once

#include <zrbasic/platform/qt/view_peer_p.h>

namespace zr {
class NSTextView;
} // namespace zr

namespace zr::qt {

class LineEditor;

/// A window's field editor on the screen: a line editor of Qt that lies in the control which is edited.
///
/// Its text stands where the control's cell draws it, to the pixel. Each edit is put before the object first, which may
/// refuse or replace it; what was made is reported to it. Return, tab and escape become commands for it.
class LineEditorPeer final : public WidgetPeer {
  public:
    explicit LineEditorPeer(NSTextView& editor);
    ~LineEditorPeer() override;

    void viewChanged(ViewChange change) override;
    void takeKeyboard() override;

  protected:
    void populate(QWidget& widget) override;
    QWidget* keyboardWidget() override;
    bool drawsView() const override;
    QMargins overhang() const override;

  private:
    NSTextView& m_editor;
    QPointer<LineEditor> m_line;
};

} // namespace zr::qt
