#include <zrbasic/platform/appkit/view_controller.h>

#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/message.h>

namespace zr {

ZR_DEFINE_CLASS(NSViewController) {
    is.method<&NSViewController::view>("view");
    is.method<&NSViewController::setView>("setView:");
    is.method<&NSViewController::isViewLoaded>("isViewLoaded");
    is.method<&NSViewController::loadView>("loadView");
    is.method<&NSViewController::viewDidLoad>("viewDidLoad");
    is.method<&NSViewController::title>("title");
    is.method<&NSViewController::setTitle>("setTitle:");
    is.method<&NSViewController::identifier>("identifier");
    is.method<&NSViewController::setIdentifier>("setIdentifier:");
    is.method<&NSViewController::representedObject>("representedObject");
    is.method<&NSViewController::setRepresentedObject>("setRepresentedObject:");
}

NSViewController::NSViewController() = default;

NSViewController::~NSViewController() {
    letGoOfView();
}

Ref<NSView> NSViewController::view() {
    if (m_view) {
        return m_view;
    }
    if (m_isLoading) {
        NSException::raise(NSInternalInconsistencyException,
                           "-[NSViewController view]: asked for by the loadView that is to make it");
    }
    const Ref<NSViewController> self(this);
    {
        m_isLoading = true;
        // What is raised passes through, and the next question tries again.
        const struct Loading {
            bool& flag;
            ~Loading() { flag = false; }
        } loading{m_isLoading};
        send<void>(this, "loadView"_sel);
    }
    if (!m_view) {
        NSException::raise(NSInternalInconsistencyException, "-[NSViewController view]: loadView has set no view");
    }
    const Ref<NSView> made = m_view;
    send<void>(this, "viewDidLoad"_sel);
    return m_view ? m_view : made;
}

void NSViewController::setView(NSView* view) {
    if (m_view == view) {
        return;
    }
    const Ref<NSView> kept(view);
    letGoOfView();
    m_view = kept;
    if (view) {
        view->setNextResponder(this);
    }
}

void NSViewController::letGoOfView() {
    if (!m_view) {
        return;
    }
    // Null when this controller is on its way out already, as the view does not keep it.
    const Ref<NSResponder> next = m_view->nextResponder();
    if (!next || next == this) {
        m_view->setNextResponder(nullptr);
    }
    m_view = nullptr;
}

void NSViewController::loadView() {
    setView(make<NSView>());
}

void NSViewController::viewDidLoad() {}

void NSViewController::setTitle(NSString* title) {
    m_title = title ? Ref<NSString>(cast<NSString>(title->copy())) : nullptr;
}

void NSViewController::setIdentifier(NSString* identifier) {
    m_identifier = identifier ? Ref<NSString>(cast<NSString>(identifier->copy())) : nullptr;
}

void NSViewController::setRepresentedObject(NSObject* object) {
    m_representedObject = id(object);
}

Ref<NSResponder> NSViewController::nextResponder() const {
    if (m_hasOwnNextResponder || !m_view) {
        return NSResponder::nextResponder();
    }
    if (Ref<NSView> superview = m_view->superview()) {
        return superview;
    }
    return m_view->window();
}

void NSViewController::setNextResponder(NSResponder* responder) {
    m_hasOwnNextResponder = responder != nullptr;
    NSResponder::setNextResponder(responder);
}

} // namespace zr
