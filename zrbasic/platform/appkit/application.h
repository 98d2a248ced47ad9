#pragma once

#include <zrbasic/platform/appkit/responder.h>
#include <zrbasic/platform/foundation/array.h>

#include <exception>
#include <optional>
#include <vector>

namespace zr {

class NSAppearance;
class NSMenu;
class NSView;
class NSWindow;

/// The application is about to end; its object is the application.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSApplicationWillTerminateNotification();
/// All windows were, or no longer are, taken off the screen together.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSApplicationDidHideNotification();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSApplicationDidUnhideNotification();
/// The application is now, or is no longer, the one that the user works with.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSApplicationDidBecomeActiveNotification();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSApplicationDidResignActiveNotification();

/// What ends or goes on a modal session.
enum NSModalResponse : NSInteger {
    NSModalResponseCancel = 0,
    NSModalResponseOK = 1,
    NSModalResponseStop = -1000,
    NSModalResponseAbort = -1001,
    NSModalResponseContinue = -1002,
};

/// How the desktop's own furniture is shown while the application is in front; a sum of these.
enum NSApplicationPresentationOptions : NSUInteger {
    NSApplicationPresentationDefault = 0,
    NSApplicationPresentationFullScreen = 1 << 10,
};

/// How much of the desktop an application takes part in.
enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular = 0,
    /// Windows, but no entry among the running programs.
    NSApplicationActivationPolicyAccessory = 1,
    /// It cannot be activated.
    NSApplicationActivationPolicyProhibited = 2,
};

/// What a delegate answers `applicationShouldTerminate:`.
enum NSApplicationTerminateReply : NSUInteger {
    NSTerminateCancel = 0,
    NSTerminateNow = 1,
    /// `replyToApplicationShouldTerminate` will say.
    NSTerminateLater = 2,
};

/// The application: its windows, which of them is key, its modal sessions, and its end. There is one.
///
/// The delegate, which is not kept, may answer `applicationShouldTerminate:`, with the application, and
/// `applicationWillTerminate:`, with a notification. Main thread only.
class ZR_EXPORT NSApplication final : public NSResponder {
    ZR_DECLARE_CLASS(NSApplication, NSResponder)
  public:
    ~NSApplication() override;

    /// The same object every time, made when it is first asked for.
    [[nodiscard]] static Ref<NSApplication> sharedApplication();

    /// Not kept; null at first.
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

    /// Handles events until the application is terminated; at once when it was before, outside of any `run`. It may be
    /// run again afterwards. What an event raises ends the run and passes through.
    virtual void run();
    /// Ends the application: asks the delegate, who may refuse or put it off; then tells it, posts
    /// `NSApplicationWillTerminateNotification`, and ends `run` and all modal sessions. The process goes on: its main
    /// function returns from `run`.
    ///
    /// Nothing happens while the delegate is asked or the end is under way. When the delegate raises while it is asked
    /// the application goes on; afterwards the end takes place all the same. Both pass through.
    virtual void terminate(NSObject* sender);
    /// What the delegate has decided that put the answer off. Without such a question nothing happens.
    virtual void replyToApplicationShouldTerminate(bool shouldTerminate);
    /// From the end of `terminate` until `run` has returned for it.
    [[nodiscard]] bool isTerminated() const { return m_end == End::Reached; }

    /// Takes all windows off the screen together, and the application out of the user's way. Meanwhile none is visible
    /// or key, and one that is ordered to the front shows up in the end.
    virtual void hide(NSObject* sender);
    /// Shows those windows again, the key one as key, and activates the application.
    virtual void unhide(NSObject* sender);
    [[nodiscard]] bool isHidden() const { return m_isHidden; }
    /// Whether it is the application that the user works with; false at first.
    [[nodiscard]] bool isActive() const { return m_isActive; }
    /// Asks the desktop to let the user work with this application, and unhides it. Whether others are ignored is up to
    /// the desktop. Nothing happens when the policy prohibits it.
    virtual void activateIgnoringOtherApps(bool ignoringOtherApps);
    [[nodiscard]] NSApplicationActivationPolicy activationPolicy() const { return m_activationPolicy; }
    /// False, and nothing changed, for what is none of the policies.
    virtual bool setActivationPolicy(NSApplicationActivationPolicy policy);

