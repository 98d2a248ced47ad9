#pragma once

#include <zrbasic/platform/appkit/canvas.h>
#include <zrbasic/platform/runtime/declare.h>

#include <vector>

namespace zr {

class NSAffineTransform;

/// Where drawing goes, with the colours that shapes are drawn in. While a view or an image is drawn there is a current
/// one; whoever draws asks for that. Main thread only.
class ZR_EXPORT NSGraphicsContext : public NSObject {
    ZR_DECLARE_CLASS(NSGraphicsContext, NSObject)
  public:
    NSGraphicsContext();
    ~NSGraphicsContext() override;

    /// The context of what is being drawn; null when nothing is.
    [[nodiscard]] static Ref<NSGraphicsContext> currentContext();
    /// For the canvas, which is borrowed: the context must not be used when that is gone.
    [[nodiscard]] static Ref<NSGraphicsContext> contextWithCanvas(Canvas& canvas, bool isFlipped);

    /// Of the current context: keeps clipping, transform and colours, and brings them back. Without one, and when
    /// nothing is kept, they do nothing.
    static void saveGraphicsState();
    static void restoreGraphicsState();

    [[nodiscard]] Canvas& canvas() const { return *m_canvas; }
    /// Whether y grows downwards.
    [[nodiscard]] bool isFlipped() const { return m_isFlipped; }

    /// Black at first; null sets that.
    [[nodiscard]] Ref<NSColor> fillColor() const;
    void setFillColor(NSColor* color);
    [[nodiscard]] Ref<NSColor> strokeColor() const;
    void setStrokeColor(NSColor* color);

  private:
    friend class CurrentContext;

    struct Colors {
        Ref<NSColor> fill;
        Ref<NSColor> stroke;
    };

    Canvas* m_canvas = nullptr;
    bool m_isFlipped = false;
    Colors m_colors;
    std::vector<Colors> m_kept;
};

/// Makes `context` the current one while this stands, and the one before again afterwards. For toolkits and images.
class [[nodiscard]] ZR_EXPORT CurrentContext {
  public:
    explicit CurrentContext(NSGraphicsContext* context);
    ~CurrentContext();
    CurrentContext(const CurrentContext&) = delete;
    CurrentContext& operator=(const CurrentContext&) = delete;

  private:
    Ref<NSGraphicsContext> m_before;
};

// These draw into the current context and do nothing without one.

/// Fills with the current fill colour, in place of what is there.
ZR_EXPORT void NSRectFill(NSRect rect);
/// Fills with the current fill colour, as `operation` says.
ZR_EXPORT void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation operation);

// NSColor(NSGraphicsContext)

/// Makes the receiver the current context's colour for filling, for lines, or for both.
ZR_EXPORT void setFill(NSColor* self);
ZR_EXPORT void setStroke(NSColor* self);
ZR_EXPORT void set(NSColor* self);

// NSAffineTransform(NSAppKitAdditions)

/// Everything drawn into the current context from here on goes through the receiver first.
ZR_EXPORT void concat(NSAffineTransform* self);

} // namespace zr
