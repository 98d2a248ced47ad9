#include <zrbasic/platform/qt/toolkit_p.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/notification_service.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/qt/bitmap_canvas_p.h>
#include <zrbasic/platform/qt/desktop_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/html_reader_p.h>
#include <zrbasic/platform/qt/keyboard_layout_p.h>
#include <zrbasic/platform/qt/menu_p.h>
#include <zrbasic/platform/qt/message_box_p.h>
#include <zrbasic/platform/qt/notification_service_p.h>
#include <zrbasic/platform/qt/palette_p.h>
#include <zrbasic/platform/qt/peers_p.h>
#include <zrbasic/platform/qt/screens_p.h>
#include <zrbasic/platform/qt/text_layout_p.h>
#include <zrbasic/platform/qt/view_capture_p.h>
#include <zrbasic/platform/qt/view_peer_p.h>

namespace zr::qt {

QtToolkit::QtToolkit() = default;

QtToolkit::~QtToolkit() = default;

double QtToolkit::heightOfText(NSAttributedString* text, double width, double lineFragmentPadding) {
    return heightOf(text, width, lineFragmentPadding);
}

NSSize QtToolkit::naturalSizeOfText(NSAttributedString* text, double lineFragmentPadding) {
    return naturalSizeOf(text, lineFragmentPadding);
}

FontMetrics QtToolkit::metricsOfFont(NSFont* font) {
    return metricsOf(font);
}

Ref<NSAttributedString> QtToolkit::attributedStringFromHTML(NSString* html) {
    return readHTML(html);
}

std::vector<ScreenState> QtToolkit::screens() {
    return presentScreens();
}

std::unique_ptr<ViewPeer> QtToolkit::makeViewPeer(NSView& view) {
    return makePeer(view);
}

std::unique_ptr<WindowPeer> QtToolkit::makeWindowPeer(NSWindow& window) {
    return makePeer(window);
}

std::unique_ptr<Canvas> QtToolkit::makeBitmapCanvas(NSBitmapImageRep& bitmap, NSSize size, bool isFlipped) {
    return std::make_unique<BitmapCanvas>(bitmap, size, isFlipped);
}

Ref<NSBitmapImageRep> QtToolkit::captureOfWindow(NSWindow& window, NSRect rect) {
    return captureOf(window, rect);
}

void QtToolkit::runLoopUntil(FunctionRef<bool()> isDone) {
    handleEventsUntil(isDone);
}

NSInteger QtToolkit::askUser(NSAlert& alert) {
    return runMessageBox(alert);
}

bool QtToolkit::popUpMenu(NSMenu& menu, NSMenuItem* item, NSPoint location, NSView* view) {
    return runMenu(menu, item, location, view);
}

void QtToolkit::appearanceChanged() {
    followAppearance();
}

NotificationService* QtToolkit::notificationService() {
    if (!m_notificationService) {
        m_notificationService = makeNotificationService();
    }
    return m_notificationService.get();
}

bool QtToolkit::openURL(NSURL* url) {
    return openAddress(url);
}

bool QtToolkit::launch(NSString* path) {
    return launchProgram(path);
}

Ref<NSString> QtToolkit::clipboardText() {
    return textOfClipboard();
}

void QtToolkit::setClipboardText(NSString* text) {
    putIntoClipboard(text);
}

std::vector<std::string> QtToolkit::keyboardLayouts() {
    return presentKeyboardLayouts();
}

NSInteger QtToolkit::currentKeyboardLayout() {
    return keyboardLayoutInUse();
}

void QtToolkit::selectKeyboardLayout(NSInteger index) {
    useKeyboardLayout(index);
}

} // namespace zr::qt
