#pragma once

#include <zrbasic/platform/appkit/window.h>

class QWidget;

/// Views in windows that are Qt's own.
namespace zr::qt {

/// The window object that stands for a top-level widget of somebody else's, made when there is none: it lives as long
/// as the widget, and has the views in it look no different from those in a window of ours.
[[nodiscard]] Ref<NSWindow> ensureForeignWindow(QWidget& topLevel);
/// Null when there is none.
[[nodiscard]] Ref<NSWindow> presentForeignWindow(const QWidget& topLevel);
/// Lets go of all of them, as a session does at its end.
void forgetForeignWindows();
/// Lets Qt's tab key stop at the views in that top-level widget that can take the keyboard, and at no others.
void refreshTabStops(QWidget& topLevel);
/// Asks about the latest event whether a foreign window was reached by it, as then no view has dealt with it.
[[nodiscard]] bool takeUnhandled(NSWindow* window);

} // namespace zr::qt
