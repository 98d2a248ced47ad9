#include <zrbasic/platform/appkit/graphics_context.h>

#include <zrbasic/platform/appkit/color.h>

#include <utility>

namespace zr {
namespace {

Ref<NSGraphicsContext>& current() {
    static auto& context = *new Ref<NSGraphicsContext>;
    return context;
}

} // namespace

ZR_DEFINE_CLASS(NSGraphicsContext) {
    is.classMethod<&NSGraphicsContext::currentContext>("currentContext");
    is.classMethod<&NSGraphicsContext::saveGraphicsState>("saveGraphicsState");
    is.classMethod<&NSGraphicsContext::restoreGraphicsState>("restoreGraphicsState");
    is.method<&NSGraphicsContext::isFlipped>("isFlipped");
}

NSGraphicsContext::NSGraphicsContext() = default;

NSGraphicsContext::~NSGraphicsContext() = default;

Ref<NSGraphicsContext> NSGraphicsContext::currentContext() {
    return current();
}

Ref<NSGraphicsContext> NSGraphicsContext::contextWithCanvas(Canvas& canvas, bool isFlipped) {
    Ref<NSGraphicsContext> context = make<NSGraphicsContext>();
    context->m_canvas = &canvas;
    context->m_isFlipped = isFlipped;
    return context;
}

void NSGraphicsContext::saveGraphicsState() {
    if (const Ref<NSGraphicsContext> context = current()) {
        context->m_kept.push_back(context->m_colors);
        context->m_canvas->save();
    }
}

void NSGraphicsContext::restoreGraphicsState() {
    const Ref<NSGraphicsContext> context = current();
    if (!context || context->m_kept.empty()) {
        return;
    }
    context->m_colors = std::move(context->m_kept.back());
    context->m_kept.pop_back();
    context->m_canvas->restore();
}

Ref<NSColor> NSGraphicsContext::fillColor() const {
    return m_colors.fill ? m_colors.fill : NSColor::blackColor();
}

void NSGraphicsContext::setFillColor(NSColor* color) {
    m_colors.fill = color;
}

Ref<NSColor> NSGraphicsContext::strokeColor() const {
    return m_colors.stroke ? m_colors.stroke : NSColor::blackColor();
}

void NSGraphicsContext::setStrokeColor(NSColor* color) {
    m_colors.stroke = color;
}

CurrentContext::CurrentContext(NSGraphicsContext* context)
    : m_before(std::exchange(current(), Ref<NSGraphicsContext>(context))) {}

CurrentContext::~CurrentContext() {
    current() = std::move(m_before);
}

void NSRectFill(NSRect rect) {
    NSRectFillUsingOperation(rect, NSCompositingOperationCopy);
}

void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation operation) {
    if (const Ref<NSGraphicsContext> context = current()) {
        context->canvas().fillRect(rect, context->fillColor(), operation);
    }
}

void setFill(NSColor* self) {
    const Ref<NSGraphicsContext> context = current();
    if (context && self) {
        context->setFillColor(self);
    }
}

void setStroke(NSColor* self) {
    const Ref<NSGraphicsContext> context = current();
    if (context && self) {
        context->setStrokeColor(self);
    }
}

void set(NSColor* self) {
    setFill(self);
    setStroke(self);
}

void concat(NSAffineTransform* self) {
    const Ref<NSGraphicsContext> context = current();
    if (context && self) {
        context->canvas().concat(self->transformStruct());
    }
}

ZR_GROUP(NSAffineTransform, NSAppKitAdditions) {
    is.method<&concat>("concat");
}

ZR_GROUP(NSColor, NSGraphicsContext) {
    is.method<&setFill>("setFill");
    is.method<&setStroke>("setStroke");
    is.method<&set>("set");
}

} // namespace zr
