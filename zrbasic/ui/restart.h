#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

/// Starts the application anew, after an update for example. Main thread only.
class ZR_EXPORT ZRRestartApplication : public NSObject {
    ZR_DECLARE_CLASS(ZRRestartApplication, NSObject)

  public:
    ~ZRRestartApplication() override;

    /// Hides the application, makes it an accessory, starts its program file as a new instance, without arguments, and
    /// terminates it, also when the new one could not be started. The delegate may still refuse that; there are two
    /// then.
    static void restartApplication();
};

} // namespace zr
