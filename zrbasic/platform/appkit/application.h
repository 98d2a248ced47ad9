#pragma once

#include <zrbasic/platform/appkit/responder.h>
#include <zrbasic/platform/foundation/array.h>

#include <vector>

namespace zr {

class NSWindow;

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

/// The application: its windows, which of them is key, and its modal sessions. There is one. Main thread only.
class ZR_EXPORT NSApplication final : public NSResponder {
    ZR_DECLARE_CLASS(NSApplication, NSResponder)
  public:
    ~NSApplication() override;

    /// The same object every time, made when it is first asked for.
    [[nodiscard]] static Ref<NSApplication> sharedApplication();

    /// All windows that there are, shown or not, in the order in which they were made.
    [[nodiscard]] Ref<NSArray> windows() const;
    /// Those that are shown, from the front to the back. The application keeps these.
    [[nodiscard]] Ref<NSArray> orderedWindows() const;
    /// Null when there is none of that number.
    [[nodiscard]] Ref<NSWindow> windowWithWindowNumber(NSInteger number) const;
    /// The one that is handed key presses; null when there is none.
    [[nodiscard]] Ref<NSWindow> keyWindow() const;

    /// Shows the window and handles events for it alone until the session is stopped; gives the response. Sessions
    /// nest: the latest one is the one that is stopped. Null gives `NSModalResponseAbort` at once.
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

    /// A sum of `NSApplicationPresentationOptions`.
    [[nodiscard]] NSUInteger presentationOptions() const { return m_presentationOptions; }
    void setPresentationOptions(NSUInteger options) { m_presentationOptions = options; }

  private:
    friend class NSWindow;

    struct Session {
        Ref<NSWindow> window;
        NSInteger response = NSModalResponseContinue;
    };

    void windowWasMade(NSWindow* window);
    void show(NSWindow* window, bool isInFront, NSWindow* relative);
    void hide(NSWindow* window);
    [[nodiscard]] bool isShown(const NSWindow* window) const;
    void makeKey(NSWindow* window);

    std::vector<Weak<NSWindow>> m_windows;
    std::vector<Ref<NSWindow>> m_ordered;
    Weak<NSWindow> m_keyWindow;
    std::vector<Session*> m_sessions;
    NSUInteger m_presentationOptions = NSApplicationPresentationDefault;
};

} // namespace zr
