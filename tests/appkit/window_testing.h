#pragma once

#include "measuring_testing.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <utility>
#include <vector>

namespace zr {

/// Let a failed check show what it got.
inline void PrintTo(const NSPoint& point, std::ostream* out) {
    *out << point.x << ',' << point.y;
}
inline void PrintTo(const NSSize& size, std::ostream* out) {
    *out << size.width << 'x' << size.height;
}
inline void PrintTo(const NSRect& rect, std::ostream* out) {
    *out << rect.size.width << 'x' << rect.size.height << '+' << rect.origin.x << '+' << rect.origin.y;
}

namespace test {

/// A toolkit with one screen of 1440 by 900 points, 25 of which the desktop keeps at the bottom, and windows that write
/// down what they are told. It is in use as long as it stands.
class WindowToolkit : public MeasuringToolkit {
  public:
    /// Every character is 7 by 16 points.
    WindowToolkit() : MeasuringToolkit(7, {13, -3, 0}) {}

    std::vector<ScreenState> screens() override { return {{{{0, 0}, {1440, 900}}, {{0, 25}, {1440, 875}}, 1}}; }
    NSInteger askUser(NSAlert& alert) override { return whenAsked ? whenAsked(alert) : -1; }

    std::function<NSInteger(NSAlert&)> whenAsked;
};

inline Ref<NSEvent> mouseEvent(NSEventType type, NSPoint location) {
    EventFields fields;
    fields.type = type;
    fields.location = location;
    fields.clickCount = 1;
    return NSEvent::eventWithFields(fields);
}

inline Ref<NSEvent> keyEvent(NSString* characters, NSUInteger modifiers = 0, bool isRepeat = false) {
    EventFields fields;
    fields.type = NSEventTypeKeyDown;
    fields.characters = Ref<NSString>(characters);
    fields.modifierFlags = modifiers;
    fields.isRepeat = isRepeat;
    return NSEvent::eventWithFields(fields);
}

inline void later(std::function<void()> work) {
    dispatch_async(dispatch_get_main_queue(), std::move(work));
}

/// A window test leaves no window on the screen.
inline void hideAllWindows() {
    const auto shown = NSApplication::sharedApplication()->orderedWindows();
    for (const id& element : shown->elements()) {
        cast<NSWindow>(element)->orderOut(nullptr);
    }
}

} // namespace test
} // namespace zr
