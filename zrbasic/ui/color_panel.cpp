#include <zrbasic/ui/color_panel.h>

#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_DEFINE_CLASS(_ZRColorPanelBridge) {
    is.classMethod<&_ZRColorPanelBridge::shared>("shared");
    is.property<_ZRColorPanelBridge, &_ZRColorPanelBridge::m_target>("target", "setTarget");
    is.method<&_ZRColorPanelBridge::action>("action");
    is.method<&_ZRColorPanelBridge::setAction>("setAction:");
    is.method<&_ZRColorPanelBridge::colorChangedNotification>("colorChangedNotification:");
    is.method<&_ZRColorPanelBridge::colorChangedAction>("colorChangedAction:");
    is.method<&_ZRColorPanelBridge::updateTarget_action>("updateTarget:action:");
    is.method<&_ZRColorPanelBridge::presentColorPanelWithTarget_action>("presentColorPanelWithTarget:action:");
}

// This one takes the place of the panel's own operation.
ZR_GROUP(NSColorPanel, ZRHelper) {
    is.classMethod<&panelWithTarget_action>("panelWithTarget:action:");
    is.method<&weakTarget>("weakTarget");
    is.method<&canBecomeKeyWindow>("canBecomeKeyWindow");
}

_ZRColorPanelBridge::~_ZRColorPanelBridge() = default;

Ref<_ZRColorPanelBridge> _ZRColorPanelBridge::shared() {
    static _ZRColorPanelBridge* const bridge = [] {
        Ref<_ZRColorPanelBridge> fresh = make<_ZRColorPanelBridge>();
        NSNotificationCenter::defaultCenter()->addObserver_selector_name_object(
            fresh, "colorChangedNotification:"_sel, NSColorPanelColorDidChangeNotification(), nullptr);
        return fresh.leak();
    }();
    return bridge;
}

void _ZRColorPanelBridge::colorChangedNotification(NSNotification*) {
    send<void>(this, "colorChangedAction:"_sel, NSColorPanel::sharedColorPanel());
}

bool _ZRColorPanelBridge::canDeliver() {
    const id target = send<id>(this, "target"_sel);
    const SEL action = send<SEL>(this, "action"_sel);
    return target && action && target->respondsToSelector(action);
}

void _ZRColorPanelBridge::colorChangedAction(NSColorPanel* panel) {
    const Ref<_ZRColorPanelBridge> self(this);
    const Ref<NSColorPanel> kept(panel);
    if (!canDeliver()) {
        return;
    }
    // Being asked, the target may have been let go of or replaced: everything is read again.
    const id target = send<id>(this, "target"_sel);
    const SEL action = send<SEL>(this, "action"_sel);
    if (!target || !action || !target->respondsToSelector(action)) {
        return;
    }
    target->performSelector_withObject(action, send<Ref<NSColor>>(panel, "color"_sel));
}

void _ZRColorPanelBridge::updateTarget_action(NSObject* target, SEL action) {
    const id kept(target);
    // Never the new target with the old one's action.
    send<void>(this, "setTarget:"_sel, nullptr);
    send<void>(this, "setAction:"_sel, SEL());
    send<void>(this, "setTarget:"_sel, target);
    send<void>(this, "setAction:"_sel, action);
}

Ref<NSColorPanel> _ZRColorPanelBridge::presentColorPanelWithTarget_action(NSObject* target, SEL action) {
    send<void>(this, "updateTarget:action:"_sel, target, action);
    const Ref<NSColorPanel> panel = NSColorPanel::sharedColorPanel();
    send<void>(panel, "setContinuous:"_sel, true);
    send<void>(panel, "setTarget:"_sel, this);
    send<void>(panel, "setAction:"_sel, "colorChangedAction:"_sel);
    return panel;
}

Ref<NSColorPanel> panelWithTarget_action(NSObject* target, SEL action) {
    return send<Ref<NSColorPanel>>(_ZRColorPanelBridge::shared(), "presentColorPanelWithTarget:action:"_sel, target,
                                   action);
}

id weakTarget(NSColorPanel* self) {
    return self ? _ZRColorPanelBridge::shared()->target() : nullptr;
}

bool canBecomeKeyWindow(NSColorPanel*) {
    return false;
}

} // namespace zr
