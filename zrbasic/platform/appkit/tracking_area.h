#pragma once

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/declare.h>

namespace zr {

/// What an area tells its owner of, and when; a sum of these.
enum NSTrackingAreaOptions : NSUInteger {
    NSTrackingMouseEnteredAndExited = 0x01,
    NSTrackingMouseMoved = 0x02,
    NSTrackingCursorUpdate = 0x04,
    NSTrackingActiveWhenFirstResponder = 0x10,
    NSTrackingActiveInKeyWindow = 0x20,
    NSTrackingActiveInActiveApp = 0x40,
    NSTrackingActiveAlways = 0x80,
    NSTrackingAssumeInside = 0x100,
    /// The whole of what is visible of the view, whatever the rectangle.
    NSTrackingInVisibleRect = 0x200,
    NSTrackingEnabledDuringMouseDrag = 0x400,
};

/// A part of a view over which the pointer is followed. Belongs to the view that it was added to; an owner, who is
/// sent `mouseEntered:` and its kin, is not kept. Never changes. Main thread only.
class ZR_EXPORT NSTrackingArea : public NSObject {
    ZR_DECLARE_CLASS(NSTrackingArea, NSObject)
  public:
    NSTrackingArea();
    ~NSTrackingArea() override;

    /// `rect` is in the view's own coordinates; owner and user info may be null.
    id initWithRect_options_owner_userInfo(NSRect rect, NSUInteger options, NSObject* owner, NSDictionary* userInfo);

    [[nodiscard]] NSRect rect() const { return m_rect; }
    [[nodiscard]] NSUInteger options() const { return m_options; }
    /// Null when there is none, or it is gone.
    [[nodiscard]] id owner() const { return m_owner.lock(); }
    [[nodiscard]] Ref<NSDictionary> userInfo() const { return m_userInfo; }

  private:
    NSRect m_rect;
    NSUInteger m_options = 0;
    Weak<NSObject> m_owner;
    Ref<NSDictionary> m_userInfo;
};

} // namespace zr
