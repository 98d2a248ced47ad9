#pragma once

#include <zrbasic/platform/runtime/declare.h>

namespace zr {

/// The null object: stands for "no value" where a collection needs an object.
///
/// There is one in the process, and it is not the null pointer. It equals only itself and is described as "<null>".
/// Sent a message that it does not know by itself, it forwards: to nothing, until a group teaches it better.
class ZR_EXPORT NSNull final : public NSObject {
    ZR_DECLARE_CLASS(NSNull, NSObject)

  public:
    ~NSNull() override;

    /// The null object, borrowed: it lives as long as the process. Never null.
    [[nodiscard]] static NSNull* null();

    /// The null object, whichever one was being made.
    id init() override;

    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] Ref<NSString> description() const override;
    /// The null object itself.
    [[nodiscard]] id copy() const override;

    [[nodiscard]] Ref<NSMethodSignature> methodSignatureForSelector(SEL selector) const override;
    void forwardInvocation(NSInvocation* invocation) override;
};

/// Whether `object` is the null object; false for the null pointer.
[[nodiscard]] inline bool isNull(const NSObject* object) {
    return object && object == NSNull::null();
}

} // namespace zr
