#include <zrbasic/platform/appkit/alert.h>

#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/run_loop.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/thread.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

/// What an alert says that was given no message.
Ref<NSString> defaultMessageText() {
    return "Alert"_ns;
}

Ref<NSString> copyOf(NSString* text) {
    return text ? Ref<NSString>(cast<NSString>(text->copy())) : ""_ns;
}

/// The window of an alert.
class AlertPanel : public NSPanel {
    ZR_OBJECT(AlertPanel, NSPanel)
  public:
    [[nodiscard]] bool isModalPanel() const override { return true; }
};

} // namespace

ZR_DEFINE_CLASS(NSAlert) {
    is.method<&NSAlert::messageText>("messageText");
    is.method<&NSAlert::setMessageText>("setMessageText:");
    is.method<&NSAlert::informativeText>("informativeText");
    is.method<&NSAlert::setInformativeText>("setInformativeText:");
    is.method<&NSAlert::alertStyle>("alertStyle");
    is.method<&NSAlert::setAlertStyle>("setAlertStyle:");
    is.method<&NSAlert::addButtonWithTitle>("addButtonWithTitle:");
    is.method<&NSAlert::buttons>("buttons");
    is.method<&NSAlert::window>("window");
    is.method<&NSAlert::runModal>("runModal");
}

NSAlert::NSAlert() : m_messageText(defaultMessageText()), m_informativeText(""_ns) {}

NSAlert::~NSAlert() = default;

void NSAlert::setMessageText(NSString* text) {
    m_messageText = copyOf(text);
}

void NSAlert::setInformativeText(NSString* text) {
    m_informativeText = copyOf(text);
}

Ref<NSButton> NSAlert::addButtonWithTitle(NSString* title) {
    const Ref<NSButton> button = make<NSButton>();
    button->setTitle(title);
    button->setTag(NSAlertFirstButtonReturn + static_cast<NSInteger>(m_buttons.size()));
    if (m_buttons.empty()) {
        button->setKeyEquivalent("\r"_ns);
    } else if (button->title()->isEqual("Cancel"_ns)) {
        button->setKeyEquivalent("\x1b"_ns);
    }
    m_buttons.push_back(button);
    return button;
}

Ref<NSArray> NSAlert::buttons() const {
    return NSArray::fromElements(std::vector<id>(m_buttons.begin(), m_buttons.end()));
}

Ref<NSPanel> NSAlert::window() {
    if (!m_window) {
        m_window = make<AlertPanel>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {420, 120}},
                                    NSUInteger{NSWindowStyleMaskTitled});
    }
    return m_window;
}

NSInteger NSAlert::runModal() {
    if (!NSThread::isMainThread()) {
        return NSModalResponseAbort;
    }
    // The user may take long, and who asked may be gone by then.
    const Ref<NSAlert> self(this);
    // Whoever looks for a modal panel among the application's windows is to find this one.
    const Ref<NSPanel> panel = window();
    if (m_buttons.empty()) {
        send<id>(this, "addButtonWithTitle:"_sel, "OK"_ns);
    }
    const RunLoopModeScope mode(NSModalPanelRunLoopMode());
    const NSInteger button = currentToolkit().askUser(*this);
    return button < 0 ? NSInteger{NSModalResponseAbort} : NSAlertFirstButtonReturn + button;
}

} // namespace zr
