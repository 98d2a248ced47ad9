#pragma once

#include "canvas_testing.h"

#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/scroller.h>
#include <zrbasic/platform/runtime/message.h>

#include <cmath>
#include <limits>
#include <string>

namespace zr::test {

inline Ref<NSEvent> mouseEvent(NSEventType type, double x, double y, NSUInteger keys = 0) {
    EventFields fields;
    fields.type = type;
    fields.location = {x, y};
    fields.clickCount = 1;
    fields.modifierFlags = keys;
    return NSEvent::eventWithFields(std::move(fields));
}

/// Writes down what it hears of a scroller: the part that was hit, and the value.
class ScrollListener : public NSObject {
    ZR_OBJECT(ScrollListener, NSObject)
  public:
    void scrolled(NSObject* sender) {
        const auto* const scroller = cast<NSScroller>(sender);
        log += std::to_string(scroller->hitPart()) + '@' + std::to_string(std::lround(scroller->doubleValue() * 100)) +
               ' ';
    }
    ZR_METHOD(scrolled, "scrolled:")

    std::string log;
};

} // namespace zr::test
