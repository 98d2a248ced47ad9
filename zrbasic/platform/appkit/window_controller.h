#pragma once

#include <zrbasic/platform/appkit/window.h>

namespace zr {

/// Keeps a window and shows it. Main thread only.
class ZR_EXPORT NSWindowController : public NSResponder {
    ZR_DECLARE_CLASS(NSWindowController, NSResponder)
  public:
    NSWindowController();
    ~NSWindowController() override;

    /// Becomes the window's controller; null is a controller without a window.
    virtual id initWithWindow(NSWindow* window);

    [[nodiscard]] virtual Ref<NSWindow> window() const;
    /// The window before has no controller any more, unless another one has taken its place.
    virtual void setWindow(NSWindow* window);
    /// Shows the window in front of the others and makes it key. Nothing without one.
    virtual void showWindow(NSObject* sender);
    /// Closes the window. Nothing without one.
    virtual void close();

  private:
    Ref<NSWindow> m_window;
};

} // namespace zr
