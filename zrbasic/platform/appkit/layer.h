#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/foundation/geometry.h>

#include <vector>

namespace zr {

class CAAnimation;
class CAKeyframeAnimation;
class NSString;
class ViewPeer;

/// What is drawn beneath and around a view's own drawing: a background with rounded corners and a border inside them.
///
/// A change tells the view to draw itself again. Main thread only.
class ZR_EXPORT CALayer : public NSObject {
    ZR_DECLARE_CLASS(CALayer, NSObject)
  public:
    CALayer();
    ~CALayer() override;

    /// Null, at first, for none.
    [[nodiscard]] Ref<NSColor> backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(NSColor* color);
    /// Black at first; null draws no border.
    [[nodiscard]] Ref<NSColor> borderColor() const { return m_borderColor; }
    void setBorderColor(NSColor* color);
    /// In points, inside the bounds; 0 at first.
    [[nodiscard]] double borderWidth() const { return m_borderWidth; }
    void setBorderWidth(double width);
    /// In points; 0 at first.
    [[nodiscard]] double cornerRadius() const { return m_cornerRadius; }
    void setCornerRadius(double radius);
    /// Where the anchor lies in the coordinates of the view above, and which share of the layer's size lies to the left
    /// of it and below. What turns the layer turns it about that point.
    [[nodiscard]] NSPoint position() const { return m_position; }
    void setPosition(NSPoint position);
    [[nodiscard]] NSPoint anchorPoint() const { return m_anchorPoint; }
    void setAnchorPoint(NSPoint point);

    /// Plays the animation on the screen, and keeps it under `key` until that is over or it is removed; one that was
    /// there under the key gives way to it. Without a key it cannot be reached any more. Null does nothing.
    ///
    /// What is played is the key path "transform.rotation.z", which turns the view with everything in it about its
    /// anchor point, in radians against the clock, and only one animation at a time, the latest, and for a view that has
    /// been on a screen; any other is just kept.
    void addAnimation_forKey(CAAnimation* animation, NSString* key);
    /// Null when there is none.
    [[nodiscard]] Ref<CAAnimation> animationForKey(NSString* key) const;
    void removeAnimationForKey(NSString* key);

    /// The view that is sent `setNeedsDisplay:` after a change; not kept.
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

  private:
    struct KeyedAnimation {
        Ref<NSString> key;
        Ref<CAAnimation> animation;
    };

    void changed();
    /// The view's peer; null when nothing stands on a screen.
    [[nodiscard]] ViewPeer* peer() const;
    void play(CAKeyframeAnimation* animation);
    void forget(const CAAnimation* animation);

    Ref<NSColor> m_backgroundColor;
    Ref<NSColor> m_borderColor = NSColor::blackColor();
    double m_borderWidth = 0;
    double m_cornerRadius = 0;
    NSPoint m_position;
    NSPoint m_anchorPoint{0.5, 0.5};
    std::vector<KeyedAnimation> m_animations;
    /// The latest that was handed to the peer.
    Ref<CAAnimation> m_played;
    Weak<NSObject> m_delegate;
};

} // namespace zr
