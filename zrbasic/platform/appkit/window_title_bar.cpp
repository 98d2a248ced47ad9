#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/screen.h>
#include <zrbasic/platform/appkit/toolbar.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <utility>

namespace zr {

/// One of the three in a title bar. The desktop draws it in its own way, as long as it is not hidden.
class TitleBarButton : public NSButton {
    ZR_OBJECT(TitleBarButton, NSButton)
  public:
    void setHidden(bool hidden) override {
        if (hidden == isHidden()) {
            return;
        }
        NSButton::setHidden(hidden);
        if (const Ref<NSWindow> inWindow = window()) {
            inWindow->tellPeer(WindowChange::Buttons);
        }
    }
    /// They are for the pointer: the tab key passes them over.
    [[nodiscard]] bool acceptsFirstResponder() const override { return false; }
};

NSView* NSWindow::ensureTitleBar() {
    if (!m_titleBar) {
        m_titleBar = make<NSView>();
        m_titleBar->moveToHostWindow(this);
        layOutTitleBar();
    }
    return m_titleBar;
}

void NSWindow::layOutTitleBar() {
    if (!m_titleBar) {
        return;
    }
    const double contentHeight = contentRectForFrameRect(m_frame).size.height;
    m_titleBar->setFrame({{0, contentHeight}, {m_frame.size.width, m_frame.size.height - contentHeight}});
    if (m_toolbar) {
        m_toolbar->m_view->setFrame(m_titleBar->bounds());
    }
    const NSUInteger needed[] = {NSWindowStyleMaskClosable, NSWindowStyleMaskMiniaturizable,
                                 NSWindowStyleMaskResizable};
    for (std::size_t i = 0; i < std::size(needed); ++i) {
        if (m_buttons[i]) {
            m_buttons[i]->setEnabled((m_styleMask & needed[i]) != 0);
        }
    }
}

std::vector<Ref<NSView>> NSWindow::outermostViews() const {
    std::vector<Ref<NSView>> views;
    for (const Ref<NSView>& view : {m_titleBar, m_contentView}) {
        if (view) {
            views.push_back(view);
        }
    }
    return views;
}

void NSWindow::leaveTitleBar() {
    if (m_titleBar) {
        m_titleBar->m_window = nullptr;
    }
    if (m_toolbar && m_toolbar->m_view) {
        m_toolbar->m_view->removeFromSuperview();
    }
}

Ref<NSButton> NSWindow::standardWindowButton(NSUInteger button) {
    static const SEL actions[] = {"performClose:"_sel, "performMiniaturize:"_sel, "performZoom:"_sel};
    if (button > NSWindowZoomButton || (m_styleMask & NSWindowStyleMaskTitled) == 0) {
        return nullptr;
    }
    if (!m_buttons[button]) {
        const Ref<TitleBarButton> made = make<TitleBarButton>();
        made->setFrame({{7 + 20 * static_cast<double>(button), 6}, {14, 16}});
        made->setTarget(this);
        made->setAction(actions[button]);
        m_buttons[button] = made;
        ensureTitleBar()->addSubview(made);
        layOutTitleBar();
    }
    return m_buttons[button];
}

Ref<NSToolbar> NSWindow::toolbar() const {
    return m_toolbar;
}

void NSWindow::setToolbar(NSToolbar* toolbar) {
    if (m_toolbar == toolbar) {
        return;
    }
    const Ref<NSToolbar> fresh(toolbar);
    if (fresh) {
        if (const Ref<NSWindow> other = fresh->m_window.lock()) {
            other->setToolbar(nullptr);
        }
    }
    if (const Ref<NSToolbar> before = std::exchange(m_toolbar, fresh)) {
        before->m_window = nullptr;
        before->m_view->removeFromSuperview();
    }
    if (fresh) {
        if (!fresh->m_view) {
            fresh->m_view = make<NSView>();
        }
        fresh->m_window = Weak<NSWindow>(this);
        ensureTitleBar()->addSubview(fresh->m_view);
        layOutTitleBar();
    }
}

void NSWindow::setMinSize(NSSize size) {
    m_minSize = size;
    tellPeer(WindowChange::Behavior);
}

void NSWindow::setMaxSize(NSSize size) {
    m_maxSize = size;
    tellPeer(WindowChange::Behavior);
}

void NSWindow::center() {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    if (!screen) {
        return;
    }
    const NSRect room = screen->visibleFrame();
    const NSRect frame = this->frame();
    send<void>(this, "setFrameOrigin:"_sel,
               NSPoint{room.origin.x + (room.size.width - frame.size.width) / 2,
                       room.origin.y + (room.size.height - frame.size.height) * 2 / 3});
}

void NSWindow::miniaturize(NSObject*) {
    if (!std::exchange(m_isMiniaturized, true)) {
        tellPeer(WindowChange::Behavior);
    }
}

void NSWindow::deminiaturize(NSObject*) {
    if (std::exchange(m_isMiniaturized, false)) {
        tellPeer(WindowChange::Behavior);
    }
}

void NSWindow::performMiniaturize(NSObject* sender) {
    if ((m_styleMask & NSWindowStyleMaskMiniaturizable) != 0) {
        send<void>(this, "miniaturize:"_sel, sender);
    }
}

bool NSWindow::isZoomed() const {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    return screen && m_frame == screen->visibleFrame();
}

void NSWindow::zoom(NSObject*) {
    const Ref<NSScreen> screen = NSScreen::mainScreen();
    if (!screen) {
        return;
    }
    NSRect next = m_unzoomedFrame;
    if (!isZoomed()) {
        m_unzoomedFrame = m_frame;
        next = screen->visibleFrame();
    } else if (NSIsEmptyRect(next)) {
        // It was made that large, so there is nothing to go back to.
        return;
    }
    send<void>(this, "setFrame:display:"_sel, next, true);
}

void NSWindow::performZoom(NSObject* sender) {
    if ((m_styleMask & NSWindowStyleMaskResizable) != 0) {
        send<void>(this, "zoom:"_sel, sender);
    }
}

} // namespace zr
