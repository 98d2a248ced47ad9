#pragma once

#include <zrbasic/platform/appkit/view.h>

namespace zr {

class NSWindowController;

/// What a window has around its content; a sum of these.
enum NSWindowStyleMask : NSUInteger {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1,
    NSWindowStyleMaskClosable = 2,
    NSWindowStyleMaskMiniaturizable = 4,
    NSWindowStyleMaskResizable = 8,
    NSWindowStyleMaskUtilityWindow = 1 << 4,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
    NSWindowStyleMaskFullScreen = 1 << 14,
    /// The content reaches up behind the title.
    NSWindowStyleMaskFullSizeContentView = 1 << 15,
};

/// A window is about to close; its object is the window.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSWindowWillCloseNotification();
/// A window is now, or is no longer, the one that is handed key presses.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSWindowDidBecomeKeyNotification();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSWindowDidResignKeyNotification();

/// A window's outer frame, its content, and who in it is handed key presses.
///
/// The frame is in screen coordinates, in points, the origin at the lower left of the first screen, and is kept exactly
/// as it is set. The content view fills the frame below the title.
///
/// The application keeps a window as long as it is visible (see application.h). The delegate, which is not kept, may
/// answer `windowShouldClose:` and `windowWillClose:`. Main thread only.
class ZR_EXPORT NSWindow : public NSResponder {
    ZR_DECLARE_CLASS(NSWindow, NSResponder)
  public:
    NSWindow();
    ~NSWindow() override;

    /// A titled, closable, resizable window of no extent.
    id init() override;
    /// `styleMask` is a sum of `NSWindowStyleMask`. Has an empty content view and is not visible.
    virtual id initWithContentRect_styleMask(NSRect contentRect, NSUInteger styleMask);

    [[nodiscard]] NSUInteger styleMask() const { return m_styleMask; }
    /// The content keeps its extent.
    void setStyleMask(NSUInteger styleMask);
    /// The empty text at first; null sets that.
    [[nodiscard]] Ref<NSString> title() const { return m_title; }
    virtual void setTitle(NSString* title);
    /// What the window is known by; null at first. Copied when set.
    [[nodiscard]] Ref<NSString> identifier() const { return m_identifier; }
    void setIdentifier(NSString* identifier);
    /// Tells it from all other windows of the process; above 0.
    [[nodiscard]] NSInteger windowNumber() const { return m_windowNumber; }
    /// Not kept; null at first.
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }
    /// Not kept; null at first.
    [[nodiscard]] Ref<NSWindowController> windowController() const;
    void setWindowController(NSWindowController* controller);

    [[nodiscard]] NSRect frame() const { return m_frame; }
    virtual void setFrame_display(NSRect frame, bool display);
    void setFrameOrigin(NSPoint origin);
    /// Keeps the lower left corner.
    void setContentSize(NSSize size);
    /// The part of a frame that is content, and the frame around a content, for the window's style.
    [[nodiscard]] NSRect contentRectForFrameRect(NSRect frame) const;
    [[nodiscard]] NSRect frameRectForContentRect(NSRect content) const;
    /// From coordinates with the origin at the lower left of the content to the screen's, and back.
    [[nodiscard]] NSRect convertRectToScreen(NSRect rect) const;
    [[nodiscard]] NSRect convertRectFromScreen(NSRect rect) const;

    /// Never null.
    [[nodiscard]] Ref<NSView> contentView() const { return m_contentView; }
    /// Takes the place and the extent of the one before; null sets an empty view. A view that lies in another one
    /// leaves it.
    virtual void setContentView(NSView* view);

    /// Who is handed key presses first: the window itself when nobody else is.
    [[nodiscard]] Ref<NSResponder> firstResponder() const;
    /// False, and nothing changed, when the present one refuses to resign. Null, and one that refuses, leave the window
    /// itself.
    virtual bool makeFirstResponder(NSResponder* responder);

    [[nodiscard]] bool isVisible() const;
    /// Shows it in front of the others; does not make it key.
    virtual void orderFront(NSObject* sender);
    virtual void makeKeyAndOrderFront(NSObject* sender);
    virtual void orderOut(NSObject* sender);
    /// Shows it in front of or behind the window of that number, or all others for 0 and an unknown one, or hides it.
    virtual void orderWindow_relativeTo(NSWindowOrderingMode place, NSInteger windowNumber);
    [[nodiscard]] bool isKeyWindow() const;
    /// Whether it may be handed key presses; that takes a title or a border to resize it by.
    [[nodiscard]] virtual bool canBecomeKeyWindow() const;
    /// Makes it key if it may be.
    virtual void makeKeyWindow();
    /// Told when it has become key, and when it no longer is; each posts its notification.
    virtual void becomeKeyWindow();
    virtual void resignKeyWindow();

    /// Tells the delegate and posts `NSWindowWillCloseNotification`, then hides the window. It can be shown again.
    virtual void close();
    /// As a user closes it: only when it is closable and the delegate agrees.
    virtual void performClose(NSObject* sender);
    /// Whether the window is made to be run modally, as an alert's is; false unless overridden.
    [[nodiscard]] virtual bool isModalPanel() const;

  private:
    friend class NSView;

    /// The first responder must not stay in a view that leaves.
    void loseFirstResponderIn(NSView* view);
    [[nodiscard]] double titleHeight() const;

    NSUInteger m_styleMask = 0;
    NSRect m_frame;
    Ref<NSString> m_title;
    Ref<NSString> m_identifier;
    NSInteger m_windowNumber;
    Ref<NSView> m_contentView;
    Weak<NSResponder> m_firstResponder;
    Weak<NSObject> m_delegate;
    Weak<NSWindowController> m_windowController;
    bool m_isClosing = false;
};

} // namespace zr
