#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <cstdint>
#include <functional>

/// The system beep, which tells the user that an input was refused. All of it may be used from any thread.
namespace zr {

/// Counts one beep and sounds it, if a toolkit has said how.
ZR_EXPORT void NSBeep();

/// Says how a beep is sounded: a toolkit's job. Nothing (the default) makes beeps silent.
///
/// The handler runs on the thread that beeps and may itself replace the handler; it must not throw.
ZR_EXPORT void setBeepHandler(std::function<void()> handler);

/// How often `NSBeep` was called in this process, silent calls included.
[[nodiscard]] ZR_EXPORT std::uint64_t beepCount();

} // namespace zr
