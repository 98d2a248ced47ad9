#include <zrbasic/platform/appkit/appearance.h>

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

Ref<NSString> NSAppearanceNameAqua() {
    return "NSAppearanceNameAqua"_ns;
}

Ref<NSString> NSAppearanceNameDarkAqua() {
    return "NSAppearanceNameDarkAqua"_ns;
}

ZR_DEFINE_CLASS(NSAppearance) {
    is.classMethod<&NSAppearance::appearanceNamed>("appearanceNamed:");
    is.classMethod<&NSAppearance::currentDrawingAppearance>("currentDrawingAppearance");
    is.method<&NSAppearance::name>("name");
    is.method<&NSAppearance::isDark>("isDark");
}

NSAppearance::NSAppearance() = default;
NSAppearance::~NSAppearance() = default;

Ref<NSAppearance> NSAppearance::appearanceNamed(NSString* name) {
    static NSAppearance* const light = make<NSAppearance>().leak();
    static NSAppearance* const dark = [] {
        const Ref<NSAppearance> made = make<NSAppearance>();
        made->m_isDark = true;
        return Ref<NSAppearance>(made).leak();
    }();
    if (NSAppearanceNameAqua()->isEqual(name)) {
        return Ref<NSAppearance>(light);
    }
    return NSAppearanceNameDarkAqua()->isEqual(name) ? Ref<NSAppearance>(dark) : nullptr;
}

Ref<NSAppearance> NSAppearance::currentDrawingAppearance() {
    return NSApplication::sharedApplication()->effectiveAppearance();
}

Ref<NSString> NSAppearance::name() const {
    return m_isDark ? NSAppearanceNameDarkAqua() : NSAppearanceNameAqua();
}

// Of the application

Ref<NSAppearance> NSApplication::effectiveAppearance() const {
    return m_appearance ? m_appearance : NSAppearance::appearanceNamed(NSAppearanceNameAqua());
}

void NSApplication::setAppearance(NSAppearance* appearance) {
    const Ref<NSString> before = effectiveAppearance()->name();
    m_appearance = Ref<NSAppearance>(appearance);
    if (before->isEqual(effectiveAppearance()->name())) {
        return;
    }
    const NSUInteger change = ++m_appearanceChanges;
    currentToolkit().appearanceChanged();
    std::exception_ptr raised;
    const Ref<NSArray> all = windows();
    for (const id& window : all) {
        for (const Ref<NSView>& view : static_cast<NSWindow*>(window.get())->outermostViews()) {
            tellOfAppearance(view, change, raised);
        }
    }
    if (raised) {
        std::rethrow_exception(raised);
    }
}

void NSApplication::tellOfAppearance(const Ref<NSView>& view, NSUInteger change, std::exception_ptr& raised) {
    const auto tell = [&](auto work) {
        // Once somebody who was told has set another one, everybody has heard of that.
        if (change != m_appearanceChanges) {
            return;
        }
        try {
            work();
        } catch (const NSException&) {
            raised = raised ? raised : std::current_exception();
        }
    };
    tell([&] { send<void>(view, "viewDidChangeEffectiveAppearance"_sel); });
    tell([&] { send<void>(view, "setNeedsDisplay:"_sel, true); });
    // Whoever has left meanwhile shows nothing.
    const Ref<NSArray> subviews = view->window() ? view->subviews() : NSArray::array();
    for (const id& element : subviews) {
        const Ref<NSView> subview(static_cast<NSView*>(element.get()));
        if (subview->superview() == view) {
            tellOfAppearance(subview, change, raised);
        }
    }
}

void NSView::viewDidChangeEffectiveAppearance() {}

} // namespace zr
