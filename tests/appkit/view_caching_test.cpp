#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/layer.h>

#include "canvas_testing.h"
#include "toolkit_testing.h"

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace zr {
namespace {

/// Views without peers, and bitmaps whose drawing is written down, one record each in the order in which they were
/// begun.
class DrawingToolkit : public test::ToolkitInUse {
  public:
    std::unique_ptr<Canvas> makeBitmapCanvas(NSBitmapImageRep& bitmap, NSSize size, bool isFlipped) override {
        records.push_back(std::make_unique<test::DrawingRecord>());
        records.back()->log = std::to_string(bitmap.pixelsWide()) + " by " + std::to_string(bitmap.pixelsHigh()) +
                              " for " + test::written({{0, 0}, size}) + (isFlipped ? " flipped\n" : "\n");
        return std::make_unique<test::DrawingRecorder>(*records.back());
    }

    std::vector<std::unique_ptr<test::DrawingRecord>> records;
};

class FilledView : public NSView {
    ZR_OBJECT(FilledView, NSView)
  public:
    bool isFlipped() const override { return flips; }
    void drawRect(NSRect rect) override {
        setFill(NSColor::redColor());
        NSRectFill(rect);
    }
    bool flips = false;
};

Ref<FilledView> filled(NSRect frame) {
    return make<FilledView>(&NSView::initWithFrame, frame);
}

TEST(ViewCaching, drawsBackgroundViewAndBorderInThisOrder) {
    DrawingToolkit toolkit;
    const auto view = filled({{0, 0}, {40, 20}});
    view->setWantsLayer(true);
    view->layer()->setBackgroundColor(NSColor::greenColor());
    view->layer()->setBorderWidth(2);
    view->layer()->setCornerRadius(3);
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(80, 10);
    send<void>(view, "cacheDisplayInRect:toBitmapImageRep:"_sel, view->bounds(), bitmap.get());
    ASSERT_EQ(toolkit.records.size(), 1u);
    EXPECT_EQ(toolkit.records[0]->log,
              "80 by 10 for 0,0 40x20\n"
              "concat\n"
              "fill round 3 3 0,0 40x20 green\n"
              "save\n"
              "clip 0,0 40x20\n"
              "fill 0,0 40x20 red in place\n"
              "restore\n"
              "line 2 round 3 0,0 40x20 black\n");
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST(ViewCaching, drawsSubviewsAsPicturesWithTheirOwnDirection) {
    DrawingToolkit toolkit;
    const auto view = filled({{0, 0}, {40, 20}});
    const auto inner = filled({{5, 6}, {10, 8}});
    inner->flips = true;
    inner->setAlphaValue(0.5);
    const auto hidden = filled({{5, 6}, {10, 8}});
    hidden->setHidden(true);
    const auto empty = filled({{5, 6}, {0, 8}});
    for (const auto& subview : {hidden, inner, empty}) {
        view->addSubview(subview);
    }
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(80, 20);
    view->cacheDisplayInRect_toBitmapImageRep(view->bounds(), bitmap);
    ASSERT_EQ(toolkit.records.size(), 2u);
    EXPECT_TRUE(toolkit.records[1]->has("20 by 8 for 0,0 10x8 flipped\n")) << toolkit.records[1]->log;
    EXPECT_TRUE(toolkit.records[0]->has("bitmap 0.5 5,6 10x8\n")) << toolkit.records[0]->log;
}

TEST(ViewCaching, drawsNothingWhereThereIsNothingToDraw) {
    DrawingToolkit toolkit;
    const auto view = filled({{0, 0}, {40, 20}});
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(80, 20);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    view->cacheDisplayInRect_toBitmapImageRep({{0, 0}, {0, 20}}, bitmap);
    view->cacheDisplayInRect_toBitmapImageRep({{0, 0}, {-40, 20}}, bitmap);
    view->cacheDisplayInRect_toBitmapImageRep({{nan, 0}, {40, 20}}, bitmap);
    view->cacheDisplayInRect_toBitmapImageRep({{0, 0}, {40, std::numeric_limits<double>::infinity()}}, bitmap);
    view->cacheDisplayInRect_toBitmapImageRep(view->bounds(), nullptr);
    view->cacheDisplayInRect_toBitmapImageRep(view->bounds(), make<NSBitmapImageRep>());
    EXPECT_TRUE(toolkit.records.empty());
}

} // namespace
} // namespace zr
