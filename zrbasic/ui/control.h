#pragma once

#include <zrbasic/platform/appkit/control.h>

namespace zr {

// NSControl(ZRXHelper)

/// Sets who is sent the control's action, and then the action: in the place of those before, whatever the name says.
/// Null sends it along the responders, the empty selector sends nothing. A null control does nothing. Main thread only.
ZR_EXPORT void addTarget_action(NSControl* self, NSObject* target, SEL action);

} // namespace zr
