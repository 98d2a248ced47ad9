#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

/// Hands everything on to its window, and plays what is animated.
class WindowAnimator : public NSObject {
    ZR_OBJECT(WindowAnimator, NSObject)
  public:
    [[nodiscard]] static id animatorOf(NSWindow* window) {
        Ref<WindowAnimator> animator = alloc<WindowAnimator>();
        animator->m_window = Ref<NSWindow>(window);
        return animator;
    }

    void setFrameOrigin(NSPoint origin) {
        const Ref<NSDictionary> animations = send<Ref<NSDictionary>>(m_window, "animations"_sel);
        const id found = animations ? animations->objectForKey("frameOrigin"_ns) : nullptr;
        // The frame comes first: what is played ends there, whatever path it has taken.
        send<void>(m_window, "setFrameOrigin:"_sel, origin);
        const auto* const animation = cast<CAKeyframeAnimation>(found);
        WindowPeer* const peer = m_window->peer();
        if (!animation || !peer) {
            return;
        }
        const std::vector<NSPoint> places = animation->placesToPass();
        const double seconds = animation->totalDuration();
        if (!places.empty() && seconds > 0) {
            peer->playFrameOrigins(places, seconds);
        }
    }
    ZR_METHOD(setFrameOrigin, "setFrameOrigin:")

    [[nodiscard]] bool respondsToSelector(SEL selector) const override {
        return NSObject::respondsToSelector(selector) || m_window->respondsToSelector(selector);
    }
    [[nodiscard]] id forwardingTargetForSelector(SEL) const override { return m_window; }

  private:
    Ref<NSWindow> m_window;
};

} // namespace

Ref<NSDictionary> NSWindow::animations() const {
    return m_animations ? m_animations : NSDictionary::dictionary();
}

void NSWindow::setAnimations(NSDictionary* animations) {
    m_animations = animations ? Ref<NSDictionary>(cast<NSDictionary>(animations->copy())) : nullptr;
}

id NSWindow::animator() {
    return WindowAnimator::animatorOf(this);
}

} // namespace zr
