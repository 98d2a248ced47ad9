#include <zrbasic/platform/appkit/window.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/delegate_telling_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/key_view_order_p.h>
#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/toolbar.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window_controller.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/process_info.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <utility>

namespace zr {
namespace {

NSInteger nextWindowNumber = 1;

/// Offers the key press to the view and all views in it, those in front first.
bool performKeyEquivalentIn(NSView* view, NSEvent* event) {
    const Ref<NSView> kept(view);
    const Ref<NSArray> subviews = view->subviews();
    for (NSUInteger i = subviews->count(); i > 0; --i) {
        if (performKeyEquivalentIn(static_cast<NSView*>(subviews->objectAtIndex(i - 1).get()), event)) {
            return true;
        }
    }
    return send<bool>(view, "performKeyEquivalent:"_sel, event);
}

void post(NSString* name, NSWindow* window) {
    NSNotificationCenter::defaultCenter()->postNotificationName_object(name, window);
}

} // namespace

ZR_DEFINE_CLASS(NSWindow) {
    is.method<&NSWindow::initWithContentRect_styleMask>("initWithContentRect:styleMask:");
    is.method<&NSWindow::styleMask>("styleMask");
    is.method<&NSWindow::setStyleMask>("setStyleMask:");
    is.method<&NSWindow::title>("title");
    is.method<&NSWindow::setTitle>("setTitle:");
    is.method<&NSWindow::identifier>("identifier");
    is.method<&NSWindow::setIdentifier>("setIdentifier:");
    is.method<&NSWindow::windowNumber>("windowNumber");
    is.method<&NSWindow::delegate>("delegate");
    is.method<&NSWindow::setDelegate>("setDelegate:");
    is.method<&NSWindow::windowController>("windowController");
    is.method<&NSWindow::setWindowController>("setWindowController:");
    is.method<&NSWindow::frame>("frame");
    is.method<&NSWindow::setFrame_display>("setFrame:display:");
    is.method<&NSWindow::setFrameOrigin>("setFrameOrigin:");
    is.method<&NSWindow::setContentSize>("setContentSize:");
    is.method<&NSWindow::contentRectForFrameRect>("contentRectForFrameRect:");
    is.method<&NSWindow::frameRectForContentRect>("frameRectForContentRect:");
    is.method<&NSWindow::convertRectToScreen>("convertRectToScreen:");
    is.method<&NSWindow::convertRectFromScreen>("convertRectFromScreen:");
    is.method<&NSWindow::contentView>("contentView");
    is.method<&NSWindow::setContentView>("setContentView:");
    is.method<&NSWindow::firstResponder>("firstResponder");
    is.method<&NSWindow::makeFirstResponder>("makeFirstResponder:");
    is.method<&NSWindow::selectNextKeyView>("selectNextKeyView:");
    is.method<&NSWindow::selectPreviousKeyView>("selectPreviousKeyView:");
    is.method<&NSWindow::fieldEditor_forObject>("fieldEditor:forObject:");
    is.method<&NSWindow::endEditingFor>("endEditingFor:");
    is.method<&NSWindow::isVisible>("isVisible");
    is.method<&NSWindow::orderFront>("orderFront:");
    is.method<&NSWindow::makeKeyAndOrderFront>("makeKeyAndOrderFront:");
    is.method<&NSWindow::orderOut>("orderOut:");
    is.method<&NSWindow::orderWindow_relativeTo>("orderWindow:relativeTo:");
    is.method<&NSWindow::isKeyWindow>("isKeyWindow");
    is.method<&NSWindow::canBecomeKeyWindow>("canBecomeKeyWindow");
    is.method<&NSWindow::makeKeyWindow>("makeKeyWindow");
    is.method<&NSWindow::becomeKeyWindow>("becomeKeyWindow");
    is.method<&NSWindow::resignKeyWindow>("resignKeyWindow");
    is.method<&NSWindow::close>("close");
    is.method<&NSWindow::performClose>("performClose:");
    is.method<&NSWindow::isModalPanel>("isModalPanel");
    is.method<&NSWindow::minSize>("minSize");
    is.method<&NSWindow::setMinSize>("setMinSize:");
    is.method<&NSWindow::maxSize>("maxSize");
    is.method<&NSWindow::setMaxSize>("setMaxSize:");
    is.method<&NSWindow::center>("center");
    is.method<&NSWindow::isMiniaturized>("isMiniaturized");
    is.method<&NSWindow::miniaturize>("miniaturize:");
    is.method<&NSWindow::deminiaturize>("deminiaturize:");
    is.method<&NSWindow::performMiniaturize>("performMiniaturize:");
    is.method<&NSWindow::isZoomed>("isZoomed");
    is.method<&NSWindow::zoom>("zoom:");
    is.method<&NSWindow::performZoom>("performZoom:");
    is.method<&NSWindow::standardWindowButton>("standardWindowButton:");
    is.method<&NSWindow::toolbar>("toolbar");
    is.method<&NSWindow::setToolbar>("setToolbar:");
    is.method<&NSWindow::animations>("animations");
    is.method<&NSWindow::setAnimations>("setAnimations:");
    is.method<&NSWindow::animator>("animator");
}

Ref<NSString> NSWindowWillCloseNotification() {
    return "NSWindowWillCloseNotification"_ns;
}

Ref<NSString> NSWindowDidBecomeKeyNotification() {
    return "NSWindowDidBecomeKeyNotification"_ns;
}

Ref<NSString> NSWindowDidResignKeyNotification() {
    return "NSWindowDidResignKeyNotification"_ns;
}

NSWindow::NSWindow() : m_title(""_ns), m_windowNumber(nextWindowNumber++) {
    NSApplication::sharedApplication()->windowWasMade(this);
}

NSWindow::~NSWindow() {
    // First of all: what it does on its way out must not find the window any more.
    m_peer.reset();
    if (m_contentView) {
        m_contentView->m_window = nullptr;
    }
    leaveTitleBar();
}

id NSWindow::init() {
    return initWithContentRect_styleMask(NSZeroRect, NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                                         NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable);
}

id NSWindow::initWithContentRect_styleMask(NSRect contentRect, NSUInteger styleMask) {
    m_styleMask = styleMask;
    m_frame = frameRectForContentRect(contentRect);
    setContentView(nullptr);
    return id(this);
}

void NSWindow::setStyleMask(NSUInteger styleMask) {
    const NSRect content = contentRectForFrameRect(m_frame);
    m_styleMask = styleMask;
    tellPeer(WindowChange::StyleMask);
    setFrame_display(frameRectForContentRect(content), true);
}

void NSWindow::setTitle(NSString* title) {
    m_title = title ? Ref<NSString>(cast<NSString>(title->copy())) : ""_ns;
    tellPeer(WindowChange::Title);
}

void NSWindow::setIdentifier(NSString* identifier) {
    m_identifier = identifier ? Ref<NSString>(cast<NSString>(identifier->copy())) : nullptr;
}

Ref<NSWindowController> NSWindow::windowController() const {
    return m_windowController.lock();
}

void NSWindow::setWindowController(NSWindowController* controller) {
    m_windowController = Weak<NSWindowController>(controller);
}

double NSWindow::titleHeight() const {
    const bool hasTitle =
        (m_styleMask & NSWindowStyleMaskTitled) != 0 && (m_styleMask & NSWindowStyleMaskFullSizeContentView) == 0;
    if (!hasTitle) {
        return 0;
    }
    return isMacOSAtLeast(11) ? 28 : 22;
}

void NSWindow::setFrame_display(NSRect frame, bool display) {
    m_frame = frame;
    tellPeer(WindowChange::Frame);
    layOutTitleBar();
    if (!m_contentView) {
        return;
    }
    m_contentView->setFrame({NSZeroPoint, contentRectForFrameRect(frame).size});
    if (display) {
        send<void>(m_contentView, "setNeedsDisplay:"_sel, true);
    }
}

void NSWindow::setFrameOrigin(NSPoint origin) {
    setFrame_display({origin, m_frame.size}, false);
}

void NSWindow::setContentSize(NSSize size) {
    setFrame_display({m_frame.origin, frameRectForContentRect({NSZeroPoint, size}).size}, true);
}

NSRect NSWindow::contentRectForFrameRect(NSRect frame) const {
    return {frame.origin, {frame.size.width, frame.size.height - titleHeight()}};
}

NSRect NSWindow::frameRectForContentRect(NSRect content) const {
    return {content.origin, {content.size.width, content.size.height + titleHeight()}};
}

NSRect NSWindow::convertRectToScreen(NSRect rect) const {
    return {{rect.origin.x + m_frame.origin.x, rect.origin.y + m_frame.origin.y}, rect.size};
}

NSRect NSWindow::convertRectFromScreen(NSRect rect) const {
    return {{rect.origin.x - m_frame.origin.x, rect.origin.y - m_frame.origin.y}, rect.size};
}

void NSWindow::setContentView(NSView* view) {
    const Ref<NSView> fresh = view ? Ref<NSView>(view) : make<NSView>();
    if (fresh == m_contentView) {
        return;
    }
    fresh->removeFromSuperview();
    if (const Ref<NSWindow> other = fresh->window()) {
        other->setContentView(nullptr);
    }
    if (const Ref<NSView> before = m_contentView) {
        before->tellTree("viewWillMoveToWindow:"_sel, nullptr);
        loseFirstResponderIn(before);
        before->m_window = nullptr;
        before->tellTree("viewDidMoveToWindow"_sel, nullptr);
    }
    fresh->tellTree("viewWillMoveToWindow:"_sel, this);
    m_contentView = fresh;
    fresh->m_window = this;
    tellPeer(WindowChange::ContentView);
    fresh->setFrame({NSZeroPoint, contentRectForFrameRect(m_frame).size});
    fresh->tellTree("viewDidMoveToWindow"_sel, nullptr);
}

Ref<NSResponder> NSWindow::firstResponder() const {
    Ref<NSResponder> first = m_firstResponder.lock();
    return first ? first : Ref<NSResponder>(const_cast<NSWindow*>(this));
}

bool NSWindow::makeFirstResponder(NSResponder* responder) {
    const Ref<NSResponder> wanted(responder);
    const Ref<NSResponder> before = firstResponder();
    if (before == responder || (before == this && !responder)) {
        return true;
    }
    // Nobody has it while the one before is asked, so that what the end of editing sets off can be told from that.
    m_firstResponder = nullptr;
    if (before != this) {
        const bool resigns = send<bool>(before, "resignFirstResponder"_sel);
        if (m_firstResponder.lock()) {
            // Whoever was told has given the keyboard to somebody: return selects the text again, an action goes on to
            // the next field.
            return !responder || firstResponder() == responder;
        }
        if (!resigns) {
            m_firstResponder = Weak<NSResponder>(before);
            return false;
        }
    }
    // A control that is edited hands the keyboard on to the field editor meanwhile; then that one has it.
    if (responder && responder != this && send<bool>(responder, "becomeFirstResponder"_sel) &&
        !m_firstResponder.lock()) {
        m_firstResponder = Weak<NSResponder>(responder);
        auto* const view = cast<NSView>(responder);
        if (view && view->peer()) {
            view->peer()->takeKeyboard();
        }
    }
    tellPeer(WindowChange::FirstResponder);
    return true;
}

void NSWindow::selectNextKeyView(NSObject*) {
    moveKeyboard(true);
}

void NSWindow::selectPreviousKeyView(NSObject*) {
    moveKeyboard(false);
}

void NSWindow::moveKeyboard(bool isForwards) {
    const Ref<NSResponder> first = firstResponder();
    auto* from = cast<NSView>(first.get());
    if (from && from == m_fieldEditor) {
        from = from->superview();
    }
    const Ref<NSView> next = nextKeyViewFrom(m_contentView, from, isForwards);
    if (next && next != from) {
        makeFirstResponder(next);
    }
}

Ref<NSText> NSWindow::fieldEditor_forObject(bool create, NSObject*) {
    if (!m_fieldEditor && create) {
        m_fieldEditor = make<NSTextView>();
        m_fieldEditor->setFieldEditor(true);
    }
    return m_fieldEditor;
}

void NSWindow::endEditingFor(NSObject* object) {
    const Ref<NSText> editor = m_fieldEditor;
    if (editor && firstResponder() == editor && (!object || editor->delegate() == object)) {
        makeFirstResponder(nullptr);
    }
}

void NSWindow::keyDown(NSEvent* event) {
    if (!event || send<bool>(this, "performKeyEquivalent:"_sel, event)) {
        return;
    }
    const Ref<NSString> characters = event->characters();
    const bool isTab = characters && characters->isEqual("\t"_ns);
    // Some keyboards say shift-tab by a character of its own.
    const bool isBacktab = characters && characters->isEqual("\x19"_ns);
    if (isBacktab || (isTab && (event->modifierFlags() & NSEventModifierFlagShift) != 0)) {
        send<void>(this, "selectPreviousKeyView:"_sel, this);
    } else if (isTab) {
        send<void>(this, "selectNextKeyView:"_sel, this);
    } else {
        NSResponder::keyDown(event);
    }
}

bool NSWindow::performKeyEquivalent(NSEvent* event) {
    if (!event) {
        return false;
    }
    if (performKeyEquivalentIn(m_contentView, event)) {
        return true;
    }
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<NSMenu> menu = application->mainMenu();
    return menu && !application->modalWindow() && send<bool>(menu, "performKeyEquivalent:"_sel, event);
}

void NSWindow::loseFirstResponderIn(NSView* view) {
    const Ref<NSResponder> first = m_firstResponder.lock();
    auto* const focused = cast<NSView>(first.get());
    if (focused && focused->isDescendantOf(view)) {
        makeFirstResponder(nullptr);
        // It may have refused, but it cannot stay.
        const Ref<NSResponder> now = m_firstResponder.lock();
        auto* const left = cast<NSView>(now.get());
        if (left && left->isDescendantOf(view)) {
            m_firstResponder = nullptr;
        }
    }
}

bool NSWindow::isVisible() const {
    return NSApplication::sharedApplication()->isShown(this);
}

void NSWindow::orderFront(NSObject*) {
    NSApplication::sharedApplication()->show(this, true, nullptr);
}

void NSWindow::makeKeyAndOrderFront(NSObject* sender) {
    orderFront(sender);
    makeKeyWindow();
}

void NSWindow::orderOut(NSObject*) {
    NSApplication::sharedApplication()->takeAway(this);
}

void NSWindow::orderWindow_relativeTo(NSWindowOrderingMode place, NSInteger windowNumber) {
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    if (place == NSWindowOut) {
        application->takeAway(this);
    } else {
        application->show(this, place != NSWindowBelow, application->windowWithWindowNumber(windowNumber));
    }
}

bool NSWindow::isKeyWindow() const {
    return NSApplication::sharedApplication()->keyWindow() == this;
}

bool NSWindow::canBecomeKeyWindow() const {
    return (m_styleMask & (NSWindowStyleMaskTitled | NSWindowStyleMaskResizable)) != 0;
}

void NSWindow::makeKeyWindow() {
    if (send<bool>(this, "canBecomeKeyWindow"_sel)) {
        NSApplication::sharedApplication()->makeKey(this);
    }
}

void NSWindow::redrawFirstResponder() {
    const Ref<NSResponder> first = m_firstResponder.lock();
    if (cast<NSView>(first)) {
        send<void>(first, "setNeedsDisplay:"_sel, true);
    }
}

void NSWindow::becomeKeyWindow() {
    redrawFirstResponder();
    post(NSWindowDidBecomeKeyNotification(), this);
}

void NSWindow::resignKeyWindow() {
    redrawFirstResponder();
    post(NSWindowDidResignKeyNotification(), this);
}

void NSWindow::close() {
    // Whoever hears of it may close the window as well.
    if (std::exchange(m_isClosing, true)) {
        return;
    }
    const Ref<NSWindow> self(this);
    const struct Ending {
        NSWindow& window;
        ~Ending() { window.m_isClosing = false; }
    } ending{*this};
    tellDelegateAndPost(this, delegate(), "windowWillClose:"_sel, NSWindowWillCloseNotification());
    orderOut(nullptr);
}

void NSWindow::performClose(NSObject*) {
    if ((m_styleMask & NSWindowStyleMaskClosable) == 0) {
        return;
    }
    const Ref<NSWindow> self(this);
    const id asked = delegate();
    const bool mayClose = !asked || !asked->respondsToSelector("windowShouldClose:"_sel) ||
                          send<bool>(asked, "windowShouldClose:"_sel, this);
    if (mayClose) {
        send<void>(this, "close"_sel);
    }
}

bool NSWindow::isModalPanel() const {
    return false;
}

WindowPeer* NSWindow::ensurePeer() {
    if (!m_peer) {
        m_peer = currentToolkit().makeWindowPeer(*this);
    }
    return m_peer.get();
}

void NSWindow::setPeer(std::unique_ptr<WindowPeer> peer) {
    m_peer = std::move(peer);
}

void NSWindow::tellPeer(WindowChange change) {
    if (m_peer) {
        m_peer->windowChanged(change);
    }
}

} // namespace zr
