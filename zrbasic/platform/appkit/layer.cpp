#include <zrbasic/platform/appkit/layer.h>

#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>

namespace zr {

ZR_DEFINE_CLASS(CALayer) {
    is.method<&CALayer::backgroundColor>("backgroundColor");
    is.method<&CALayer::setBackgroundColor>("setBackgroundColor:");
    is.method<&CALayer::borderColor>("borderColor");
    is.method<&CALayer::setBorderColor>("setBorderColor:");
    is.method<&CALayer::borderWidth>("borderWidth");
    is.method<&CALayer::setBorderWidth>("setBorderWidth:");
    is.method<&CALayer::cornerRadius>("cornerRadius");
    is.method<&CALayer::setCornerRadius>("setCornerRadius:");
    is.method<&CALayer::position>("position");
    is.method<&CALayer::setPosition>("setPosition:");
    is.method<&CALayer::anchorPoint>("anchorPoint");
    is.method<&CALayer::setAnchorPoint>("setAnchorPoint:");
    is.method<&CALayer::addAnimation_forKey>("addAnimation:forKey:");
    is.method<&CALayer::animationForKey>("animationForKey:");
    is.method<&CALayer::removeAnimationForKey>("removeAnimationForKey:");
    is.method<&CALayer::delegate>("delegate");
    is.method<&CALayer::setDelegate>("setDelegate:");
}

CALayer::CALayer() = default;
CALayer::~CALayer() = default;

void CALayer::changed() {
    if (const id view = delegate()) {
        send<void>(view, "setNeedsDisplay:"_sel, true);
    }
}

void CALayer::setBackgroundColor(NSColor* color) {
    m_backgroundColor = Ref<NSColor>(color);
    changed();
}

void CALayer::setBorderColor(NSColor* color) {
    m_borderColor = Ref<NSColor>(color);
    changed();
}

void CALayer::setBorderWidth(double width) {
    m_borderWidth = width;
    changed();
}

void CALayer::setCornerRadius(double radius) {
    m_cornerRadius = radius;
    changed();
}

void CALayer::setPosition(NSPoint position) {
    m_position = position;
    changed();
}

void CALayer::setAnchorPoint(NSPoint point) {
    m_anchorPoint = point;
    changed();
}

ViewPeer* CALayer::peer() const {
    const id delegate = this->delegate();
    const auto* const view = cast<NSView>(delegate);
    return view ? view->peer() : nullptr;
}

void CALayer::addAnimation_forKey(CAAnimation* animation, NSString* key) {
    if (!animation) {
        return;
    }
    const Ref<CAAnimation> kept(animation);
    removeAnimationForKey(key);
    m_animations.push_back({key ? Ref<NSString>(cast<NSString>(key->copy())) : nullptr, kept});
    if (auto* const keyframes = cast<CAKeyframeAnimation>(animation)) {
        play(keyframes);
    }
}

Ref<CAAnimation> CALayer::animationForKey(NSString* key) const {
    for (const KeyedAnimation& one : m_animations) {
        if (one.key && one.key->isEqual(key)) {
            return one.animation;
        }
    }
    return nullptr;
}

void CALayer::removeAnimationForKey(NSString* key) {
    const Ref<CAAnimation> animation = animationForKey(key);
    if (!animation) {
        return;
    }
    const bool isPlayed = m_played == animation;
    forget(animation);
    ViewPeer* const peer = this->peer();
    if (peer && isPlayed) {
        // A turn over nothing takes the place of the one that is being played.
        peer->playRotation(m_anchorPoint, {}, 0, [] {});
    }
}

void CALayer::forget(const CAAnimation* animation) {
    std::erase_if(m_animations, [animation](const KeyedAnimation& one) { return one.animation == animation; });
    if (m_played == animation) {
        m_played = nullptr;
    }
}

void CALayer::play(CAKeyframeAnimation* animation) {
    ViewPeer* const peer = this->peer();
    if (!peer || !"transform.rotation.z"_ns->isEqual(animation->keyPath())) {
        return;
    }
    const std::vector<double> angles = animation->numbersToPass();
    const Ref<CAAnimation> kept(animation);
    m_played = kept;
    // Whatever ends it: the layer may be gone by then.
    peer->playRotation(m_anchorPoint, angles, animation->totalDuration(), [layer = Weak<CALayer>(this), kept] {
        if (const Ref<CALayer> living = layer.lock()) {
            living->forget(kept);
        }
    });
}

} // namespace zr
