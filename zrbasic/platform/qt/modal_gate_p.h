#pragma once

#include <QEvent>

class QWidget;

namespace zr::qt {

/// Whether it is something that a user does: with the pointer, the keyboard, or by touch.
[[nodiscard]] bool isInput(QEvent::Type type);
/// Whether a modal session keeps this event, which has come to the window of that top-level widget, from it: input for
/// another window than the session's, and a window of ours being closed by the user. Popups, what belongs to the
/// session's window, and dialogs that Qt itself runs modally are let through.
[[nodiscard]] bool isKeptOut(const QWidget& topLevel, QEvent& event);

} // namespace zr::qt
