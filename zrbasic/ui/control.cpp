#include <zrbasic/ui/control.h>

#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_GROUP(NSControl, ZRXHelper) {
    is.method<&addTarget_action>("addTarget:action:");
}

void addTarget_action(NSControl* self, NSObject* target, SEL action) {
    send<void>(self, "setTarget:"_sel, target);
    send<void>(self, "setAction:"_sel, action);
}

} // namespace zr
