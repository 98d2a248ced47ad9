#include <zrbasic/platform/appkit/toolkit.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/canvas.h>
#include <zrbasic/platform/appkit/detached_process_p.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/string.h>

#include <atomic>

namespace zr {
namespace {

std::atomic<Toolkit*> toolkitInUse{nullptr};

} // namespace

Toolkit::~Toolkit() = default;

double Toolkit::heightOfText(NSAttributedString*, double, double) {
    return 0;
}

NSSize Toolkit::naturalSizeOfText(NSAttributedString*, double) {
    return {};
}

FontMetrics Toolkit::metricsOfFont(NSFont* font) {
    const double size = font ? font->pointSize() : 0;
    return {0.93 * size, -0.24 * size, 0};
}

Ref<NSAttributedString> Toolkit::attributedStringFromHTML(NSString* html) {
    return html ? make<NSAttributedString>(&NSAttributedString::initWithString, html) : make<NSAttributedString>();
}

std::vector<ScreenState> Toolkit::screens() {
    return {};
}

std::unique_ptr<ViewPeer> Toolkit::makeViewPeer(NSView&) {
    return nullptr;
}

std::unique_ptr<WindowPeer> Toolkit::makeWindowPeer(NSWindow&) {
    return nullptr;
}

std::unique_ptr<Canvas> Toolkit::makeBitmapCanvas(NSBitmapImageRep&, NSSize, bool) {
    return nullptr;
}

Ref<NSBitmapImageRep> Toolkit::captureOfWindow(NSWindow&, NSRect) {
    return nullptr;
}

void Toolkit::runLoopUntil(FunctionRef<bool()> isDone) {
    runMainQueueUntil(DISPATCH_TIME_FOREVER, isDone);
}

NSInteger Toolkit::askUser(NSAlert&) {
    return -1;
}

bool Toolkit::popUpMenu(NSMenu&, NSMenuItem*, NSPoint, NSView*) {
    return false;
}

void Toolkit::appearanceChanged() {}

NotificationService* Toolkit::notificationService() {
    return nullptr;
}

bool Toolkit::openURL(NSURL*) {
    return false;
}

bool Toolkit::launch(NSString* path) {
    return path && detail::startDetached(path->utf8());
}

Ref<NSString> Toolkit::clipboardText() {
    return m_clipboardText;
}

void Toolkit::setClipboardText(NSString* text) {
    m_clipboardText = text ? Ref<NSString>(cast<NSString>(text->copy())) : nullptr;
}

std::vector<std::string> Toolkit::keyboardLayouts() {
    return {};
}

NSInteger Toolkit::currentKeyboardLayout() {
    return -1;
}

void Toolkit::selectKeyboardLayout(NSInteger) {}

Toolkit& currentToolkit() {
    static Toolkit& none = *new Toolkit;
    Toolkit* const toolkit = toolkitInUse.load(std::memory_order_acquire);
    return toolkit != nullptr ? *toolkit : none;
}

Toolkit* setCurrentToolkit(Toolkit* toolkit) {
    return toolkitInUse.exchange(toolkit, std::memory_order_acq_rel);
}

} // namespace zr
