#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

/// What is known about threads: which one is the main one.
class ZR_EXPORT NSThread : public NSObject {
    ZR_DECLARE_CLASS(NSThread, NSObject)
  public:
    ~NSThread() override;

    /// Whether the caller is the thread that the process began with.
    [[nodiscard]] static bool isMainThread();
};

} // namespace zr
