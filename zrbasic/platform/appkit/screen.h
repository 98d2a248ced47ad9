#pragma once

#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/array.h>

namespace zr {

/// One of the desktop's screens, as it is at the moment of asking. Main thread only.
class ZR_EXPORT NSScreen : public NSObject {
    ZR_DECLARE_CLASS(NSScreen, NSObject)
  public:
    NSScreen();
    ~NSScreen() override;

    /// The first one has the origin of the screen coordinates. Empty without a toolkit; never null.
    [[nodiscard]] static Ref<NSArray> screens();
    /// The first of them; null when there is none.
    [[nodiscard]] static Ref<NSScreen> mainScreen();

    /// In points, the origin at the lower left.
    [[nodiscard]] NSRect frame() const { return m_state.frame; }
    /// Without what the desktop keeps for itself.
    [[nodiscard]] NSRect visibleFrame() const { return m_state.visibleFrame; }
    /// Pixels a point.
    [[nodiscard]] double backingScaleFactor() const { return m_state.backingScaleFactor; }

    /// True for a screen of the same frames and scale.
    [[nodiscard]] bool isEqual(NSObject* other) const override;
    [[nodiscard]] NSUInteger hash() const override;

  private:
    ScreenState m_state;
};

} // namespace zr
