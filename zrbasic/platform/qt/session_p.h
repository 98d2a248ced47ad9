#pragma once

#include <QByteArray>

namespace zr::qt {

/// The name of Qt's platform for an application that is made here: none where `isChosen`, as the user has named one.
///
/// X11 goes before Wayland, where windows cannot place themselves and the screen cannot be read; without a display there
/// is no screen.
[[nodiscard]] QByteArray platformName(bool isChosen, bool hasX11, bool hasWayland);

} // namespace zr::qt
