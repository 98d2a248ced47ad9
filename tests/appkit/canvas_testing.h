#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/color_space.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/path.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace zr::test {

inline std::string written(NSRect rect) {
    std::ostringstream out;
    out << rect.origin.x << ',' << rect.origin.y << ' ' << rect.size.width << 'x' << rect.size.height;
    return out.str();
}

/// What was drawn, in order, as a line of text each; texts are kept as well.
struct DrawingRecord {
    struct Text {
        Ref<NSAttributedString> text;
        NSRect rect;
        bool isSingleLine = false;
    };

    /// What the first character of the first text has.
    [[nodiscard]] id attribute(NSString* name) const {
        return texts.at(0).text->attribute_atIndex_effectiveRange(name, 0, nullptr);
    }

    /// Whether a line of the log begins with that, or several do in a row.
    [[nodiscard]] bool has(const std::string& line) const {
        return ("\n" + log).find("\n" + line) != std::string::npos;
    }

    std::string log;
    std::vector<Text> texts;
};

/// Draws into a record.
class DrawingRecorder final : public Canvas {
  public:
    explicit DrawingRecorder(DrawingRecord& record) : m_record(record) {}

    void save() override { m_record.log += "save\n"; }
    void restore() override { m_record.log += "restore\n"; }
    void clipToRect(NSRect rect) override { m_record.log += "clip " + written(rect) + '\n'; }
    void concat(const NSAffineTransformStruct&) override { m_record.log += "concat\n"; }
    void fillRect(NSRect rect, NSColor* color, NSCompositingOperation operation) override {
        m_record.log += "fill " + written(rect) + ' ' + named(color);
        if (operation != NSCompositingOperationSourceOver) {
            m_record.log += operation == NSCompositingOperationCopy ? " in place" : " otherwise";
        }
        m_record.log += '\n';
    }
    void fillRoundedRect(NSRect rect, double xRadius, double yRadius, NSColor* color) override {
        std::ostringstream out;
        out << "fill round " << xRadius << ' ' << yRadius << ' ' << written(rect) << ' ' << named(color) << '\n';
        m_record.log += out.str();
    }
    void strokeRoundedRect(NSRect rect, double radius, double width, NSColor* color) override {
        std::ostringstream out;
        out << "line " << width << " round " << radius << ' ' << written(rect) << ' ' << named(color) << '\n';
        m_record.log += out.str();
    }
    void fillPath(const CGPath& path, NSColor* color) override {
        std::ostringstream out;
        out << "path of " << path.elements().size() << ' ' << named(color) << '\n';
        m_record.log += out.str();
    }
    void strokePath(const CGPath& path, double width, NSColor* color) override {
        std::ostringstream out;
        out << "line " << width << " wide along " << path.elements().size() << ' ' << named(color) << '\n';
        m_record.log += out.str();
    }
    void drawText(NSAttributedString* text, NSRect rect, bool isSingleLine) override {
        m_record.log +=
            "text '" + text->string()->utf8() + "' " + written(rect) + (isSingleLine ? " on one line\n" : "\n");
        m_record.texts.push_back({Ref<NSAttributedString>(text), rect, isSingleLine});
    }
    void drawBitmap(NSBitmapImageRep*, NSRect to, NSRect, NSCompositingOperation, double fraction) override {
        std::ostringstream out;
        out << "bitmap " << fraction << ' ' << written(to) << '\n';
        m_record.log += out.str();
    }

  private:
    /// Common colours by name, others as "red/green/blue" in percent.
    static std::string named(NSColor* color) {
        if (!color) {
            return "none";
        }
        const std::pair<const char*, Ref<NSColor>> names[] = {
            {"white", NSColor::whiteColor()}, {"light", NSColor::lightGrayColor()}, {"clear", NSColor::clearColor()},
            {"red", NSColor::redColor()},     {"green", NSColor::greenColor()},     {"black", NSColor::blackColor()},
        };
        const Ref<NSColor> rgb = color->colorUsingColorSpace(NSColorSpace::sRGBColorSpace());
        for (const auto& [name, known] : names) {
            if (known->colorUsingColorSpace(NSColorSpace::sRGBColorSpace())->isEqual(rgb)) {
                return name;
            }
        }
        std::ostringstream out;
        out << std::lround(rgb->redComponent() * 100) << '/' << std::lround(rgb->greenComponent() * 100) << '/'
            << std::lround(rgb->blueComponent() * 100);
        if (rgb->alphaComponent() < 1) {
            out << " at " << rgb->alphaComponent();
        }
        return out.str();
    }

    DrawingRecord& m_record;
};

/// What is drawn into a fresh context by `draw`.
template <class Draw>
DrawingRecord recorded(const Draw& draw, bool isFlipped = false) {
    DrawingRecord record;
    DrawingRecorder canvas(record);
    const Ref<NSGraphicsContext> context = NSGraphicsContext::contextWithCanvas(canvas, isFlipped);
    const CurrentContext current(context);
    draw();
    return record;
}

/// What `view` itself draws.
inline DrawingRecord drawn(NSView* view) {
    return recorded([view] { send<void>(view, "drawRect:"_sel, view->bounds()); });
}

} // namespace zr::test
