#include <zrbasic/platform/runtime/message.h>
#include <zrbasic/ui/coordinate.h>
#include <zrbasic/ui/window.h>

namespace zr {

ZR_GROUP(NSWindow, ZRXCoordinate) {
    is.adopt(ZRXCoordinateProtocol::protocolObject(), nullptr);
    is.method<static_cast<double (*)(NSWindow*)>(&zr_minX)>("zr_minX");
    is.method<static_cast<void (*)(NSWindow*, double)>(&setZr_minX)>("setZr_minX:");
    is.method<static_cast<double (*)(NSWindow*)>(&zr_minY)>("zr_minY");
    is.method<static_cast<void (*)(NSWindow*, double)>(&setZr_minY)>("setZr_minY:");
    is.method<static_cast<double (*)(NSWindow*)>(&zr_maxX)>("zr_maxX");
    is.method<static_cast<double (*)(NSWindow*)>(&zr_maxY)>("zr_maxY");
    is.method<static_cast<double (*)(NSWindow*)>(&zr_width)>("zr_width");
    is.method<static_cast<void (*)(NSWindow*, double)>(&setZr_width)>("setZr_width:");
    is.method<static_cast<double (*)(NSWindow*)>(&zr_height)>("zr_height");
    is.method<static_cast<void (*)(NSWindow*, double)>(&setZr_height)>("setZr_height:");
    is.method<static_cast<NSSize (*)(NSWindow*)>(&zr_size)>("zr_size");
    is.method<static_cast<void (*)(NSWindow*, NSSize)>(&setZr_size)>("setZr_size:");
    is.method<static_cast<NSRect (*)(NSWindow*)>(&zr_frame)>("zr_frame");
    is.method<static_cast<void (*)(NSWindow*, NSRect)>(&setZr_frame)>("setZr_frame:");
    is.method<static_cast<NSPoint (*)(NSWindow*)>(&zr_origin)>("zr_origin");
    is.method<static_cast<void (*)(NSWindow*, NSPoint)>(&setZr_origin)>("setZr_origin:");
}

double zr_minX(NSWindow* self) {
    return zr_frame(self).origin.x;
}

void setZr_minX(NSWindow* self, double x) {
    setZr_origin(self, {x, zr_minY(self)});
}

double zr_minY(NSWindow* self) {
    return zr_frame(self).origin.y;
}

void setZr_minY(NSWindow* self, double y) {
    setZr_origin(self, {zr_minX(self), y});
}

double zr_maxX(NSWindow* self) {
    return NSMaxX(zr_frame(self));
}

double zr_maxY(NSWindow* self) {
    return NSMaxY(zr_frame(self));
}

double zr_width(NSWindow* self) {
    return zr_frame(self).size.width;
}

void setZr_width(NSWindow* self, double width) {
    setZr_size(self, {width, zr_height(self)});
}

double zr_height(NSWindow* self) {
    return zr_frame(self).size.height;
}

void setZr_height(NSWindow* self, double height) {
    setZr_size(self, {zr_width(self), height});
}

NSSize zr_size(NSWindow* self) {
    return zr_frame(self).size;
}

void setZr_size(NSWindow* self, NSSize size) {
    send<void>(self, "setContentSize:"_sel, size);
}

NSRect zr_frame(NSWindow* self) {
    return send<NSRect>(self, "frame"_sel);
}

void setZr_frame(NSWindow* self, NSRect frame) {
    send<void>(self, "setFrame:display:"_sel, frame, true);
}

NSPoint zr_origin(NSWindow* self) {
    return zr_frame(self).origin;
}

void setZr_origin(NSWindow* self, NSPoint origin) {
    send<void>(self, "setFrameOrigin:"_sel, origin);
}

} // namespace zr
