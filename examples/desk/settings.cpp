#include "settings.h"

#include "look.h"

#include <zrbasic/core/color.h>
#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/ui/app.h>
#include <zrbasic/ui/application.h>
#include <zrbasic/ui/callback_target.h>
#include <zrbasic/ui/color_panel.h>
#include <zrbasic/ui/device.h>
#include <zrbasic/ui/plain_view.h>
#include <zrbasic/ui/view.h>
#include <zrbasic/ui/window.h>

namespace desk {

using namespace zr;

namespace {

constexpr NSSize extent{460, 292};
constexpr double margin = 20;
constexpr double nameWidth = 120;
constexpr double rowHeight = 34;

using OnChange = std::function<void(NSString* key, NSObject* value)>;

void addRow(NSView* content, double y, NSString* name, NSView* view) {
    content->addSubview(label(name, NSMakeRect(margin, y + 6, nameWidth, 18)));
    view->setFrameOrigin(NSMakePoint(margin + nameWidth, y + (28 - view->frame().size.height) / 2));
    content->addSubview(view);
}

/// A button that brings up the colour panel, and beside it what is chosen.
void addColorRow(NSView* content, double y, Way way, const OnChange& onChange) {
    const Ref<NSView> sample =
        make<NSView>(&NSView::initWithFrame, NSMakeRect(margin + nameWidth + 110, y + 4, 20, 20));
    setZr_cornerRadius(sample, 4);
    sample->layer()->setBackgroundColor(highlight(way));
    content->addSubview(sample);
    const auto target = ZRXCallbackTarget::targetWithCallback([sample, way, onChange](NSObject* color) {
        onChange(highlightKey(way), hexStringValue(static_cast<NSColor*>(color)));
        sample->layer()->setBackgroundColor(highlight(way));
    });
    const bool isUp = way == Way::Up;
    const auto choose = button("Choose\u2026"_ns, NSMakeRect(0, 0, 100, 26), highlightKey(way), [target, way] {
        // Nobody is told of the colour that it begins with.
        panelWithTarget_action(nullptr, {})->setColor(highlight(way));
        panelWithTarget_action(target, "invoke:"_sel)->orderFront(nullptr);
    });
    addRow(content, y, isUp ? "Rising prices"_ns : "Falling prices"_ns, choose);
}

} // namespace

void showSettings(OnChange onChange, std::function<void()> onRestart) {
    const auto application = NSApplication::sharedApplication();
    const auto shown = windowWithIdentifier(application, "settings"_ns);
    if (shown && shown->isVisible()) {
        shown->makeKeyAndOrderFront(nullptr);
        return;
    }
    const auto window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{NSZeroPoint, extent},
                                       NSUInteger{NSWindowStyleMaskTitled | NSWindowStyleMaskClosable});
    window->setTitle("Settings"_ns);
    window->setIdentifier("settings"_ns);
    const auto content = make<ZRXView>(&ZRXView::initWithFrame, NSRect{NSZeroPoint, extent});
    window->setContentView(content);
    double y = margin;
    addColorRow(content, y, Way::Up, onChange);
    addColorRow(content, y += rowHeight, Way::Down, onChange);
    const auto dark = NSButton::checkboxWithTitle_target_action("Dark"_ns, nullptr, {});
    dark->setIdentifier("dark"_ns);
    dark->setState(isDarkMode(application));
    setCallback(dark, [onChange](NSObject* box) {
        const bool isOn = static_cast<NSButton*>(box)->state() == NSControlStateValueOn;
        onChange("AppleInterfaceStyle"_ns, isOn ? "Dark"_ns : nullptr);
    });
    addRow(content, y += rowHeight, "Appearance"_ns, dark);
    const NSRect line = NSMakeRect(0, 0, extent.width - 2 * margin - nameWidth, 16);
    const auto version = NSString::stringWithFormat("%@ (%@)"_ns, ZRXApp::appVersion(), ZRXApp::appBuildVersion());
    addRow(content, y += rowHeight, "Version"_ns, label(version, line));
    addRow(content, y += rowHeight, "Started"_ns, label(ZRXApp::shared()->startupDate()->description(), line));
    addRow(content, y += rowHeight, "Device"_ns, label(platformUUID<ZRXDevice>(), line));
    y += rowHeight + 10;
    content->addSubview(button("Restart"_ns, NSMakeRect(margin, y, 100, 28), "restart"_ns, std::move(onRestart)));
    NSWindow* const closing = window;
    const auto end = button("Close"_ns, NSMakeRect(extent.width - margin - 100, y, 100, 28), "closeSettings"_ns,
                            [closing] { closing->performClose(nullptr); });
    end->setKeyEquivalent("\033"_ns);
    content->addSubview(end);
    centerAtScreen(window);
    zr_showWindow(window, nullptr);
}

} // namespace desk
