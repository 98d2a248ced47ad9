#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

class NSTrackingArea;

enum NSEventType : NSUInteger {
    NSEventTypeLeftMouseDown = 1,
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseDown = 3,
    NSEventTypeRightMouseUp = 4,
    NSEventTypeMouseMoved = 5,
    NSEventTypeLeftMouseDragged = 6,
    NSEventTypeRightMouseDragged = 7,
    NSEventTypeMouseEntered = 8,
    NSEventTypeMouseExited = 9,
    NSEventTypeKeyDown = 10,
    NSEventTypeKeyUp = 11,
    NSEventTypeFlagsChanged = 12,
    NSEventTypeCursorUpdate = 17,
    NSEventTypeScrollWheel = 22,
    NSEventTypeOtherMouseDown = 25,
    NSEventTypeOtherMouseUp = 26,
    NSEventTypeOtherMouseDragged = 27,
};

/// Keys held down during an event; a sum of these.
enum NSEventModifierFlags : NSUInteger {
    NSEventModifierFlagCapsLock = 1 << 16,
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20,
};

/// What an event says; what does not go with its type stays as it is here.
struct EventFields {
    NSEventType type = NSEventTypeLeftMouseDown;
    /// In the coordinates of the window, the origin at its lower left.
    NSPoint location;
    NSUInteger modifierFlags = 0;
    /// In seconds since some moment before the program started.
    double timestamp = 0;
    /// 1 for a click, 2 for the second of a double click.
    NSInteger clickCount = 0;
    NSInteger buttonNumber = 0;
    /// What was typed; null for other events than keys.
    Ref<NSString> characters;
    bool isRepeat = false;
    /// Of a wheel, in lines.
    double deltaX = 0;
    double deltaY = 0;
    /// Which area was entered or left; null for other events.
    Ref<NSTrackingArea> trackingArea;
};

/// One thing that a user did, on its way through the responders. Never changes. Main thread only.
class ZR_EXPORT NSEvent : public NSObject {
    ZR_DECLARE_CLASS(NSEvent, NSObject)
  public:
    NSEvent();
    ~NSEvent() override;

    [[nodiscard]] static Ref<NSEvent> eventWithFields(EventFields fields);

    [[nodiscard]] NSEventType type() const { return m_fields.type; }
    [[nodiscard]] NSPoint locationInWindow() const { return m_fields.location; }
    [[nodiscard]] NSUInteger modifierFlags() const { return m_fields.modifierFlags; }
    [[nodiscard]] double timestamp() const { return m_fields.timestamp; }
    [[nodiscard]] NSInteger clickCount() const { return m_fields.clickCount; }
    [[nodiscard]] NSInteger buttonNumber() const { return m_fields.buttonNumber; }
    [[nodiscard]] Ref<NSString> characters() const { return m_fields.characters; }
    [[nodiscard]] bool isARepeat() const { return m_fields.isRepeat; }
    [[nodiscard]] double deltaX() const { return m_fields.deltaX; }
    [[nodiscard]] double deltaY() const { return m_fields.deltaY; }
    [[nodiscard]] Ref<NSTrackingArea> trackingArea() const;

    /// The event itself.
    [[nodiscard]] id copy() const override;

  private:
    EventFields m_fields;
};

} // namespace zr
