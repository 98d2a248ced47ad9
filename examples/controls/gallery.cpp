#include "gallery.h"

#include "shades.h"

#include <zrbasic/platform/appkit/graphics_context.h>
#include <zrbasic/platform/appkit/text_field.h>

#include <algorithm>

namespace controls {
namespace {

using namespace zr;

constexpr double margin = 24;
constexpr double captionWidth = 140;
constexpr double captionGap = 12;
constexpr double columnGap = 36;
constexpr double headingHeight = 18;
constexpr double gapBelowHeading = 12;
constexpr double gapBetweenRows = 8;
constexpr double gapBetweenSections = 24;
constexpr double captionHeight = 16;

/// The paper, with its origin at the upper left.
class GallerySheet : public NSView {
    ZR_OBJECT(GallerySheet, NSView)
  public:
    [[nodiscard]] bool isFlipped() const override { return true; }

    void drawRect(NSRect) override {
        setFill(shade(NSColor::whiteColor(), NSColor::windowBackgroundColor()));
        NSRectFill(bounds());
        setFill(shade(NSColor::colorWithWhite_alpha(0.86, 1), NSColor::separatorColor()));
        for (const NSRect& line : lines) {
            NSRectFill(line);
        }
    }
    ZR_METHOD(drawRect, "drawRect:")

    std::vector<NSRect> lines;
};

Ref<NSTextField> text(const std::string& words, NSRect frame, NSFont* font, NSColor* color) {
    const Ref<NSTextField> made = make<NSTextField>(&NSTextField::initWithFrame, frame);
    made->setEditable(false);
    made->setSelectable(false);
    made->setBezeled(false);
    made->setBordered(false);
    made->setDrawsBackground(false);
    made->setFont(font);
    made->setTextColor(color);
    made->setStringValue(NSString::fromUtf8(words));
    return made;
}

/// As wide as its widest specimen needs it.
double widthOf(const std::vector<Section*>& sections) {
    double widest = 0;
    for (const Section* section : sections) {
        for (const Specimen& specimen : section->specimens) {
            widest = std::max(widest, specimen.view->frame().size.width);
        }
    }
    return captionWidth + captionGap + widest;
}

/// Puts a column of sections onto the sheet and says how far down it reaches.
double layOut(GallerySheet& sheet, const std::vector<Section*>& sections, double x) {
    const double columnWidth = widthOf(sections);
    const Ref<NSFont> headingFont = NSFont::boldSystemFontOfSize(13);
    const Ref<NSFont> captionFont = NSFont::systemFontOfSize(11);
    const Ref<NSColor> captionColor = shade(NSColor::colorWithWhite_alpha(0.45, 1), NSColor::secondaryLabelColor());
    double y = margin;
    for (Section* section : sections) {
        sheet.addSubview(text(section->title, NSMakeRect(x, y, columnWidth, headingHeight), headingFont, ink()));
        y += headingHeight + 4;
        sheet.lines.push_back(NSMakeRect(x, y, columnWidth, 1));
        y += gapBelowHeading;
        for (const Specimen& specimen : section->specimens) {
            const NSSize size = specimen.view->frame().size;
            const double rowHeight = std::max(size.height, captionHeight);
            // A caption stands beside the first line of what it names.
            const double firstLine = std::min(rowHeight, 26.0);
            sheet.addSubview(text(specimen.caption,
                                  NSMakeRect(x, y + (firstLine - captionHeight) / 2 + 1, captionWidth, captionHeight),
                                  captionFont, captionColor));
            specimen.view->setFrameOrigin(
                NSMakePoint(x + captionWidth + captionGap, y + (rowHeight - size.height) / 2));
            sheet.addSubview(specimen.view);
            y += rowHeight + gapBetweenRows;
        }
        y += gapBetweenSections - gapBetweenRows;
    }
    return y - gapBetweenSections + margin;
}

} // namespace

std::vector<Section> allSections() {
    return {textFields(), secureFields(), labels(),     messages(), buttons(),
            tables(),     scrollers(),    containers(), images()};
}

Gallery::Gallery() : m_sections(allSections()) {
    const Ref<GallerySheet> sheet = make<GallerySheet>();
    // Three columns of about the same height.
    const auto section = [this](std::size_t place) { return &m_sections.at(place); };
    const std::vector<std::vector<Section*>> columns = {{section(0), section(8)},
                                                        {section(1), section(2), section(6)},
                                                        {section(3), section(4), section(5), section(7)}};
    double x = margin;
    double height = 0;
    for (const auto& column : columns) {
        height = std::max(height, layOut(*sheet, column, x));
        x += widthOf(column) + columnGap;
    }
    const NSSize size = NSMakeSize(x - columnGap + margin, height);
    sheet->setFrameSize(size);
    m_window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{80, 80}, size},
                              NSUInteger{NSWindowStyleMaskTitled | NSWindowStyleMaskClosable});
    m_window->setTitle("Controls"_ns);
    m_window->setContentView(sheet);
}

Gallery::~Gallery() = default;

void Gallery::show() {
    m_window->makeKeyAndOrderFront(nullptr);
    bool isKeyboardGiven = false;
    for (const Section& section : m_sections) {
        for (const Specimen& specimen : section.specimens) {
            if (!specimen.pose || (specimen.needsKeyboard && isKeyboardGiven)) {
                continue;
            }
            isKeyboardGiven |= specimen.needsKeyboard;
            specimen.pose();
        }
    }
}

} // namespace controls
