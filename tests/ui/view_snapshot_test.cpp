#include <zrbasic/ui/view.h>

#include <zrbasic/platform/appkit/bitmap_image_rep.h>
#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/ui/view_capture_p.h>

#include <tests/appkit/window_testing.h>

#include <cmath>
#include <limits>

namespace zr {
namespace {

Ref<NSView> viewAt(NSRect frame) {
    return make<NSView>(&NSView::initWithFrame, frame);
}

NSSize pixelsOf(NSImage* image) {
    const Ref<NSBitmapImageRep> bitmap = image->bestRepresentation();
    return bitmap ? NSMakeSize(double(bitmap->pixelsWide()), double(bitmap->pixelsHigh())) : NSZeroSize;
}

/// Writes down what it is asked to draw, and draws nothing.
class AskedView : public NSView {
    ZR_OBJECT(AskedView, NSView)
  public:
    Ref<NSBitmapImageRep> bitmapImageRepForCachingDisplayInRect(NSRect rect) override {
        sizedFor = rect;
        return NSView::bitmapImageRepForCachingDisplayInRect(rect);
    }
    void cacheDisplayInRect_toBitmapImageRep(NSRect rect, NSBitmapImageRep* bitmap) override {
        drawnFor = rect;
        drawnInto = Ref<NSBitmapImageRep>(bitmap);
    }

    NSRect sizedFor;
    NSRect drawnFor;
    Ref<NSBitmapImageRep> drawnInto;
};

Ref<AskedView> askedView(NSRect frame) {
    return make<AskedView>(&NSView::initWithFrame, frame);
}

// Off the screen

TEST(Snapshot, isAnImageOfTheBoundsWithOneBitmap) {
    const auto view = askedView({{10, 20}, {30, 40}});
    view->setBoundsOrigin({5, 6});
    const auto image = zr_snapShot(view);
    EXPECT_EQ(image->size(), NSMakeSize(30, 40));
    EXPECT_EQ(view->sizedFor, NSMakeRect(5, 6, 30, 40));
    EXPECT_EQ(view->drawnFor, NSMakeRect(5, 6, 30, 40));
    ASSERT_EQ(image->representations()->count(), 1u);
    EXPECT_EQ(image->representations()->objectAtIndex(0), view->drawnInto);
    EXPECT_EQ(pixelsOf(image), NSMakeSize(30, 40));
}

TEST(Snapshot, ofARectangleSizesTheBitmapButDrawsTheWholeBounds) {
    const auto view = askedView({{0, 0}, {200, 100}});
    const auto image = zr_snapShotWithRect(view, {{10, 10}, {50, 20}});
    EXPECT_EQ(view->drawnFor, NSMakeRect(0, 0, 200, 100));
    EXPECT_EQ(image->size(), NSMakeSize(200, 100));
    EXPECT_EQ(pixelsOf(image), NSMakeSize(50, 20));
    EXPECT_EQ(image->bestRepresentation()->size(), NSMakeSize(50, 20));
}

TEST(Snapshot, insetsAreTakenOffTheExtentAndPutLeftAndTopIntoTheOrigin) {
    const auto view = askedView({{0, 0}, {200, 100}});
    const auto image = zr_snapShotWithInsets(view, {10, 20, 30, 40});
    EXPECT_EQ(view->sizedFor, NSMakeRect(20, 10, 140, 60));
    EXPECT_EQ(image->size(), NSMakeSize(200, 100));
    view->setBoundsOrigin({7, 8});
    const auto sent = send<Ref<NSImage>>(view, "zr_snapShotWithInsets:"_sel, NSEdgeInsets{1, 2, 3, 4});
    EXPECT_EQ(view->sizedFor, NSMakeRect(2, 1, 194, 96)) << "whatever the origin of the bounds is";
    EXPECT_EQ(pixelsOf(sent), NSMakeSize(194, 96));
}

TEST(Snapshot, withoutAnExtentHasNoBitmap) {
    const auto empty = viewAt({});
    EXPECT_EQ(zr_snapShot(empty)->size(), NSZeroSize);
    EXPECT_EQ(zr_snapShot(empty)->representations()->count(), 0u);
    const auto view = viewAt({{0, 0}, {20, 10}});
    EXPECT_EQ(zr_snapShotWithInsets(view, {10, 0, 10, 0})->representations()->count(), 0u);
    constexpr double huge = std::numeric_limits<double>::max();
    for (const double extent : {-1.0, 0.0, 1e6, huge, double(INFINITY), double(NAN)}) {
        SCOPED_TRACE(extent);
        const auto image = zr_snapShotWithRect(view, {{0, 0}, {extent, 10}});
        EXPECT_EQ(image->size(), NSMakeSize(20, 10));
        EXPECT_EQ(image->representations()->count(), 0u);
    }
    EXPECT_EQ(zr_snapShot(nullptr), nullptr);
    EXPECT_EQ(zr_snapShotWithRect(nullptr, {}), nullptr);
    EXPECT_EQ(zr_snapShotWithInsets(nullptr, {}), nullptr);
}

TEST(Snapshot, ofBoundsThatNoScreenHoldsIsAnImageOfTheirSize) {
    constexpr double huge = std::numeric_limits<double>::max();
    for (const double extent : {-5.0, 1e300, huge, double(INFINITY), double(NAN)}) {
        SCOPED_TRACE(extent);
        const auto view = viewAt({{0, 0}, {extent, 10}});
        const auto whole = zr_snapShot(view);
        EXPECT_EQ(whole->representations()->count(), 0u);
        EXPECT_TRUE(whole->size().width == extent || std::isnan(extent));
        const auto part = zr_snapShotWithRect(view, {{0, 0}, {20, 10}});
        EXPECT_EQ(pixelsOf(part), NSMakeSize(20, 10));
        const auto inset = zr_snapShotWithInsets(view, {1, extent, 1, -20});
        EXPECT_LE(inset->representations()->count(), 1u);
        EXPECT_EQ(screenCachedImage(view)->representations()->count(), 0u);
    }
}

TEST(Snapshot, isTransparentWithoutAToolkit) {
    const auto view = viewAt({{0, 0}, {4, 3}});
    view->setWantsLayer(true);
    view->layer()->setBackgroundColor(NSColor::redColor());
    const auto image = send<Ref<NSImage>>(view, "zr_snapShot"_sel);
    ASSERT_EQ(pixelsOf(image), NSMakeSize(4, 3));
    const auto bitmap = image->bestRepresentation();
    for (const std::uint8_t byte : bitmap->bytes()) {
        ASSERT_EQ(byte, 0);
    }
}

// On the screen

TEST(CaptureRect, liesWhereTheViewIsCountedFromAbove) {
    const NSRect rect = detail::captureRect({{10, 20}, {30, 40}}, {100, 200}, 900, 0);
    EXPECT_EQ(rect, NSMakeRect(110, 640, 30, 40));
    EXPECT_EQ(detail::captureRect({{10, 20}, {30, 40}}, {}, 0, 0), NSMakeRect(10, -60, 30, 40));
}

TEST(CaptureRect, isHigherByTwiceTheBorderAndDoesNotMove) {
    const NSRect plain = detail::captureRect({{10, 20}, {30, 40}}, {100, 200}, 900, 0);
    const NSRect bordered = detail::captureRect({{10, 20}, {30, 40}}, {100, 200}, 900, 1.5);
    EXPECT_EQ(bordered.origin, plain.origin);
    EXPECT_EQ(bordered.size, NSMakeSize(30, 43));
}

/// Remembers what was to be captured.
class CapturingToolkit : public test::ScreensToolkit {
  public:
    CapturingToolkit() : ScreensToolkit({{{{0, 0}, {1440, 900}}, {}, 2}, {{{1440, 0}, {800, 600}}, {}, 1}}) {}
    Ref<NSBitmapImageRep> captureOfWindow(NSWindow& window, NSRect rect) override {
        asked = &window;
        captured = rect;
        return picture;
    }

