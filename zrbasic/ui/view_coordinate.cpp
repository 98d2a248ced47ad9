#include <zrbasic/platform/runtime/message.h>
#include <zrbasic/ui/coordinate.h>
#include <zrbasic/ui/view.h>

namespace zr {

ZR_GROUP(NSView, CoordinateHelper) {
    is.adopt(ZRXCoordinateProtocol::protocolObject(), nullptr);
    is.method<static_cast<double (*)(NSView*)>(&zr_minX)>("zr_minX");
    is.method<static_cast<void (*)(NSView*, double)>(&setZr_minX)>("setZr_minX:");
    is.method<static_cast<double (*)(NSView*)>(&zr_minY)>("zr_minY");
    is.method<static_cast<void (*)(NSView*, double)>(&setZr_minY)>("setZr_minY:");
    is.method<static_cast<double (*)(NSView*)>(&zr_maxX)>("zr_maxX");
    is.method<static_cast<double (*)(NSView*)>(&zr_maxY)>("zr_maxY");
    is.method<static_cast<double (*)(NSView*)>(&zr_width)>("zr_width");
    is.method<static_cast<void (*)(NSView*, double)>(&setZr_width)>("setZr_width:");
    is.method<static_cast<double (*)(NSView*)>(&zr_height)>("zr_height");
    is.method<static_cast<void (*)(NSView*, double)>(&setZr_height)>("setZr_height:");
    is.method<static_cast<NSSize (*)(NSView*)>(&zr_size)>("zr_size");
    is.method<static_cast<void (*)(NSView*, NSSize)>(&setZr_size)>("setZr_size:");
    is.method<static_cast<NSRect (*)(NSView*)>(&zr_frame)>("zr_frame");
    is.method<static_cast<void (*)(NSView*, NSRect)>(&setZr_frame)>("setZr_frame:");
    is.method<static_cast<NSPoint (*)(NSView*)>(&zr_origin)>("zr_origin");
    is.method<static_cast<void (*)(NSView*, NSPoint)>(&setZr_origin)>("setZr_origin:");
}

double zr_minX(NSView* self) {
    return zr_frame(self).origin.x;
}

void setZr_minX(NSView* self, double x) {
    setZr_origin(self, {x, zr_minY(self)});
}

double zr_minY(NSView* self) {
    return zr_frame(self).origin.y;
}

void setZr_minY(NSView* self, double y) {
    setZr_origin(self, {zr_minX(self), y});
}

double zr_maxX(NSView* self) {
    return NSMaxX(zr_frame(self));
}

double zr_maxY(NSView* self) {
    return NSMaxY(zr_frame(self));
}

double zr_width(NSView* self) {
    return zr_frame(self).size.width;
}

void setZr_width(NSView* self, double width) {
    setZr_size(self, {width, zr_height(self)});
}

double zr_height(NSView* self) {
    return zr_frame(self).size.height;
}

void setZr_height(NSView* self, double height) {
    setZr_size(self, {zr_width(self), height});
}

NSSize zr_size(NSView* self) {
    return zr_frame(self).size;
}

void setZr_size(NSView* self, NSSize size) {
    send<void>(self, "setFrameSize:"_sel, size);
}

NSRect zr_frame(NSView* self) {
    return send<NSRect>(self, "frame"_sel);
}

void setZr_frame(NSView* self, NSRect frame) {
    send<void>(self, "setFrame:"_sel, frame);
}

NSPoint zr_origin(NSView* self) {
    return zr_frame(self).origin;
}

void setZr_origin(NSView* self, NSPoint origin) {
    send<void>(self, "setFrameOrigin:"_sel, origin);
}

} // namespace zr
