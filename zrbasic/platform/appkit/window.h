#pragma once

#include <zrbasic/platform/appkit/view.h>

#include <limits>
#include <vector>

namespace zr {

class NSButton;
class NSDictionary;
class NSText;
class NSToolbar;
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

/// The buttons in a window's title bar.
enum NSWindowButton : NSUInteger {
    NSWindowCloseButton = 0,
    NSWindowMiniaturizeButton = 1,
    NSWindowZoomButton = 2,
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
    /// How small and how large a user can make the frame; nothing and without limit at first. Frames that are set are
    /// taken as they are.
    [[nodiscard]] NSSize minSize() const { return m_minSize; }
    void setMinSize(NSSize size);
    [[nodiscard]] NSSize maxSize() const { return m_maxSize; }
    void setMaxSize(NSSize size);
    /// Places it on the main screen, in the middle across and with twice as much room below as above. Without a screen
    /// it stays where it is.
    virtual void center();
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
    /// The view that the tab key leads to, from the one that is edited or first responder now, becomes first responder;
    /// from the last one it goes on to the first. Nothing happens when no view can take it.
    virtual void selectNextKeyView(NSObject* sender);
    virtual void selectPreviousKeyView(NSObject* sender);

    /// The one text view that the window's fields are edited in, one after the other; made when there is none, unless
    /// `create` is false, which gives null then. `object` is who wants it and may be null.
    [[nodiscard]] virtual Ref<NSText> fieldEditor_forObject(bool create, NSObject* object);
    /// Ends what `object`, a control, is being edited for, as if another view were made first responder; the window is
    /// first responder then. Null ends it whoever is edited.
    virtual void endEditingFor(NSObject* object);

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

    [[nodiscard]] bool isMiniaturized() const { return m_isMiniaturized; }
    virtual void miniaturize(NSObject* sender);
    virtual void deminiaturize(NSObject* sender);
    /// Whether the frame is the part of the main screen that is left to windows.
    [[nodiscard]] bool isZoomed() const;
    /// Makes the frame as large as that, or what it was before.
    virtual void zoom(NSObject* sender);
    /// As a user does it by the buttons: only where the style allows it.
    virtual void performMiniaturize(NSObject* sender);
    virtual void performZoom(NSObject* sender);

    /// The title bar's own button for closing, miniaturising or zooming, an `NSWindowButton`: always the same one. Null
    /// for another number and for a window without a title. A hidden button is not shown in the title bar.
    [[nodiscard]] virtual Ref<NSButton> standardWindowButton(NSUInteger button);
    /// Null at first. A toolbar leaves the window that it was in.
    [[nodiscard]] Ref<NSToolbar> toolbar() const;
    virtual void setToolbar(NSToolbar* toolbar);

    /// The animations that `animator` plays, by the name of what they change; the empty dictionary at first and for
    /// null. Copied when set.
    [[nodiscard]] Ref<NSDictionary> animations() const;
    void setAnimations(NSDictionary* animations);
    /// Stands for the window, and answers every message as the window does, but a place that is set through it,
    /// `setFrameOrigin:`, plays the animation of the name "frameOrigin" on the way. The frame is the new one at once. A
    /// window that is not on a screen just has it.
    [[nodiscard]] id animator();

    /// Carries out a key press that no view dealt with: the one that a button waits for, or tab and shift-tab for the
    /// keyboard to go on.
    void keyDown(NSEvent* event) override;
    /// Asks the views, those in front first.
    bool performKeyEquivalent(NSEvent* event) override;

    // For toolkits

    /// The views in it that lie in no other one: the title bar's, if there is one, and the content.
    [[nodiscard]] virtual std::vector<Ref<NSView>> outermostViews() const;
    /// The user has miniaturised the window on the desktop, or has brought it back.
    void wasMiniaturized(bool isMiniaturized) { m_isMiniaturized = isMiniaturized; }
    /// What stands on the screen for the window; null before it is first shown.
    [[nodiscard]] WindowPeer* peer() const { return m_peer.get(); }
    /// The peer, made by the current toolkit when there is none; null when that makes none either.
    WindowPeer* ensurePeer();
    void setPeer(std::unique_ptr<WindowPeer> peer);
    /// Takes the peer off the screen; what it shows next is made anew.
    void dropPeer() { m_peer.reset(); }

  protected:
    /// Tells the peer, if there is one.
    void tellPeer(WindowChange change);

  private:
    friend class NSView;
    friend class TitleBarButton;

    /// What lies above the content; made when it is needed.
    NSView* ensureTitleBar();
    void layOutTitleBar();
    void leaveTitleBar();
    /// The focus ring shows only in the key window.
    void redrawFirstResponder();
    void moveKeyboard(bool isForwards);

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
    Ref<NSText> m_fieldEditor;
    Ref<NSView> m_titleBar;
    Ref<NSButton> m_buttons[3];
    Ref<NSToolbar> m_toolbar;
    Ref<NSDictionary> m_animations;
    NSSize m_minSize;
    NSSize m_maxSize{std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    NSRect m_unzoomedFrame;
    bool m_isMiniaturized = false;
    std::unique_ptr<WindowPeer> m_peer;
    bool m_isClosing = false;
};

} // namespace zr
