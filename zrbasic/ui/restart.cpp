#include <zrbasic/ui/restart.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/workspace.h>
#include <zrbasic/platform/foundation/bundle.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_DEFINE_CLASS(ZRRestartApplication) {
    is.classMethod<&ZRRestartApplication::restartApplication>("restartApplication");
}

ZRRestartApplication::~ZRRestartApplication() = default;

void ZRRestartApplication::restartApplication() {
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    send<void>(application, "hide:"_sel, nullptr);
    send<bool>(application, "setActivationPolicy:"_sel, NSApplicationActivationPolicyAccessory);
    // The program file and not what it lies in, as the new one is to run even while this one does.
    Ref<NSError>* const error = nullptr;
    send<bool>(NSWorkspace::sharedWorkspace(), "launchApplicationAtURL:options:configuration:error:"_sel,
               NSBundle::mainBundle()->executableURL(), NSUInteger{NSWorkspaceLaunchNewInstance},
               NSDictionary::dictionary(), error);
    send<void>(application, "terminate:"_sel, nullptr);
}

} // namespace zr
