#include <zrbasic/platform/appkit/layer.h>

#include <zrbasic/platform/runtime/message.h>

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

} // namespace zr
