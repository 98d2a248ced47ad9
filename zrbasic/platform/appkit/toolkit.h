#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/function_ref.h>

#include <vector>

namespace zr {

class NSAttributedString;
class NotificationService;

/// One screen as a toolkit sees it.
struct ScreenState {
    /// In points, the origin at the lower left of the first screen.
    NSRect frame;
    /// The part of it that the desktop leaves to windows.
    NSRect visibleFrame;
    /// Pixels a point.
    double backingScaleFactor = 1;
};

/// What the application's shell asks of a toolkit: everything that needs a screen, fonts or the desktop.
///
/// Each operation has a default for a program without a toolkit, so that all rules work as plain state. A toolkit
/// overrides what it can do. Asked on the main thread only.
class ZR_EXPORT Toolkit {
  public:
    Toolkit() = default;
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    virtual ~Toolkit();

    /// The height, in points, that `text` takes when laid out `width` points wide and as high as it likes, with
    /// `lineFragmentPadding` points left free at both ends of every line. Line spacing lies between lines, not behind
    /// the last. 0 without a toolkit.
    [[nodiscard]] virtual double heightOfText(NSAttributedString* text, double width, double lineFragmentPadding);

    /// The screens, the one with the desktop's origin first; none without a toolkit.
    [[nodiscard]] virtual std::vector<ScreenState> screens();

    /// Handles events and the main queue until `isDone` says so, which is asked at first and after everything that was
    /// handled. Without a toolkit, the main queue alone.
    virtual void runLoopUntil(FunctionRef<bool()> isDone);

    /// What delivers notifications to the user; null, without a toolkit, delivers nothing. Owned by the toolkit.
    [[nodiscard]] virtual NotificationService* notificationService();
};

/// The toolkit in use; never null, as one that can do nothing stands in for a missing one.
[[nodiscard]] ZR_EXPORT Toolkit& currentToolkit();

/// Puts `toolkit` in use, or none for null, and gives back what was in use, null for none. The toolkit is borrowed and
/// must outlive its use.
ZR_EXPORT Toolkit* setCurrentToolkit(Toolkit* toolkit);

} // namespace zr
