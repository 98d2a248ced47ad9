#pragma once

class QWidget;

/// What is done with input before Qt hands it to widgets.
namespace zr::qt {

/// From here on `hitTest:` decides which view a click goes to, the pointer is followed for tracking areas and cursor
/// rectangles, key equivalents are looked for first, and a modal session keeps what it must from other windows. Needs
/// Qt's application.
void installApplicationFilters();
/// Nothing of that any more; deletes what was discarded and still waited for Qt's loop.
void removeApplicationFilters();

/// Something in that top-level widget has moved, come or gone under the pointer: looks again, as soon as the loop comes
/// round.
void reconsiderPointer(QWidget* topLevel);

} // namespace zr::qt
