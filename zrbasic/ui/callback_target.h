#pragma once

#include <zrbasic/platform/appkit/control.h>
#include <zrbasic/platform/appkit/menu_item.h>

#include <functional>

namespace zr {

/// A target whose action runs a callback, for what is too small to be an operation of a class.
///
///     setCallback(button, [this](NSObject*) { placeOrder(); });
///
/// Main thread only.
class ZR_EXPORT ZRXCallbackTarget : public NSObject {
    ZR_DECLARE_CLASS(ZRXCallbackTarget, NSObject)
  public:
    /// Handed whoever, or whatever, is sent along with the action: a control, a menu item, a colour. Borrowed, and null
    /// when nothing is sent along.
    using Callback = std::function<void(NSObject* sender)>;

    ~ZRXCallbackTarget() override;

    /// Never null; an empty callback does nothing.
    [[nodiscard]] static Ref<ZRXCallbackTarget> targetWithCallback(Callback callback);

    /// The action, "invoke:". The callback may let go of everything, this target included.
    void invoke(NSObject* sender);

  private:
    Callback m_callback;
};

/// Makes a target of `callback` that the receiver keeps, and sends it the action, in the place of the target before. An
/// empty callback leaves no target, and the empty selector. A callback that keeps the receiver keeps it for ever.
/// A null receiver does nothing.
ZR_EXPORT void setCallback(NSControl* self, ZRXCallbackTarget::Callback callback);
ZR_EXPORT void setCallback(NSMenuItem* self, ZRXCallbackTarget::Callback callback);

} // namespace zr
