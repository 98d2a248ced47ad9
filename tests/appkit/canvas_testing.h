#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

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
        m_record.log += operation == NSCompositingOperationSourceOver ? "\n" : " not over\n";
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
    void drawText(NSAttributedString* text, NSRect rect, bool isSingleLine) override {
        m_record.log +=
            "text '" + text->string()->utf8() + "' " + written(rect) + (isSingleLine ? " on one line\n" : "\n");
        m_record.texts.push_back({Ref<NSAttributedString>(text), rect, isSingleLine});
    }
    void drawBitmap(NSBitmapImageRep*, NSRect to, NSRect, NSCompositingOperation, double) override {
        m_record.log += "bitmap " + written(to) + '\n';
    }

  private:
    static std::string named(NSColor* color) {
        if (!color) {
            return "none";
        }
        const std::pair<const char*, Ref<NSColor>> names[] = {
            {"white", NSColor::whiteColor()}, {"light", NSColor::lightGrayColor()}, {"clear", NSColor::clearColor()},
            {"red", NSColor::redColor()},     {"green", NSColor::greenColor()},     {"black", NSColor::blackColor()},
        };
        for (const auto& [name, known] : names) {
            if (known->isEqual(color)) {
                return name;
            }
        }
        return color->description()->utf8();
    }

    DrawingRecord& m_record;
};

/// What is drawn into a fresh context by `draw`.
template <class Draw>
DrawingRecord recorded(const Draw& draw) {
    DrawingRecord record;
    DrawingRecorder canvas(record);
    const Ref<NSGraphicsContext> context = NSGraphicsContext::contextWithCanvas(canvas, false);
    const CurrentContext current(context);
    draw();
    return record;
}

/// What `view` itself draws.
inline DrawingRecord drawn(NSView* view) {
    return recorded([view] { send<void>(view, "drawRect:"_sel, view->bounds()); });
}

/// A toolkit whose letters are all 10 points wide and whose fonts are as high as it is told. In use while it stands.
class MeasuringToolkit final : public Toolkit {
  public:
    MeasuringToolkit() : m_previous(setCurrentToolkit(this)) {}
    ~MeasuringToolkit() override { setCurrentToolkit(m_previous); }

    NSSize naturalSizeOfText(NSAttributedString* text, double lineFragmentPadding) override {
        if (text->length() == 0) {
            return NSZeroSize;
        }
        return {10 * static_cast<double>(text->length()) + 2 * lineFragmentPadding,
                metrics.ascender - metrics.descender};
    }
    FontMetrics metricsOfFont(NSFont*) override { return metrics; }

    FontMetrics metrics{12, -3, 1};

  private:
    Toolkit* m_previous;
};

} // namespace zr::test