    /// Sends `action` with `sender` to `target` or, for null, to the first that has it: the responders of the key
    /// window from its first one on, the window and its delegate, the application and its delegate. False, and nothing
    /// sent, for the null selector and when nobody has it.
    virtual bool sendAction_to_from(SEL action, NSObject* target, NSObject* sender);
    /// To whom that would go; null for nobody.
    [[nodiscard]] virtual id targetForAction(SEL action) const;

    /// All windows that there are, shown or not, in the order in which they were made.
    [[nodiscard]] Ref<NSArray> windows() const;
    /// Those that are shown, from the front to the back. The application keeps these.
    [[nodiscard]] Ref<NSArray> orderedWindows() const;
    /// Null when there is none of that number.
    [[nodiscard]] Ref<NSWindow> windowWithWindowNumber(NSInteger number) const;
    /// The one that is handed key presses; null when there is none.
    [[nodiscard]] Ref<NSWindow> keyWindow() const;

    /// Shows the window, of a hidden application too, and handles events for it alone until the session is stopped;
    /// gives the response. Sessions nest: the latest one is the one that is stopped. Null gives `NSModalResponseAbort` at
    /// once, and so does the end of the application.
    ///
    /// Closing the window does not end the session. The loop is in the modal panel's mode meanwhile. What an event
    /// raises ends the session and passes through.
    virtual NSInteger runModalForWindow(NSWindow* window);
    /// Ends the latest session with `NSModalResponseStop`, or with the given response. Without a session nothing
    /// happens.
    virtual void stopModal();
    virtual void stopModalWithCode(NSInteger response);
    /// The window of the latest session; null when there is none.
    [[nodiscard]] Ref<NSWindow> modalWindow() const;
    /// Whether the user may use the window: it is that of the latest session, or a panel that works meanwhile, or there
    /// is no session.
    [[nodiscard]] bool allowsEventsForWindow(NSWindow* window) const;

    /// How the application looks, light or dark; null, at first, is light. Setting another one draws all windows again,
    /// and tells every view in them `viewDidChangeEffectiveAppearance`. Whatever a view raises leaves this operation
    /// when all views have been told.
    [[nodiscard]] Ref<NSAppearance> appearance() const { return m_appearance; }
    void setAppearance(NSAppearance* appearance);
    /// Never null.
    [[nodiscard]] Ref<NSAppearance> effectiveAppearance() const;
    /// The menu whose items' keys work in every window that is not run modally, after the window's own; null at first.
    [[nodiscard]] Ref<NSMenu> mainMenu() const { return m_mainMenu; }
    void setMainMenu(NSMenu* menu);

    /// A sum of `NSApplicationPresentationOptions`.
    [[nodiscard]] NSUInteger presentationOptions() const { return m_presentationOptions; }
    void setPresentationOptions(NSUInteger options) { m_presentationOptions = options; }

    // For toolkits

    /// The desktop has put this application in front, or another one.
    void setActive(bool active);

  private:
    friend class NSWindow;

    /// How far the application's end has come.
    enum class End {
        NotInSight,
        Asked,
        PutOff,
        UnderWay,
        Reached,
    };

    struct Session {
        Ref<NSWindow> window;
        NSInteger response = NSModalResponseContinue;
    };

    void windowWasMade(NSWindow* window);
    void show(NSWindow* window, bool isInFront, NSWindow* relative);
    void takeAway(NSWindow* window);
    [[nodiscard]] bool isShown(const NSWindow* window) const;
    void makeKey(NSWindow* window);
    void tellOfAppearance(const Ref<NSView>& view, NSUInteger change, std::exception_ptr& raised);
    void makeFrontKey();
    void end();

    Weak<NSObject> m_delegate;
    End m_end = End::NotInSight;
    /// Given while the delegate was still being asked.
    std::optional<bool> m_earlyReply;
    int m_runs = 0;
    bool m_isHidden = false;
    bool m_isActive = false;
    NSApplicationActivationPolicy m_activationPolicy = NSApplicationActivationPolicyRegular;
    std::vector<Weak<NSWindow>> m_windows;
    /// From the front to the back; of a hidden application, as they will be.
    std::vector<Ref<NSWindow>> m_ordered;
    /// Of a hidden application: which window will be key.
    Weak<NSWindow> m_keyAfterHiding;
    Weak<NSWindow> m_keyWindow;
    std::vector<Session*> m_sessions;
    Ref<NSAppearance> m_appearance;
    NSUInteger m_appearanceChanges = 0;
    Ref<NSMenu> m_mainMenu;
    NSUInteger m_presentationOptions = NSApplicationPresentationDefault;
};

} // namespace zr
