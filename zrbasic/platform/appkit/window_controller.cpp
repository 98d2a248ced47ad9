#include <zrbasic/platform/appkit/window_controller.h>

#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_DEFINE_CLASS(NSWindowController) {
    is.method<&NSWindowController::initWithWindow>("initWithWindow:");
    is.method<&NSWindowController::window>("window");
    is.method<&NSWindowController::setWindow>("setWindow:");
    is.method<&NSWindowController::showWindow>("showWindow:");
    is.method<&NSWindowController::close>("close");
}

NSWindowController::NSWindowController() = default;
NSWindowController::~NSWindowController() = default;

id NSWindowController::initWithWindow(NSWindow* window) {
    setWindow(window);
    return id(this);
}

Ref<NSWindow> NSWindowController::window() const {
    return m_window;
}

void NSWindowController::setWindow(NSWindow* window) {
    if (m_window && m_window->windowController() == this) {
        m_window->setWindowController(nullptr);
    }
    m_window = Ref<NSWindow>(window);
    if (m_window) {
        m_window->setWindowController(this);
    }
}

void NSWindowController::showWindow(NSObject* sender) {
    if (const Ref<NSWindow> window = this->window()) {
        send<void>(window, "makeKeyAndOrderFront:"_sel, sender);
    }
}

void NSWindowController::close() {
    if (const Ref<NSWindow> window = this->window()) {
        send<void>(window, "close"_sel);
    }
}

} // namespace zr