    NSWindow* asked = nullptr;
    NSRect captured;
    Ref<NSBitmapImageRep> picture = NSBitmapImageRep::bitmapWithPixelsWide_pixelsHigh(60, 84);
};

TEST(Capture, isWhatTheToolkitSeesInTheFirstScreensMeasure) {
    CapturingToolkit toolkit;
    const auto window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSMakeRect(100, 200, 400, 300),
                                       NSUInteger{NSWindowStyleMaskBorderless});
    const auto view = viewAt({{10, 20}, {30, 40}});
    window->contentView()->addSubview(view);
    setZr_borderWidth(view, 1);
    const auto image = screenCachedImage(view);
    EXPECT_EQ(toolkit.asked, window);
    EXPECT_EQ(toolkit.captured, NSMakeRect(110, 640, 30, 42));
    EXPECT_EQ(image->size(), NSMakeSize(30, 42));
    EXPECT_EQ(image->bestRepresentation(), toolkit.picture);
    toolkit.picture = nullptr;
    EXPECT_EQ(send<Ref<NSImage>>(view, "screenCachedImage"_sel)->representations()->count(), 0u);
}

TEST(Capture, isTwiceTheBorderHigherThanTheViewAlsoWithoutAScreen) {
    const auto view = viewAt({{10, 20}, {30, 40}});
    setZr_borderWidth(view, 1.0);
    const auto image = screenCachedImage(view);
    EXPECT_EQ(image->size(), NSMakeSize(30, 42));
    EXPECT_EQ(image->representations()->count(), 0u);
    EXPECT_EQ(screenCachedImage(nullptr), nullptr);
}

TEST(Capture, isReadByNameLikeAnyProperty) {
    const auto view = viewAt({{10, 20}, {30, 40}});
    const id image = valueForKey(view, "screenCachedImage"_ns);
    ASSERT_NE(cast<NSImage>(image), nullptr);
    EXPECT_EQ(cast<NSImage>(image)->size(), NSMakeSize(30, 40));
    EXPECT_THROW(setValue_forKey(view, image, "screenCachedImage"_ns), NSException) << "and only read";
}

TEST(Capture, asksForNothingOutsideOfAWindow) {
    CapturingToolkit toolkit;
    const auto image = screenCachedImage(viewAt({{10, 20}, {30, 40}}));
    EXPECT_EQ(toolkit.asked, nullptr);
    EXPECT_EQ(image->size(), NSMakeSize(30, 40));
    EXPECT_EQ(image->representations()->count(), 0u);
}

TEST(Snapshot, hasThePixelsOfTheMainScreen) {
    CapturingToolkit toolkit;
    const auto bitmap = viewAt({{0, 0}, {4, 3}})->bitmapImageRepForCachingDisplayInRect({{1, 1}, {10.3, 5}});
    EXPECT_EQ(bitmap->pixelsWide(), 21) << "a broken pixel counts as whole";
    EXPECT_EQ(bitmap->pixelsHigh(), 10);
    EXPECT_EQ(bitmap->size(), NSMakeSize(10.3, 5));
}

} // namespace
} // namespace zr
