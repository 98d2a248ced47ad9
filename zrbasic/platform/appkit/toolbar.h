#pragma once

#include <zrbasic/platform/appkit/view.h>

namespace zr {

/// The strip in a window's title bar that an application puts its own views into. Main thread only.
class ZR_EXPORT NSToolbar : public NSObject {
    ZR_DECLARE_CLASS(NSToolbar, NSObject)
  public:
    NSToolbar();
    ~NSToolbar() override;

    /// Null is legal for all of its life.
    id initWithIdentifier(NSString* identifier);

    [[nodiscard]] Ref<NSString> identifier() const;
    /// The view of the toolbar, which lies in the title bar's view; null unless a window has the toolbar.
    [[nodiscard]] Ref<NSView> toolbarView() const;

  private:
    friend class NSWindow;

    Ref<NSString> m_identifier;
    Ref<NSView> m_view;
    Weak<NSWindow> m_window;
};

} // namespace zr
