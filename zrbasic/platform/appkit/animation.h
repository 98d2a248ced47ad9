#pragma once

#include <zrbasic/platform/appkit/path.h>
#include <zrbasic/platform/foundation/array.h>

namespace zr {

class NSString;

/// A change that is played on the screen and leaves the object as it is. Main thread only.
class ZR_EXPORT CAAnimation : public NSObject {
    ZR_DECLARE_CLASS(CAAnimation, NSObject)
  public:
    CAAnimation();
    ~CAAnimation() override;

    /// In seconds, of one run: 0.25 at first. One that is not a finite number above 0 is over as soon as it begins.
    [[nodiscard]] double duration() const { return m_duration; }
    void setDuration(double seconds) { m_duration = seconds; }
    /// How many runs there are, 1 at first; half a run ends half way. What is not a finite number above 0 counts as 1.
    [[nodiscard]] double repeatCount() const { return m_repeatCount; }
    void setRepeatCount(double count) { m_repeatCount = count; }

  private:
    double m_duration = 0.25;
    double m_repeatCount = 1;
};

/// A change that goes from one key value to the next, each in an equal share of the time.
///
/// A place moves along `path`; anything else takes on the `values` one after the other.
class ZR_EXPORT CAKeyframeAnimation : public CAAnimation {
    ZR_DECLARE_CLASS(CAKeyframeAnimation, CAAnimation)
  public:
    CAKeyframeAnimation();
    ~CAKeyframeAnimation() override;

    /// One without path and values.
    [[nodiscard]] static Ref<CAKeyframeAnimation> animation();
    [[nodiscard]] static Ref<CAKeyframeAnimation> animationWithKeyPath(NSString* keyPath);

    /// What is animated, as in "transform.rotation.z"; null at first. Copied when set.
    [[nodiscard]] Ref<NSString> keyPath() const;
    void setKeyPath(NSString* keyPath);
    /// Null at first. Kept, and not to be changed any more.
    [[nodiscard]] Ref<CGPath> path() const { return m_path; }
    void setPath(CGPath* path) { m_path = Ref<CGPath>(path); }
    /// Null at first. Copied when set.
    [[nodiscard]] Ref<NSArray> values() const { return m_values; }
    void setValues(NSArray* values);

    // For those who play it

    /// The places to pass in all runs together, in equal shares of `totalDuration`. A path with curves has 16 shares
    /// for each piece, the straight ones too. Empty without a path, and without a piece that leads on.
    ///
    /// A run after the first sets out from where the one before has ended; a broken one ends at the place that is nearest
    /// to its time. Beyond 100,000 places there are no further runs.
    [[nodiscard]] std::vector<NSPoint> placesToPass() const;
    /// The same for `values`, where there is no path. Empty with fewer than two, and when one is no finite number.
    [[nodiscard]] std::vector<double> numbersToPass() const;
    /// In seconds; 0 when there is nothing to play.
    [[nodiscard]] double totalDuration() const;

  private:
    Ref<NSString> m_keyPath;
    Ref<CGPath> m_path;
    Ref<NSArray> m_values;
};

} // namespace zr
