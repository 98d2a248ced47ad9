#include <zrbasic/platform/appkit/application.h>

#include <zrbasic/platform/appkit/appearance.h>
#include <zrbasic/platform/appkit/delegate_telling_p.h>
#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>

namespace zr {
namespace {

void post(NSString* name, NSApplication* application) {
    NSNotificationCenter::defaultCenter()->postNotificationName_object(name, application);
}

} // namespace

ZR_DEFINE_CLASS(NSApplication) {
    is.classMethod<&NSApplication::sharedApplication>("sharedApplication");
    is.method<&NSApplication::delegate>("delegate");
    is.method<&NSApplication::setDelegate>("setDelegate:");
    is.method<&NSApplication::run>("run");
    is.method<&NSApplication::terminate>("terminate:");
    is.method<&NSApplication::replyToApplicationShouldTerminate>("replyToApplicationShouldTerminate:");
    is.method<&NSApplication::hide>("hide:");
    is.method<&NSApplication::unhide>("unhide:");
    is.method<&NSApplication::isHidden>("isHidden");
    is.method<&NSApplication::isActive>("isActive");
    is.method<&NSApplication::activateIgnoringOtherApps>("activateIgnoringOtherApps:");
    is.method<&NSApplication::activationPolicy>("activationPolicy");
    is.method<&NSApplication::setActivationPolicy>("setActivationPolicy:");
    is.method<&NSApplication::sendAction_to_from>("sendAction:to:from:");
    is.method<&NSApplication::targetForAction>("targetForAction:");
    is.method<&NSApplication::windows>("windows");
    is.method<&NSApplication::orderedWindows>("orderedWindows");
    is.method<&NSApplication::windowWithWindowNumber>("windowWithWindowNumber:");
    is.method<&NSApplication::keyWindow>("keyWindow");
    is.method<&NSApplication::runModalForWindow>("runModalForWindow:");
    is.method<&NSApplication::stopModal>("stopModal");
    is.method<&NSApplication::stopModalWithCode>("stopModalWithCode:");
    is.method<&NSApplication::modalWindow>("modalWindow");
    is.method<&NSApplication::appearance>("appearance");
    is.method<&NSApplication::setAppearance>("setAppearance:");
    is.method<&NSApplication::effectiveAppearance>("effectiveAppearance");
    is.method<&NSApplication::mainMenu>("mainMenu");
    is.method<&NSApplication::setMainMenu>("setMainMenu:");
    is.method<&NSApplication::presentationOptions>("presentationOptions");
    is.method<&NSApplication::setPresentationOptions>("setPresentationOptions:");
}

Ref<NSString> NSApplicationWillTerminateNotification() {
    return "NSApplicationWillTerminateNotification"_ns;
}

Ref<NSString> NSApplicationDidHideNotification() {
    return "NSApplicationDidHideNotification"_ns;
}

Ref<NSString> NSApplicationDidUnhideNotification() {
    return "NSApplicationDidUnhideNotification"_ns;
}

Ref<NSString> NSApplicationDidBecomeActiveNotification() {
    return "NSApplicationDidBecomeActiveNotification"_ns;
}

Ref<NSString> NSApplicationDidResignActiveNotification() {
    return "NSApplicationDidResignActiveNotification"_ns;
}

NSApplication::~NSApplication() = default;

Ref<NSApplication> NSApplication::sharedApplication() {
    // Never torn down: windows may be asked about until the process ends.
    static NSApplication* const application = alloc<NSApplication>().leak();
    return Ref<NSApplication>(application);
}

void NSApplication::run() {
    {
        const struct Counting {
            int& runs;
            explicit Counting(int& count) : runs(count) { ++runs; }
            ~Counting() { --runs; }
        } counting(m_runs);
        currentToolkit().runLoopUntil([this] { return isTerminated(); });
    }
    // Runs inside one another all end for the same reason.
    if (m_runs == 0 && isTerminated()) {
        m_end = End::NotInSight;
    }
}

void NSApplication::terminate(NSObject*) {
    if (m_end != End::NotInSight) {
        return;
    }
    NSUInteger reply = NSTerminateNow;
    {
        m_end = End::Asked;
        m_earlyReply.reset();
        // A delegate that raises has not agreed.
        const struct Asking {
            End& end;
            ~Asking() { end = End::NotInSight; }
        } asking{m_end};
        const id asked = delegate();
        if (asked && asked->respondsToSelector("applicationShouldTerminate:"_sel)) {
            reply = send<NSUInteger>(asked, "applicationShouldTerminate:"_sel, this);
        }
    }
    if (reply == NSTerminateLater && !m_earlyReply) {
        m_end = End::PutOff;
        return;
    }
    const bool isRefused = reply == NSTerminateLater ? !*m_earlyReply : reply == NSTerminateCancel;
    if (!isRefused) {
        end();
    }
}

void NSApplication::replyToApplicationShouldTerminate(bool shouldTerminate) {
    if (m_end == End::Asked) {
        m_earlyReply = shouldTerminate;
    } else if (m_end == End::PutOff) {
        m_end = End::NotInSight;
        if (shouldTerminate) {
            end();
        }
    }
}

void NSApplication::end() {
    m_end = End::UnderWay;
    // Nobody who is told can prevent it any more.
    const struct Ending {
        End& end;
        ~Ending() { end = End::Reached; }
    } ending{m_end};
    tellDelegateAndPost(this, delegate(), "applicationWillTerminate:"_sel, NSApplicationWillTerminateNotification());
}

void NSApplication::hide(NSObject*) {
    if (m_isHidden) {
        return;
    }
    m_keyAfterHiding = m_keyWindow;
    // First, so that nobody who is told makes another one key.
    m_isHidden = true;
    makeKey(nullptr);
    for (const Ref<NSWindow>& window : std::vector<Ref<NSWindow>>(m_ordered)) {
        if (window->peer()) {
            window->peer()->orderOut();
        }
    }
    setActive(false);
    post(NSApplicationDidHideNotification(), this);
}

void NSApplication::unhide(NSObject*) {
    if (m_isHidden) {
        m_isHidden = false;
        const std::vector<Ref<NSWindow>> fromBack(m_ordered.rbegin(), m_ordered.rend());
        for (const Ref<NSWindow>& window : fromBack) {
            // A peer may come with a change of mind.
            if (WindowPeer* const peer = isShown(window) ? window->ensurePeer() : nullptr) {
                peer->orderAbove(nullptr);
            }
        }
        if (const Ref<NSWindow> window = m_keyAfterHiding.lock(); window && isShown(window)) {
            makeKey(window);
        }
        post(NSApplicationDidUnhideNotification(), this);
    }
    send<void>(this, "activateIgnoringOtherApps:"_sel, false);
}

void NSApplication::activateIgnoringOtherApps(bool) {
    if (m_activationPolicy == NSApplicationActivationPolicyProhibited) {
        return;
    }
    if (m_isHidden) {
        // Which comes back here.
        send<void>(this, "unhide:"_sel, nullptr);
        return;
    }
    if (const Ref<NSWindow> window = keyWindow(); !window) {
        makeFrontKey();
    } else if (window->peer()) {
        window->peer()->takeKeyboard();
    }
    setActive(true);
}

void NSApplication::setActive(bool active) {
    if (m_isActive == active) {
        return;
    }
    m_isActive = active;
    post(active ? NSApplicationDidBecomeActiveNotification() : NSApplicationDidResignActiveNotification(), this);
}

bool NSApplication::setActivationPolicy(NSApplicationActivationPolicy policy) {
    if (policy < NSApplicationActivationPolicyRegular || policy > NSApplicationActivationPolicyProhibited) {
        return false;
    }
    m_activationPolicy = policy;
    return true;
}

bool NSApplication::sendAction_to_from(SEL action, NSObject* target, NSObject* sender) {
    const id receiver = target ? id(target) : targetForAction(action);
    if (!action || !receiver || !receiver->respondsToSelector(action)) {
        return false;
    }
    send<void>(receiver, action, sender);
    return true;
}

id NSApplication::targetForAction(SEL action) const {
    if (!action) {
        return nullptr;
    }
    const auto has = [action](NSObject* object) { return object && object->respondsToSelector(action); };
    if (const Ref<NSWindow> window = keyWindow()) {
        for (Ref<NSResponder> responder = window->firstResponder(); responder; responder = responder->nextResponder()) {
            if (has(responder)) {
                return responder;
            }
        }
        if (has(window)) {
            return window;
        }
        if (id windowDelegate = window->delegate(); has(windowDelegate)) {
            return windowDelegate;
        }
    }
    if (has(const_cast<NSApplication*>(this))) {
        return id(const_cast<NSApplication*>(this));
    }
    id last = delegate();
    return has(last) ? last : nullptr;
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
    return m_isHidden ? NSArray::array() : NSArray::fromElements(std::vector<id>(m_ordered.begin(), m_ordered.end()));
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
    if (!window || isTerminated()) {
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
    if (m_isHidden) {
        // Nobody could answer a window that is not seen.
        send<void>(this, "unhide:"_sel, nullptr);
    }
    send<void>(window, "makeKeyAndOrderFront:"_sel, nullptr);
    currentToolkit().runLoopUntil(
        [this, &session] { return session.response != NSModalResponseContinue || isTerminated(); });
    return session.response == NSModalResponseContinue ? NSInteger{NSModalResponseAbort} : session.response;
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

bool NSApplication::allowsEventsForWindow(NSWindow* window) const {
    if (m_sessions.empty() || m_sessions.back()->window == window) {
        return true;
    }
    const auto* const panel = cast<NSPanel>(window);
    return panel && panel->worksWhenModal();
}

void NSApplication::windowWasMade(NSWindow* window) {
    std::erase_if(m_windows, [](const Weak<NSWindow>& known) { return !known.lock(); });
    m_windows.push_back(Weak<NSWindow>(window));
}

bool NSApplication::isShown(const NSWindow* window) const {
    return !m_isHidden && std::find(m_ordered.begin(), m_ordered.end(), window) != m_ordered.end();
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
    if (WindowPeer* const peer = m_isHidden ? nullptr : window->ensurePeer()) {
        isInFront ? peer->orderAbove(relative) : peer->orderBelow(relative);
    }
}

void NSApplication::takeAway(NSWindow* window) {
    const Ref<NSWindow> kept(window);
    std::erase(m_ordered, window);
    if (window->peer()) {
        window->peer()->orderOut();
    }
    if (keyWindow() == window) {
        makeFrontKey();
    }
}

void NSApplication::makeFrontKey() {
    const auto next = std::find_if(m_ordered.begin(), m_ordered.end(),
                                   [](const Ref<NSWindow>& other) { return other->canBecomeKeyWindow(); });
    makeKey(next == m_ordered.end() ? nullptr : Ref<NSWindow>(*next).get());
}

void NSApplication::makeKey(NSWindow* window) {
    if (m_isHidden && window) {
        m_keyAfterHiding = Weak<NSWindow>(window);
        return;
    }
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
        if (window->peer()) {
            window->peer()->takeKeyboard();
        }
        send<void>(window, "becomeKeyWindow"_sel);
    }
}

void NSApplication::setMainMenu(NSMenu* menu) {
    m_mainMenu = Ref<NSMenu>(menu);
}

} // namespace zr
