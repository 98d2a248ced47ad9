#include <zrbasic/ui/alert.h>

#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/thread.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

/// In nanoseconds.
constexpr std::int64_t deferral = 100'000'000;

id alertOfClass(Class* kind, NSObject* title, NSObject* message) {
    const id alert = send<id>(class_createInstance(kind), "init"_sel);
    detail::setUpAlert(cast<NSAlert>(alert), title, message);
    return alert;
}

id alertOfClassWithMessage(Class* kind, NSObject* message) {
    return alertOfClass(kind, nullptr, message);
}

} // namespace

ZR_GROUP(NSAlert, ZRXHelper) {
    is.receivingClassMethod<&alertOfClass>("alertWithTitle:message:");
    is.receivingClassMethod<&alertOfClassWithMessage>("alertWithMessage:");
    is.method<static_cast<void (*)(NSAlert*)>(&zr_runModal)>("zr_runModal");
}

void detail::setUpAlert(NSAlert* alert, NSObject* title, NSObject* message) {
    if (auto* const text = cast<NSString>(title)) {
        send<void>(alert, "setMessageText:"_sel, text);
    }
    if (auto* const text = cast<NSString>(message)) {
        send<void>(alert, "setInformativeText:"_sel, text);
    }
}

void zr_runModal(NSAlert* self) {
    if (!self) {
        return;
    }
    if (NSThread::isMainThread()) {
        send<NSInteger>(self, "runModal"_sel);
        return;
    }
    dispatch_async(dispatch_get_main_queue(), [alert = Ref<NSAlert>(self)] {
        dispatch_after(dispatch_time(DISPATCH_TIME_NOW, deferral), dispatch_get_main_queue(),
                       [alert] { send<NSInteger>(alert, "runModal"_sel); });
    });
}

} // namespace zr
