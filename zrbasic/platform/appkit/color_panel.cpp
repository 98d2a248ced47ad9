#include <zrbasic/platform/appkit/color_panel.h>

#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {
namespace {

/// Behind the message: asking the object itself would come back here.
bool canBecomeKeyByItself(NSColorPanel* panel) {
    return panel && panel->NSPanel::canBecomeKeyWindow();
}

} // namespace

ZR_DEFINE_CLASS(NSColorPanel) {
    is.classMethod<&NSColorPanel::sharedColorPanel>("sharedColorPanel");
    is.method<&NSColorPanel::color>("color");
    is.method<&NSColorPanel::setColor>("setColor:");
    is.method<&NSColorPanel::isContinuous>("isContinuous");
    is.method<&NSColorPanel::setContinuous>("setContinuous:");
    is.method<&NSColorPanel::showsAlpha>("showsAlpha");
    is.method<&NSColorPanel::setShowsAlpha>("setShowsAlpha:");
    is.method<&NSColorPanel::setTarget>("setTarget:");
    is.method<&NSColorPanel::setAction>("setAction:");
    is.method<&canBecomeKeyByItself>("canBecomeKeyWindow");
}

ZR_DEFINE_CLASS(ColorPickerView) {
    is.method<&ColorPickerView::panel>("panel");
}

Ref<NSString> NSColorPanelColorDidChangeNotification() {
    return "NSColorPanelColorDidChangeNotification"_ns;
}

NSColorPanel::NSColorPanel() : m_color(NSColor::whiteColor()) {}

NSColorPanel::~NSColorPanel() = default;

Ref<NSColorPanel> NSColorPanel::sharedColorPanel() {
    static NSColorPanel* const panel = make<NSColorPanel>().leak();
    return panel;
}

id NSColorPanel::init() {
    return initWithContentRect_styleMask(
        {{0, 0}, {480, 320}}, NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskUtilityWindow);
}

id NSColorPanel::initWithContentRect_styleMask(NSRect contentRect, NSUInteger styleMask) {
    NSPanel::initWithContentRect_styleMask(contentRect, styleMask);
    setTitle("Colors"_ns);
    setFloatingPanel(true);
    // Colours are chosen for a modal window too.
    setWorksWhenModal(true);
    m_picker = make<ColorPickerView>(&NSView::initWithFrame, NSRect{NSZeroPoint, contentRect.size});
    m_picker->m_panel = Weak<NSColorPanel>(this);
    setContentView(m_picker);
    return id(this);
}

void NSColorPanel::setColor(NSColor* color) {
    if (!color || color->isEqual(m_color)) {
        return;
    }
    m_color = Ref<NSColor>(color);
    if (m_picker && m_picker->peer()) {
        m_picker->peer()->viewChanged(ViewChange::Content);
    }
    announce();
}

void NSColorPanel::setShowsAlpha(bool shows) {
    if (m_showsAlpha == shows) {
        return;
    }
    m_showsAlpha = shows;
    if (m_picker && m_picker->peer()) {
        m_picker->peer()->viewChanged(ViewChange::Content);
    }
}

bool NSColorPanel::canBecomeKeyWindow() const {
    return send<bool>(const_cast<NSColorPanel*>(this), "canBecomeKeyWindow"_sel);
}

void NSColorPanel::userDidChoose(NSColor* color, bool isDragging) {
    if (color && !color->isEqual(m_color)) {
        m_color = Ref<NSColor>(color);
        m_isUntold = true;
    }
    if (m_isUntold && (!isDragging || m_isContinuous)) {
        announce();
    }
}

void NSColorPanel::announce() {
    // Whoever is told may choose another colour, and that is told of then.
    m_isUntold = false;
    const Ref<NSColorPanel> self(this);
    NSNotificationCenter::defaultCenter()->postNotificationName_object(NSColorPanelColorDidChangeNotification(), this);
    const id target = m_target.lock();
    if (target && m_action && target->respondsToSelector(m_action)) {
        send<void>(target, m_action, this);
    }
}

ColorPickerView::ColorPickerView() = default;

ColorPickerView::~ColorPickerView() = default;

} // namespace zr
