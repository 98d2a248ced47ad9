#include <zrbasic/ui/callback_target.h>

#include <zrbasic/platform/runtime/association.h>

#include <utility>

namespace zr {
namespace {

const char keptTarget = 0;

template <class Sender>
void setCallbackOf(Sender* sender, ZRXCallbackTarget::Callback callback) {
    if (!sender) {
        return;
    }
    const bool isEmpty = !callback;
    const auto target = isEmpty ? nullptr : ZRXCallbackTarget::targetWithCallback(std::move(callback));
    sender->setTarget(target);
    sender->setAction(isEmpty ? SEL() : "invoke:"_sel);
    // The one before is let go last.
    objc_setAssociatedObject(sender, &keptTarget, target, OBJC_ASSOCIATION_RETAIN_NONATOMIC);
}

} // namespace

ZR_DEFINE_CLASS(ZRXCallbackTarget) {
    is.method<&ZRXCallbackTarget::invoke>("invoke:");
}

ZRXCallbackTarget::~ZRXCallbackTarget() = default;

Ref<ZRXCallbackTarget> ZRXCallbackTarget::targetWithCallback(Callback callback) {
    Ref<ZRXCallbackTarget> made = make<ZRXCallbackTarget>();
    made->m_callback = std::move(callback);
    return made;
}

void ZRXCallbackTarget::invoke(NSObject* sender) {
    // A copy, as the callback may let go of the target.
    if (const Callback callback = m_callback) {
        callback(sender);
    }
}

void setCallback(NSControl* self, ZRXCallbackTarget::Callback callback) {
    setCallbackOf(self, std::move(callback));
}

void setCallback(NSMenuItem* self, ZRXCallbackTarget::Callback callback) {
    setCallbackOf(self, std::move(callback));
}

} // namespace zr
