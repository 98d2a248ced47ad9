#include <zrbasic/platform/appkit/application.h>

#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>

namespace zr {

ZR_DEFINE_CLASS(NSApplication) {
    is.classMethod<&NSApplication::sharedApplication>("sharedApplication");
    is.method<&NSApplication::windows>("windows");
    is.method<&NSApplication::orderedWindows>("orderedWindows");
    is.method<&NSApplication::windowWithWindowNumber>("windowWithWindowNumber:");
    is.method<&NSApplication::keyWindow>("keyWindow");
    is.method<&NSApplication::runModalForWindow>("runModalForWindow:");
    is.method<&NSApplication::stopModal>("stopModal");
    is.method<&NSApplication::stopModalWithCode>("stopModalWithCode:");
    is.method<&NSApplication::modalWindow>("modalWindow");
    is.method<&NSApplication::presentationOptions>("presentationOptions");
    is.method<&NSApplication::setPresentationOptions>("setPresentationOptions:");
}

NSApplication::~NSApplication() = default;

Ref<NSApplication> NSApplication::sharedApplication() {
    // Never torn down: windows may be asked about until the process ends.
    static NSApplication* const application = alloc<NSApplication>().leak();
    return Ref<NSApplication>(application);
}

Ref<NSArray> NSApplication::windows() const {
    std::vector<id> windows;
    for (const Weak<NSWindow>& window : m_windows) {
        if (Ref<NSWindow> living = window.lock()) {
            windows.push_back(std::move(living));
        }
    }
    return NSArray::fromElements(std::move(windows));
}

Ref<NSArray> NSApplication::orderedWindows() const {
    return NSArray::fromElements(std::vector<id>(m_ordered.begin(), m_ordered.end()));
}

Ref<NSWindow> NSApplication::windowWithWindowNumber(NSInteger number) const {
    for (const Weak<NSWindow>& window : m_windows) {
        if (Ref<NSWindow> living = window.lock(); living && living->windowNumber() == number) {
            return living;
        }
    }
    return nullptr;
}

Ref<NSWindow> NSApplication::keyWindow() const {
    return m_keyWindow.lock();
}

NSInteger NSApplication::runModalForWindow(NSWindow* window) {
    if (!window) {
        return NSModalResponseAbort;
    }
    Session session{Ref<NSWindow>(window)};
    m_sessions.push_back(&session);
    // However the loop ends, the session does.
    const struct Ending {
        NSApplication& application;
        Session& session;
        ~Ending() { std::erase(application.m_sessions, &session); }
    } ending{*this, session};
    const RunLoopModeScope mode(NSModalPanelRunLoopMode());
    send<void>(window, "makeKeyAndOrderFront:"_sel, nullptr);
    currentToolkit().runLoopUntil([&session] { return session.response != NSModalResponseContinue; });
    return session.response;
}

void NSApplication::stopModal() {
    send<void>(this, "stopModalWithCode:"_sel, NSInteger{NSModalResponseStop});
}

void NSApplication::stopModalWithCode(NSInteger response) {
    if (!m_sessions.empty()) {
        m_sessions.back()->response = response;
    }
}

Ref<NSWindow> NSApplication::modalWindow() const {
    return m_sessions.empty() ? nullptr : m_sessions.back()->window;
}

void NSApplication::windowWasMade(NSWindow* window) {
    std::erase_if(m_windows, [](const Weak<NSWindow>& known) { return !known.lock(); });
    m_windows.push_back(Weak<NSWindow>(window));
}

bool NSApplication::isShown(const NSWindow* window) const {
    return std::find(m_ordered.begin(), m_ordered.end(), window) != m_ordered.end();
}

void NSApplication::show(NSWindow* window, bool isInFront, NSWindow* relative) {
    const Ref<NSWindow> kept(window);
    std::erase(m_ordered, window);
    const auto found = std::find(m_ordered.begin(), m_ordered.end(), relative);
    auto place = isInFront ? m_ordered.begin() : m_ordered.end();
    if (found != m_ordered.end()) {
        place = isInFront ? found : std::next(found);
    }
    m_ordered.insert(place, kept);
}

void NSApplication::hide(NSWindow* window) {
    const Ref<NSWindow> kept(window);
    std::erase(m_ordered, window);
    if (keyWindow() != window) {
        return;
    }
    const auto next = std::find_if(m_ordered.begin(), m_ordered.end(),
                                   [](const Ref<NSWindow>& other) { return other->canBecomeKeyWindow(); });
    makeKey(next == m_ordered.end() ? nullptr : Ref<NSWindow>(*next).get());
}

void NSApplication::makeKey(NSWindow* window) {
    const Ref<NSWindow> before = keyWindow();
    if (before == window) {
        return;
    }
    const Ref<NSWindow> kept(window);
    m_keyWindow = Weak<NSWindow>(window);
    if (before) {
        send<void>(before, "resignKeyWindow"_sel);
    }
    // Whoever was told may have made another one key.
    if (window && keyWindow() == window) {
        send<void>(window, "becomeKeyWindow"_sel);
    }
}

} // namespace zr
