#include <zrbasic/platform/appkit/toolbar.h>

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_DEFINE_CLASS(NSToolbar) {
    is.method<&NSToolbar::initWithIdentifier>("initWithIdentifier:");
    is.method<&NSToolbar::identifier>("identifier");
    // The spelling is part of the interface; callers read it by name.
    is.method<&NSToolbar::toolbarView>("toolbarView");
}

NSToolbar::NSToolbar() = default;
NSToolbar::~NSToolbar() = default;

id NSToolbar::initWithIdentifier(NSString* identifier) {
    m_identifier = identifier ? Ref<NSString>(cast<NSString>(identifier->copy())) : nullptr;
    return id(this);
}

Ref<NSString> NSToolbar::identifier() const {
    return m_identifier;
}

Ref<NSView> NSToolbar::toolbarView() const {
    return m_view && m_view->superview() ? m_view : nullptr;
}

} // namespace zr
