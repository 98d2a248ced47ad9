#pragma once

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/button.h>

namespace zr {

class NSPanel;

enum NSAlertStyle : NSUInteger {
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1,
    NSAlertStyleCritical = 2,
};

/// What stands for an alert's buttons, in the order in which they were added; further ones count on.
enum : NSInteger {
    NSAlertFirstButtonReturn = 1000,
    NSAlertSecondButtonReturn = 1001,
    NSAlertThirdButtonReturn = 1002,
};

/// A message with buttons that the user must answer. Main thread only.
class ZR_EXPORT NSAlert : public NSObject {
    ZR_DECLARE_CLASS(NSAlert, NSObject)
  public:
    NSAlert();
    ~NSAlert() override;

    /// What happened, in a few words: "Alert" at first. Never null: null sets the empty text. Copied when set.
    [[nodiscard]] Ref<NSString> messageText() const { return m_messageText; }
    void setMessageText(NSString* text);
    /// More about it; the empty text at first and for null. Copied when set.
    [[nodiscard]] Ref<NSString> informativeText() const { return m_informativeText; }
    void setInformativeText(NSString* text);
    /// A warning at first.
    [[nodiscard]] NSAlertStyle alertStyle() const { return m_style; }
    void setAlertStyle(NSAlertStyle style) { m_style = style; }

    /// Adds a button behind the others and gives it. The first one is the default, which the return key presses; one
    /// that is called "Cancel" is pressed by the escape key. Null is the empty title.
    Ref<NSButton> addButtonWithTitle(NSString* title);
    /// The buttons in the order in which they were added; a list of the moment, never null.
    [[nodiscard]] Ref<NSArray> buttons() const;
    /// The alert's own window, a modal panel that is not shown while a toolkit asks the user in its own way. Never null,
    /// and always the same.
    [[nodiscard]] Ref<NSPanel> window();

    /// Asks the user and gives `NSAlertFirstButtonReturn` plus the number of the button that was pressed;
    /// `NSModalResponseAbort` when nobody can be asked, as without a toolkit and on another thread than the main one, and
    /// when the application ends first.
    ///
    /// An alert without buttons gets one that says "OK". The loop is in the modal panel's mode meanwhile, and the alert's
    /// window is among those of the application until the alert is gone.
    virtual NSInteger runModal();

  private:
    Ref<NSString> m_messageText;
    Ref<NSString> m_informativeText;
    NSAlertStyle m_style = NSAlertStyleWarning;
    std::vector<Ref<NSButton>> m_buttons;
    Ref<NSPanel> m_window;
};

} // namespace zr
