#include <zrbasic/ui/text_field_cell.h>

#include <zrbasic/platform/appkit/graphics_context.h>

#include <cmath>

namespace zr {
namespace {

constexpr double securePadding = 5;

NSRect centred(NSRect frame, NSFont* font, double padding) {
    const double free = frame.size.height * 0.5 - (font->ascender() + font->descender());
    return NSInsetRect(frame, padding, std::floor(free) + 2);
}

NSRect adjusted(NSCell* cell, NSRect frame) {
    return send<NSRect>(cell, "adjustedFrameToVerticallyCenterText:"_sel, frame);
}

void fillBackground(const NSTextFieldCell* cell, NSRect frame) {
    const Ref<NSGraphicsContext> context = NSGraphicsContext::currentContext();
    const Ref<NSColor> color = cell->backgroundColor();
    if (context && color) {
        context->canvas().fillRect(frame, color, NSCompositingOperationSourceOver);
    }
}

} // namespace

ZR_DEFINE_CLASS(ZRXTextFieldCell) {
    is.method<&ZRXTextFieldCell::xPadding>("xPadding");
    is.method<&ZRXTextFieldCell::setXPadding>("setXPadding:");
    is.method<&ZRXTextFieldCell::adjustedFrameToVerticallyCenterText>("adjustedFrameToVerticallyCenterText:");
}

ZRXTextFieldCell::ZRXTextFieldCell() = default;
ZRXTextFieldCell::~ZRXTextFieldCell() = default;

void ZRXTextFieldCell::setXPadding(double padding) {
    m_xPadding = padding;
    changed();
}

NSRect ZRXTextFieldCell::adjustedFrameToVerticallyCenterText(NSRect frame) {
    return centred(frame, font(), m_xPadding);
}

// The background belongs to the interior here, and twice would show in a colour that is not opaque.
void ZRXTextFieldCell::drawBackground(NSRect) const {}

void ZRXTextFieldCell::drawInteriorWithFrame_inView(NSRect frame, NSView* view) {
    fillBackground(this, frame);
    NSTextFieldCell::drawInteriorWithFrame_inView(adjusted(this, frame), view);
}

void ZRXTextFieldCell::editWithFrame_inView_editor_delegate_event(NSRect frame, NSView* view, NSText* editor,
                                                                  NSObject* delegate, NSEvent* event) {
    NSTextFieldCell::editWithFrame_inView_editor_delegate_event(adjusted(this, frame), view, editor, delegate, event);
}

void ZRXTextFieldCell::selectWithFrame_inView_editor_delegate_start_length(NSRect frame, NSView* view, NSText* editor,
                                                                           NSObject* delegate, NSInteger start,
                                                                           NSInteger length) {
    NSTextFieldCell::selectWithFrame_inView_editor_delegate_start_length(adjusted(this, frame), view, editor, delegate,
                                                                         start, length);
}

ZR_DEFINE_CLASS(ZRXSecureTextFieldCell) {
    is.method<&ZRXSecureTextFieldCell::adjustedFrameToVerticallyCenterText>("adjustedFrameToVerticallyCenterText:");
}

ZRXSecureTextFieldCell::ZRXSecureTextFieldCell() = default;
ZRXSecureTextFieldCell::~ZRXSecureTextFieldCell() = default;

NSRect ZRXSecureTextFieldCell::adjustedFrameToVerticallyCenterText(NSRect frame) {
    return centred(frame, font(), securePadding);
}

void ZRXSecureTextFieldCell::drawBackground(NSRect) const {}

void ZRXSecureTextFieldCell::drawInteriorWithFrame_inView(NSRect frame, NSView* view) {
    fillBackground(this, frame);
    NSSecureTextFieldCell::drawInteriorWithFrame_inView(adjusted(this, frame), view);
}

void ZRXSecureTextFieldCell::editWithFrame_inView_editor_delegate_event(NSRect frame, NSView* view, NSText* editor,
                                                                        NSObject* delegate, NSEvent* event) {
    NSSecureTextFieldCell::editWithFrame_inView_editor_delegate_event(adjusted(this, frame), view, editor, delegate,
                                                                      event);
}

void ZRXSecureTextFieldCell::selectWithFrame_inView_editor_delegate_start_length(NSRect frame, NSView* view,
                                                                                 NSText* editor, NSObject* delegate,
                                                                                 NSInteger start, NSInteger length) {
    NSSecureTextFieldCell::selectWithFrame_inView_editor_delegate_start_length(adjusted(this, frame), view, editor,
                                                                               delegate, start, length);
}

} // namespace zr
