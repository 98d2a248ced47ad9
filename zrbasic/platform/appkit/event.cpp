#include <zrbasic/platform/appkit/event.h>

#include <zrbasic/platform/appkit/tracking_area.h>

namespace zr {

ZR_DEFINE_CLASS(NSEvent) {
    is.method<&NSEvent::type>("type");
    is.method<&NSEvent::locationInWindow>("locationInWindow");
    is.method<&NSEvent::modifierFlags>("modifierFlags");
    is.method<&NSEvent::timestamp>("timestamp");
    is.method<&NSEvent::clickCount>("clickCount");
    is.method<&NSEvent::buttonNumber>("buttonNumber");
    is.method<&NSEvent::characters>("characters");
    is.method<&NSEvent::isARepeat>("isARepeat");
    is.method<&NSEvent::deltaX>("deltaX");
    is.method<&NSEvent::deltaY>("deltaY");
    is.method<&NSEvent::trackingArea>("trackingArea");
}

NSEvent::NSEvent() = default;
NSEvent::~NSEvent() = default;

Ref<NSEvent> NSEvent::eventWithFields(EventFields fields) {
    Ref<NSEvent> event = alloc<NSEvent>();
    event->m_fields = std::move(fields);
    return event;
}

Ref<NSTrackingArea> NSEvent::trackingArea() const {
    return m_fields.trackingArea;
}

id NSEvent::copy() const {
    return id(const_cast<NSEvent*>(this));
}

} // namespace zr
