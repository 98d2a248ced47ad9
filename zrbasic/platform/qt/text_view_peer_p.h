#pragma once

#include <zrbasic/platform/qt/view_peer_p.h>

namespace zr {
class NSTextView;
} // namespace zr

namespace zr::qt {

class TextBrowser;

/// A text view on the screen: a text browser of Qt in the view's widget, whose document is made from the view's text
/// storage. Clicks on links go to the object; what is typed is put before it, and taken back where it refuses.
class TextViewPeer final : public WidgetPeer {
  public:
    explicit TextViewPeer(NSTextView& view);
    ~TextViewPeer() override;

    void viewChanged(ViewChange change) override;

  protected:
    void populate(QWidget& widget) override;
    QWidget* keyboardWidget() override;
    bool drawsView() const override;

  private:
    NSTextView& m_textView;
    QPointer<TextBrowser> m_browser;
};

} // namespace zr::qt
