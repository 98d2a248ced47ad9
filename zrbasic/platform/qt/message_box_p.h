#pragma once

#include <zrbasic/platform/runtime/types.h>

namespace zr {
class NSAlert;
}

namespace zr::qt {

/// Asks what the alert says, in front of the key window and instead of everything else, and gives the number of the
/// button that was pressed, from 0 on.
///
/// Return presses the first button. Escape, and closing the box otherwise, press the one that is called "Cancel", or
/// the last one. An alert without buttons gets one, so that it can be answered. What an event raises meanwhile closes
/// the box and passes through.
[[nodiscard]] NSInteger runMessageBox(NSAlert& alert);

} // namespace zr::qt
