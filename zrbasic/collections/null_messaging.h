#pragma once

#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/runtime/invocation.h>

/// Messages that the null object does not know by itself, but a mutable array, dictionary or string, a number, a date
/// or a data object would, give zero instead of raising: 0, 0.0, false, null, a zeroed structure. Always on, and needs
/// no call. Whatever none of the six knows still raises `NSInvalidArgumentException`.
///
///     send<NSInteger>(NSNull::null(), "integerValue"_sel)   // 0
///
/// The two operations below are how messages arrive there. Safe from any thread.
namespace zr {

// NSNull(NullSafe)

/// The null object's own signature for the operation, or else that of the first of the six classes whose instances
/// have it; null when there is none. A class that raises while it is asked is passed over.
[[nodiscard]] ZR_EXPORT Ref<NSMethodSignature> methodSignatureForSelector(NSNull* self, SEL selector);
/// Sends the message to nothing, which gives zero.
ZR_EXPORT void forwardInvocation(NSNull* self, NSInvocation* invocation);

} // namespace zr
