#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <memory>

class QWidget;

namespace zr {
class NSView;
class NSWindow;
} // namespace zr

/// The toolkit behind windows and controls: Qt 6 Widgets.
namespace zr::qt {

/// Puts Qt behind the library for as long as it stands: windows come on the screen, text is measured, notifications are
/// delivered.
///
/// Joins the application object of Qt that there is, or makes one; then, unless QT_QPA_PLATFORM says otherwise, one
/// without a screen where neither an X nor a Wayland display is set. What is on the screen when the session ends is
/// taken off it; objects that live on are plain state again. One at a time; main thread only.
///
/// An application that runs Qt's own `QApplication::exec` instead of `run` has that return, with 0, when it terminates.
class ZR_EXPORT Session {
  public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Handles events until the application terminates, and gives the process's exit code.
    int run();

  private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

/// The widget that shows a view, to be put into any layout; made when there is none. Null for null, for a view that lies
/// in another one, and without a session.
///
/// The view owns the widget, not the layout: the application must keep the view. When Qt deletes the widget, with a
/// parent of it or by itself, the view lives on and the next call makes another one. In a layout the widget's place
/// decides the view's frame.
[[nodiscard]] ZR_EXPORT QWidget* widget(NSView* view);
/// The widget of a window that is on the screen; null for null and for one that never was.
[[nodiscard]] ZR_EXPORT QWidget* widget(NSWindow* window);

} // namespace zr::qt
