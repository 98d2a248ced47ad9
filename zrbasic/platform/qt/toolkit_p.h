#pragma once

#include <zrbasic/platform/appkit/toolkit.h>

namespace zr::qt {

/// The toolkit that a session puts in use. What it is asked for is done by the files named for it.
class QtToolkit final : public Toolkit {
  public:
    QtToolkit();
    ~QtToolkit() override;

    double heightOfText(NSAttributedString* text, double width, double lineFragmentPadding) override;
    NSSize naturalSizeOfText(NSAttributedString* text, double lineFragmentPadding) override;
    FontMetrics metricsOfFont(NSFont* font) override;
    Ref<NSAttributedString> attributedStringFromHTML(NSString* html) override;

    std::vector<ScreenState> screens() override;
    std::unique_ptr<ViewPeer> makeViewPeer(NSView& view) override;
    std::unique_ptr<WindowPeer> makeWindowPeer(NSWindow& window) override;
    std::unique_ptr<Canvas> makeBitmapCanvas(NSBitmapImageRep& bitmap, NSSize size, bool isFlipped) override;
    Ref<NSBitmapImageRep> captureOfWindow(NSWindow& window, NSRect rect) override;

    void runLoopUntil(FunctionRef<bool()> isDone) override;
    NSInteger askUser(NSAlert& alert) override;
    bool popUpMenu(NSMenu& menu, NSMenuItem* item, NSPoint location, NSView* view) override;
    void appearanceChanged() override;

    NotificationService* notificationService() override;
    bool openURL(NSURL* url) override;
    bool launch(NSString* path) override;
    Ref<NSString> clipboardText() override;
    void setClipboardText(NSString* text) override;
    std::vector<std::string> keyboardLayouts() override;
    NSInteger currentKeyboardLayout() override;
    void selectKeyboardLayout(NSInteger index) override;

  private:
    std::unique_ptr<NotificationService> m_notificationService;
};

} // namespace zr::qt
