#include "view_testing.h"

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/qt/bitmap_canvas_p.h>
#include <zrbasic/ui/view.h>

#include <tests/appkit/toolkit_testing.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

namespace zr::test {
namespace {

using Pixel = NSBitmapImageRep::Pixel;

constexpr Pixel red{255, 0, 0, 255};
constexpr Pixel green{0, 255, 0, 255};
constexpr Pixel blue{0, 0, 255, 255};
constexpr Pixel nothing{};

/// Fills its left half with one colour and the rest with another, from below to above a mark in the corner.
class HalvesView : public NSView {
    ZR_OBJECT(HalvesView, NSView)
  public:
    bool isFlipped() const override { return flips; }
    void drawRect(NSRect) override {
        const NSRect all = bounds();
        setFill(NSColor::redColor());
        NSRectFill({all.origin, {all.size.width / 2, all.size.height}});
        setFill(NSColor::greenColor());
        NSRectFill({{all.origin.x + all.size.width / 2, all.origin.y}, {all.size.width / 2, all.size.height}});
        setFill(NSColor::blueColor());
        NSRectFill({all.origin, {all.size.width / 4, all.size.height / 4}});
    }

    bool flips = false;
};

Ref<HalvesView> halves(NSRect frame) {
    return make<HalvesView>(&NSView::initWithFrame, frame);
}

Pixel at(NSImage* image, NSInteger x, NSInteger y) {
    const Ref<NSBitmapImageRep> bitmap = image ? image->bestRepresentation() : nullptr;
    return bitmap ? bitmap->pixelAtX_y(x, y) : nothing;
}

TEST(ViewSnapshots, showAViewThatIsOnNoScreen) {
    const auto view = halves({{7, 9}, {80, 40}});
    const auto image = zr_snapShot(view);
    EXPECT_EQ(image->size(), NSMakeSize(80, 40));
    EXPECT_EQ(at(image, 1, 1), red);
    EXPECT_EQ(at(image, 1, 38), blue) << "its origin is below";
    EXPECT_EQ(at(image, 19, 30), blue);
    EXPECT_EQ(at(image, 21, 38), red);
    EXPECT_EQ(at(image, 78, 38), green);
    view->flips = true;
    EXPECT_EQ(at(zr_snapShot(view), 1, 1), blue) << "its origin is above";
    settle();
}

TEST(ViewSnapshots, drawTheWholeBoundsScaledIntoTheRectanglesBitmap) {
    const auto view = halves({{0, 0}, {80, 40}});
    const auto image = zr_snapShotWithRect(view, {{40, 20}, {40, 60}});
    EXPECT_EQ(image->size(), NSMakeSize(80, 40));
    ASSERT_EQ(image->bestRepresentation()->pixelsWide(), 40);
    ASSERT_EQ(image->bestRepresentation()->pixelsHigh(), 60);
    EXPECT_EQ(at(image, 1, 1), red) << "the left half, which does not lie in the rectangle";
    EXPECT_EQ(at(image, 18, 1), red);
    EXPECT_EQ(at(image, 21, 1), green);
    EXPECT_EQ(at(image, 38, 58), green);
    EXPECT_EQ(at(image, 1, 58), blue);
    EXPECT_EQ(at(image, 8, 47), blue);
    EXPECT_EQ(at(image, 1, 43), red);
}

TEST(ViewSnapshots, showOnePartWhenAskedForThat) {
    const auto view = halves({{0, 0}, {80, 40}});
    view->setBoundsOrigin({100, 200});
    const auto bitmap = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(40, 20);
    view->cacheDisplayInRect_toBitmapImageRep({{110, 200}, {20, 20}}, bitmap);
    EXPECT_EQ(bitmap->pixelAtX_y(1, 18), blue);
    EXPECT_EQ(bitmap->pixelAtX_y(18, 18), blue);
    EXPECT_EQ(bitmap->pixelAtX_y(22, 18), red);
    EXPECT_EQ(bitmap->pixelAtX_y(1, 1), red) << "twice as many pixels, and the lower part of the view";
    const auto before = Ref<NSBitmapImageRep>(cast<NSBitmapImageRep>(bitmap->copy()));
    view->cacheDisplayInRect_toBitmapImageRep({{110, 200}, {0, 20}}, bitmap);
    view->cacheDisplayInRect_toBitmapImageRep({{110, NAN}, {10, 20}}, bitmap);
    view->cacheDisplayInRect_toBitmapImageRep({{110, 200}, {20, 20}}, nullptr);
    EXPECT_TRUE(std::equal(bitmap->bytes().begin(), bitmap->bytes().end(), before->bytes().begin()));
}

TEST(ViewSnapshots, showLayersSubviewsAndControlsOfQt) {
    const auto view = loggingView({{0, 0}, {100, 60}});
    view->setWantsLayer(true);
    view->layer()->setBackgroundColor(NSColor::greenColor());
    view->layer()->setBorderColor(NSColor::redColor());
    view->layer()->setBorderWidth(2);
    const auto inner = loggingView({{10, 10}, {20, 20}});
    inner->color = NSColor::blueColor();
    view->addSubview(inner);
    const auto hidden = loggingView({{60, 10}, {20, 20}});
    hidden->color = NSColor::blueColor();
    hidden->setHidden(true);
    view->addSubview(hidden);
    auto* const foreign = new QWidget(qt::widget(view.get()));
    foreign->setGeometry(40, 30, 10, 10);
    foreign->setAutoFillBackground(true);
    foreign->setPalette(QPalette(Qt::blue));
    const auto image = zr_snapShot(view);
    EXPECT_EQ(at(image, 1, 30), red);
    EXPECT_EQ(at(image, 5, 30), green);
    EXPECT_EQ(at(image, 11, 31), blue);
    EXPECT_EQ(at(image, 61, 31), green);
    EXPECT_NE(at(image, 45, 35), green);
    EXPECT_EQ(at(image, 45, 35).alpha, 255);
}

TEST(ViewSnapshots, areTransparentWhereNobodyDraws) {
    const auto view = loggingView({{0, 0}, {40, 20}});
    const auto inner = loggingView({{0, 0}, {10, 10}});
    inner->color = NSColor::blueColor();
    view->addSubview(inner);
    const auto image = zr_snapShot(view);
    EXPECT_EQ(at(image, 30, 5), nothing);
    EXPECT_EQ(at(image, 5, 15), blue);
}

TEST(ViewSnapshots, doNotCountHowOpaqueTheViewItselfIs) {
    const auto view = halves({{0, 0}, {40, 20}});
    const auto around = loggingView({{0, 0}, {40, 20}});
    around->addSubview(view);
    view->setAlphaValue(0.5);
    EXPECT_EQ(at(zr_snapShot(view), 1, 1), red);
    EXPECT_NEAR(at(zr_snapShot(around), 1, 1).alpha, 128, 1);
    EXPECT_NEAR(at(zr_snapShot(around), 1, 1).alpha, 128, 1) << "and it stays as it was";
}

TEST(ViewSnapshots, areSafeForAnyExtent) {
    constexpr double huge = std::numeric_limits<double>::max();
    for (const double extent : {-5.0, 0.0, 1e300, huge, double(INFINITY), double(NAN)}) {
        SCOPED_TRACE(extent);
        const auto around = loggingView({{0, 0}, {40, 20}});
        const auto view = halves({{0, 0}, {extent, 20}});
        around->addSubview(view);
        EXPECT_EQ(zr_snapShot(view)->representations()->count(), 0u);
        EXPECT_EQ(zr_snapShotWithRect(view, {{extent, extent}, {8, 8}})->representations()->count(), 1u);
        EXPECT_LE(zr_snapShotWithInsets(view, {extent, extent, extent, extent})->representations()->count(), 1u);
        EXPECT_EQ(zr_snapShot(around)->representations()->count(), 1u);
        view->setBoundsOrigin({extent, extent});
        view->setFrame({{extent, extent}, {10, 10}});
        EXPECT_EQ(zr_snapShot(view)->representations()->count(), 1u);
        EXPECT_EQ(zr_snapShot(around)->representations()->count(), 1u);
    }
}

TEST(ViewSnapshots, showAllOfAViewThatIsLargerThanAnyPicture) {
    for (const double extent : {40'000.0, 1e6}) {
        SCOPED_TRACE(extent);
        const auto image = zr_snapShotWithRect(halves({{0, 0}, {extent, 20}}), {{0, 0}, {8, 8}});
        EXPECT_EQ(at(image, 1, 7), blue);
        EXPECT_EQ(at(image, 3, 1), red);
        EXPECT_EQ(at(image, 4, 1), green);
        EXPECT_EQ(at(image, 7, 7), green);
    }
}

/// Leaves while it is drawn.
class FleetingView : public NSView {
    ZR_OBJECT(FleetingView, NSView)
  public:
    void drawRect(NSRect) override {
        if (onDraw) {
            std::exchange(onDraw, nullptr)();
        }
    }
    std::function<void()> onDraw;
};

TEST(ViewSnapshots, areTakenOfViewsThatLeaveMeanwhile) {
    const auto around = loggingView({{0, 0}, {40, 20}});
    around->color = NSColor::greenColor();
    const auto add = [&around] {
        const auto view = make<FleetingView>(&NSView::initWithFrame, NSMakeRect(0, 0, 10, 10));
        view->onDraw = [left = Weak<NSView>(view)] {
            if (const Ref<NSView> living = left.lock()) {
                living->removeFromSuperview();
            }
        };
        around->addSubview(view);
        return Weak<NSView>(view);
    };
    const Weak<NSView> first = add();
    EXPECT_EQ(at(zr_snapShot(around), 30, 5), green);
    settle();
    EXPECT_EQ(first.lock(), nullptr);
    const Weak<NSView> second = add();
    EXPECT_EQ(zr_snapShot(second.lock())->representations()->count(), 1u);
    settle();
    EXPECT_EQ(around->subviews()->count(), 0u);
}

/// Has something to draw with and no peers.
class CanvasToolkit : public ToolkitInUse {
  public:
    std::unique_ptr<Canvas> makeBitmapCanvas(NSBitmapImageRep& bitmap, NSSize size, bool isFlipped) override {
        return std::make_unique<qt::BitmapCanvas>(bitmap, size, isFlipped);
    }
};

TEST(ViewSnapshots, areTheSameWhereViewsHaveNoPeers) {
    const CanvasToolkit toolkit;
    const auto view = halves({{0, 0}, {80, 40}});
    const auto inner = halves({{40, 0}, {40, 20}});
    inner->setBoundsOrigin({7, 9});
    inner->flips = true;
    view->addSubview(inner);
    const auto image = zr_snapShotWithRect(view, {{0, 0}, {160, 80}});
    EXPECT_EQ(view->peer(), nullptr);
    EXPECT_EQ(at(image, 2, 2), red);
    EXPECT_EQ(at(image, 2, 77), blue);
    EXPECT_EQ(at(image, 82, 37), green) << "above the view in it";
    EXPECT_EQ(at(image, 82, 42), blue) << "whose origin is above";
    EXPECT_EQ(at(image, 82, 77), red);
    EXPECT_EQ(at(image, 157, 77), green);
}

class Captures : public ViewWindow {
  protected:
    void SetUp() override {
        content->color = NSColor::greenColor();
        view = halves({{100, 100}, {80, 40}});
        content->addSubview(view);
    }
    Ref<HalvesView> view;
};

TEST_F(Captures, showTheViewAndWhatLiesOnItInTheWindow) {
    EXPECT_EQ(screenCachedImage(view)->representations()->count(), 0u) << "not on the screen yet";
    show();
    const auto cover = add({{150, 100}, {10, 10}});
    cover->color = NSColor::blueColor();
    const auto image = screenCachedImage(view);
    EXPECT_EQ(image->size(), NSMakeSize(80, 40));
    EXPECT_EQ(at(image, 1, 1), red);
    EXPECT_EQ(at(image, 1, 38), blue);
    EXPECT_EQ(at(image, 78, 38), green);
    EXPECT_EQ(at(image, 55, 38), blue) << "what covers it";
    window->orderOut(nullptr);
    EXPECT_EQ(screenCachedImage(view)->representations()->count(), 0u);
}

TEST_F(Captures, reachBelowTheViewByTwiceItsBorder) {
    setZr_borderWidth(view, 4);
    view->layer()->setBorderColor(NSColor::redColor());
    view->setFrame({{100, 100}, {80, 40}});
    show();
    const auto image = screenCachedImage(view);
    ASSERT_EQ(image->size(), NSMakeSize(80, 48));
    EXPECT_EQ(at(image, 78, 1), red);
    EXPECT_EQ(at(image, 70, 10), green);
    EXPECT_EQ(at(image, 70, 38), red) << "the border below";
    EXPECT_EQ(at(image, 70, 43), green) << "the window's content below the view";
    view->setFrame({{100, 0}, {80, 40}});
    EXPECT_EQ(at(screenCachedImage(view), 70, 43), nothing) << "out of the window";
}

TEST_F(Captures, showTheWindowsInFrontAndNotThoseBehind) {
    show();
    const NSRect place = convertRectToScreen(view);
    const auto other = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{place.origin, {40, 100}},
                                      NSUInteger(NSWindowStyleMaskBorderless));
    const auto cover = loggingView({{0, 0}, {40, 100}});
    cover->color = NSColor::blueColor();
    other->setContentView(cover);
    other->orderFront(nullptr);
    settle();
    EXPECT_EQ(at(screenCachedImage(view), 1, 1), blue);
    EXPECT_EQ(at(screenCachedImage(view), 41, 1), green);
    other->orderWindow_relativeTo(NSWindowBelow, window->windowNumber());
    settle();
    EXPECT_EQ(at(screenCachedImage(view), 1, 1), red);
    other->orderOut(nullptr);
    settle();
}

} // namespace
} // namespace zr::test
