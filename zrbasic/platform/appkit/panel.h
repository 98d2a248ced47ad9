#pragma once

#include <zrbasic/platform/appkit/window.h>

namespace zr {

/// A window that helps another one: a palette, an inspector, an alert. Main thread only.
class ZR_EXPORT NSPanel : public NSWindow {
    ZR_DECLARE_CLASS(NSPanel, NSWindow)
  public:
    NSPanel();
    ~NSPanel() override;

    // All false at first.

    /// Whether it stays in front of ordinary windows.
    [[nodiscard]] bool isFloatingPanel() const { return m_isFloatingPanel; }
    void setFloatingPanel(bool floats);
    /// Whether it is to be handed key presses only when something in it needs them. Kept for those who ask: it does not
    /// change when the panel becomes key.
    [[nodiscard]] bool becomesKeyOnlyIfNeeded() const { return m_becomesKeyOnlyIfNeeded; }
    void setBecomesKeyOnlyIfNeeded(bool onlyIfNeeded);
    /// Whether it can be used while another window is run modally.
    [[nodiscard]] bool worksWhenModal() const { return m_worksWhenModal; }
    void setWorksWhenModal(bool works);

  private:
    bool m_isFloatingPanel = false;
    bool m_becomesKeyOnlyIfNeeded = false;
    bool m_worksWhenModal = false;
};

} // namespace zr
