#pragma once

#include <zrbasic/platform/appkit/peer.h>
#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/ref.h>

#include <memory>
#include <string>
#include <vector>

namespace zr {

class Canvas;
class NSAlert;
class NSAttributedString;
class NSBitmapImageRep;
class NSFont;
class NSMenu;
class NSMenuItem;
class NSString;
class NSURL;
class NSView;
class NSWindow;
class NotificationService;

/// One screen as a toolkit sees it.
struct ScreenState {
    /// In points, the origin at the lower left of the first screen.
    NSRect frame;
    /// The part of it that the desktop leaves to windows.
    NSRect visibleFrame;
    /// Pixels a point.
    double backingScaleFactor = 1;
};

/// How far the letters of a font reach from the line they stand on, in points.
struct FontMetrics {
    double ascender = 0;
    /// Below the line, so 0 or less.
    double descender = 0;
    /// From one line to the next, less the two above.
    double leading = 0;
};

/// What the application's shell asks of a toolkit: everything that needs a screen, fonts or the desktop.
///
/// Each operation has a default for a program without a toolkit, so that all rules work as plain state. A toolkit
/// overrides what it can do. Asked on the main thread only.
class ZR_EXPORT Toolkit {
  public:
    Toolkit() = default;
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    virtual ~Toolkit();

    // Text

    /// The height, in points, that `text` takes when laid out `width` points wide and as high as it likes, with
    /// `lineFragmentPadding` points left free at both ends of every line. Line spacing lies between lines, not behind
    /// the last. 0 without a toolkit.
    [[nodiscard]] virtual double heightOfText(NSAttributedString* text, double width, double lineFragmentPadding);
    /// The extent of `text` when its lines are broken only where it says so, with `lineFragmentPadding` points left
    /// free at both ends of every line; nothing for an empty text, and without a toolkit.
    [[nodiscard]] virtual NSSize naturalSizeOfText(NSAttributedString* text, double lineFragmentPadding);
    /// Without a toolkit those of a common text font: 0.93 of the size above the line, 0.24 below.
    [[nodiscard]] virtual FontMetrics metricsOfFont(NSFont* font);
    /// Reads HTML as styled text: bold, italic, colours, links, line breaks. Never null; the text as it is, without a
    /// toolkit.
    [[nodiscard]] virtual Ref<NSAttributedString> attributedStringFromHTML(NSString* html);

    // The screen

    /// The screens, the one with the desktop's origin first; none without a toolkit.
    [[nodiscard]] virtual std::vector<ScreenState> screens();
    /// Null, as without a toolkit, for an object that is to be nothing but state.
    [[nodiscard]] virtual std::unique_ptr<ViewPeer> makeViewPeer(NSView& view);
    [[nodiscard]] virtual std::unique_ptr<WindowPeer> makeWindowPeer(NSWindow& window);
    /// To draw into a bitmap, which must outlive the canvas; `size` points are spread over its pixels. Null without a
    /// toolkit.
    [[nodiscard]] virtual std::unique_ptr<Canvas> makeBitmapCanvas(NSBitmapImageRep& bitmap, NSSize size,
                                                                   bool isFlipped);
    /// What the screen shows of the window and of those in front of it, inside of `rect`, which counts in points from
    /// the upper left corner of the first screen with y downwards; transparent where there is none of them. Null for a
    /// window that is not on the screen, for an empty rectangle, and without a toolkit.
    [[nodiscard]] virtual Ref<NSBitmapImageRep> captureOfWindow(NSWindow& window, NSRect rect);

    // The application

    /// Handles events and the main queue until `isDone` says so, which is asked at first and after everything that was
    /// handled. Without a toolkit, the main queue alone.
    virtual void runLoopUntil(FunctionRef<bool()> isDone);
    /// Asks the user and gives the number of the button, from 0 on, that was pressed; for a window that was closed
    /// otherwise that of "Cancel", or else the last one. -1 when nobody can be asked, as without a toolkit.
    [[nodiscard]] virtual NSInteger askUser(NSAlert& alert);

    /// Shows the menu until the user has chosen from it or has dismissed it, with its upper left corner at `location`, in
    /// the coordinates of `view` or, for null, of the screen; `item` lies there instead unless it is null. What was
    /// chosen is performed (see `performActionForItemAtIndex`). Whether anything was; false without a toolkit.
    virtual bool popUpMenu(NSMenu& menu, NSMenuItem* item, NSPoint location, NSView* view);
    /// The application's appearance is another one. All views are told to draw themselves by others.
    virtual void appearanceChanged();

    // The desktop

    /// What delivers notifications to the user; null, without a toolkit, delivers nothing. Owned by the toolkit.
    [[nodiscard]] virtual NotificationService* notificationService();
    /// Opens the address with the program that the user has for it; false when it cannot be tried, as without a toolkit.
    virtual bool openURL(NSURL* url);
    /// Starts the program in that file as a process of its own, without arguments; false when it could not.
    virtual bool launch(NSString* path);
    /// The text that other programs put into the clipboard, or this one; null for none and for what is no text.
    /// Without a toolkit it never leaves the program.
    [[nodiscard]] virtual Ref<NSString> clipboardText();
    virtual void setClipboardText(NSString* text);
    /// The names of the user's keyboard layouts, in the desktop's own spelling ("us", "de"), and which of them is in
    /// use, as an index; none, and -1, where they cannot be told.
    [[nodiscard]] virtual std::vector<std::string> keyboardLayouts();
    [[nodiscard]] virtual NSInteger currentKeyboardLayout();
    virtual void selectKeyboardLayout(NSInteger index);

  private:
    Ref<NSString> m_clipboardText;
};

/// The toolkit in use; never null, as one that can do nothing stands in for a missing one.
[[nodiscard]] ZR_EXPORT Toolkit& currentToolkit();

/// Puts `toolkit` in use, or none for null, and gives back what was in use, null for none. The toolkit is borrowed and
/// must outlive its use.
ZR_EXPORT Toolkit* setCurrentToolkit(Toolkit* toolkit);

} // namespace zr
