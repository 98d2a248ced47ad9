#pragma once

#include <QString>

namespace zr::qt {

/// HTML that Qt reads in reasonable time and memory, whatever it was before, with the same text in the same looks.
///
/// Elements that lie deeper in each other than anybody writes are left out, though not what is in them. Tables become
/// blocks, one for each cell, as the grid that Qt would build for them can be made to grow without bounds. Scripts,
/// comments and pictures go, and so does a style sheet that is longer than a message's.
[[nodiscard]] QString safeHTML(QStringView html);

} // namespace zr::qt
