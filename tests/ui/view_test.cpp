#include <zrbasic/ui/view.h>

#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/appkit/button.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/association.h>
#include <zrbasic/ui/coordinate.h>

#include <tests/appkit/window_testing.h>

#include <cmath>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace zr {
namespace {

constexpr NSView* none = nullptr;

Ref<NSView> viewAt(NSRect frame) {
    return make<NSView>(&NSView::initWithFrame, frame);
}

NSTrackingArea* areaOf(NSView* view, NSUInteger index) {
    return cast<NSTrackingArea>(view->trackingAreas()->objectAtIndex(index));
}

std::vector<double> numbersIn(const NSArray* values) {
    std::vector<double> numbers;
    for (const id& value : values->elements()) {
        numbers.push_back(cast<NSNumber>(value)->doubleValue());
    }
    return numbers;
}

/// Upside down, and known by its class.
class TopDownView : public NSView {
    ZR_OBJECT(TopDownView, NSView)
  public:
    bool isFlipped() const override { return true; }
};

// A fresh view

TEST(ViewHelper, anInstanceIsOfTheReceivingClassAnd300PointsWideAndHigh) {
    EXPECT_EQ(instance<NSView>()->frame(), NSMakeRect(0, 0, 300, 300));
    EXPECT_EQ(instance<NSButton>()->isa(), NSButton::classObject());
    const Ref<NSView> sent = send<Ref<NSView>>(TopDownView::classObject(), "instance"_sel);
    ASSERT_NE(cast<TopDownView>(sent), nullptr);
    EXPECT_EQ(sent->frame(), NSMakeRect(0, 0, 300, 300));
    EXPECT_NE(send<id>(TopDownView::classObject(), "instance"_sel), sent);
}

// The layer

TEST(ViewHelper, borderAndCornersMakeALayerWhereThereIsNone) {
    const auto view = instance<NSView>();
    setZr_borderWidth(view, 1.5);
    ASSERT_NE(view->layer(), nullptr);
    EXPECT_EQ(view->layer()->borderWidth(), 1.5);
    const Ref<CALayer> layer = view->layer();
    send<void>(view, "setZr_cornerRadius:"_sel, 4.0);
    EXPECT_EQ(view->layer(), layer) << "the same one goes on";
    EXPECT_EQ(layer->cornerRadius(), 4.0);
    EXPECT_EQ(layer->borderWidth(), 1.5);
    setZr_borderWidth(none, 1);
    setZr_cornerRadius(none, 1);
}

TEST(ViewHelper, borderAndCornersHaveNoGetters) {
    const auto view = instance<NSView>();
    EXPECT_FALSE(view->respondsToSelector("zr_borderWidth"_sel));
    EXPECT_FALSE(view->respondsToSelector("zr_cornerRadius"_sel));
    EXPECT_TRUE(view->respondsToSelector("setZr_borderWidth:"_sel));
    EXPECT_TRUE(view->respondsToSelector("setZr_cornerRadius:"_sel));
}

// The tracking area

TEST(ManagedTracking, aSecondAreaTakesThePlaceOfTheFirst) {
    const auto view = instance<NSView>();
    zr_addTrackingArea(view);
    const id first = view->trackingAreas()->objectAtIndex(0);
    zr_addTrackingArea(view);
    ASSERT_EQ(view->trackingAreas()->count(), 1u);
    EXPECT_NE(view->trackingAreas()->objectAtIndex(0), first);
    EXPECT_EQ(areaOf(view, 0)->rect(), view->bounds());
    EXPECT_EQ(areaOf(view, 0)->options(), 129u);
    EXPECT_EQ(areaOf(view, 0)->owner(), view);
    EXPECT_EQ(areaOf(view, 0)->userInfo(), nullptr);
}

TEST(ManagedTracking, areasThatWereAddedOtherwiseStay) {
    const auto view = instance<NSView>();
    const auto other = make<NSTrackingArea>(&NSTrackingArea::initWithRect_options_owner_userInfo,
                                            NSMakeRect(1, 2, 3, 4), NSUInteger{0x81}, nullptr, nullptr);
    view->addTrackingArea(other);
    zr_addTrackingArea(view);
    zr_addTrackingAreaWithRect(view, {{5, 6}, {7, 8}});
    ASSERT_EQ(view->trackingAreas()->count(), 2u);
    EXPECT_EQ(view->trackingAreas()->objectAtIndex(0), other);
    EXPECT_EQ(areaOf(view, 1)->rect(), NSMakeRect(5, 6, 7, 8));
    view->removeTrackingArea(areaOf(view, 1));
    zr_addTrackingArea(view);
    EXPECT_EQ(view->trackingAreas()->count(), 2u) << "the one before was already gone";
}

TEST(ManagedTracking, shorterFormsTakeTheBoundsAndTheUsualOptions) {
    const auto view = viewAt({{10, 20}, {30, 40}});
    view->setBoundsOrigin({3, 4});
    send<void>(view, "zr_addTrackingAreaWithOptions:"_sel, NSUInteger{0x22});
    EXPECT_EQ(areaOf(view, 0)->rect(), NSMakeRect(3, 4, 30, 40));
    EXPECT_EQ(areaOf(view, 0)->options(), 0x22u);
    send<void>(view, "zr_addTrackingAreaWithRect:"_sel, NSMakeRect(-5, 0, 0, 1));
    EXPECT_EQ(areaOf(view, 0)->rect(), NSMakeRect(-5, 0, 0, 1));
    EXPECT_EQ(areaOf(view, 0)->options(), 129u);
    send<void>(view, "zr_addTrackingAreaWithRect:andOptions:"_sel, NSMakeRect(1, 1, 1, 1), NSUInteger{0});
    EXPECT_EQ(areaOf(view, 0)->options(), 0u);
    send<void>(view, "zr_addTrackingArea"_sel);
    EXPECT_EQ(view->trackingAreas()->count(), 1u);
    zr_addTrackingArea(none);
    zr_addTrackingAreaWithRect_andOptions(none, {}, 1);
}

TEST(ManagedTracking, theAreaIsKeptUnderTheNameOfTheOperation) {
    const auto view = instance<NSView>();
    zr_addTrackingArea(view);
    EXPECT_EQ(objc_getAssociatedObject(view, ("zr_addTrackingAreaWithRect:andOptions:"_sel).record()),
              view->trackingAreas()->objectAtIndex(0));
}

// Subviews

TEST(ViewHelper, subviewsAreAddedInTheirOrder) {
    const auto view = instance<NSView>();
    const auto first = instance<NSView>();
    const auto second = instance<NSView>();
    zr_addSubviews(view, array({first, NSNull::null(), "no view"_ns, second}));
    EXPECT_TRUE(view->subviews()->isEqual(array({first, second})));
    zr_addSubviews(view, nullptr);
    zr_addSubviews(view, NSArray::array());
    EXPECT_EQ(view->subviews()->count(), 2u);
    send<void>(view, "zr_addSubviews:"_sel, array({first}).get());
    EXPECT_TRUE(view->subviews()->isEqual(array({second, first}))) << "in front of those before";
    zr_addSubviews(none, array({first}));
    EXPECT_EQ(first->superview(), view);
}

TEST(ViewHelper, whatIsOfAnotherKindCountsAsNull) {
    const auto view = instance<NSView>();
    for (NSObject* const odd : {static_cast<NSObject*>("no list"_ns.get()), static_cast<NSObject*>(NSNull::null()),
                                static_cast<NSObject*>(nullptr)}) {
        send<void>(view, "zr_addSubviews:"_sel, odd);
        send<void>(view, "displayPriorityGreaterThan:"_sel, odd);
    }
    EXPECT_EQ(view->subviews()->count(), 0u);
    EXPECT_EQ(view->contentHuggingPriorityForOrientation(NSLayoutConstraintOrientationHorizontal), 250);
}

TEST(ViewHelper, aViewMovesInFrontOfItsSiblings) {
    const auto view = instance<NSView>();
    const auto first = instance<NSView>();
    const auto second = instance<NSView>();
    const auto third = instance<NSView>();
    zr_addSubviews(view, array({first, second, third}));
    moveToFront(first);
    EXPECT_TRUE(view->subviews()->isEqual(array({second, third, first})));
    send<void>(third, "moveToFront"_sel);
    EXPECT_TRUE(view->subviews()->isEqual(array({second, first, third})));
    moveToFront(view);
    EXPECT_EQ(view->superview(), nullptr);
    moveToFront(nullptr);
}

TEST(ViewHelper, movingToTheFrontLeavesTheKeyboardWhereItIs) {
    const auto window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSMakeRect(0, 0, 400, 300),
                                       NSUInteger{NSWindowStyleMaskBorderless});
    const auto panel = instance<NSView>();
    const auto button = instance<NSButton>();
    panel->addSubview(button);
    zr_addSubviews(window->contentView(), array({panel, instance<NSView>()}));
    ASSERT_TRUE(window->makeFirstResponder(button));
    moveToFront(panel);
    EXPECT_EQ(window->contentView()->subviews()->lastObject(), panel);
    EXPECT_EQ(window->firstResponder(), button);
    moveToFront(button);
    EXPECT_EQ(window->firstResponder(), button);
}

/// Does something whenever it comes into a superview or leaves it.
class RestlessView : public NSView {
    ZR_OBJECT(RestlessView, NSView)
  public:
    void viewWillMoveToSuperview(NSView*) override { doOnce(before); }
    void viewDidMoveToSuperview() override { doOnce(after); }

    std::function<void()> before;
    std::function<void()> after;

  private:
    static void doOnce(std::function<void()>& work) {
        if (const std::function<void()> now = std::exchange(work, nullptr)) {
            now();
        }
    }
};

TEST(ViewHelper, viewsMayLeaveAgainWhileTheyAreAdded) {
    const auto view = instance<NSView>();
    const auto first = instance<RestlessView>();
    const auto second = instance<RestlessView>();
    const auto third = instance<NSView>();
    first->after = [&first] { first->removeFromSuperview(); };
    second->before = [&third] { third->removeFromSuperview(); };
    zr_addSubviews(view, array({third, first, second}));
    EXPECT_TRUE(view->subviews()->isEqual(array({second}))) << "what left is not brought back";
    second->before = [&second] { second->removeFromSuperview(); };
    moveToFront(second);
    EXPECT_TRUE(view->subviews()->isEqual(array({second}))) << "it was still to be put somewhere";
    second->after = [&second] { second->removeFromSuperview(); };
    moveToFront(second);
    EXPECT_EQ(view->subviews()->count(), 0u);
    EXPECT_EQ(second->superview(), nullptr);
}

TEST(ViewHelper, aViewCannotBeAddedToWhatLiesInIt) {
    const auto view = instance<NSView>();
    const auto inner = instance<NSView>();
    const auto after = instance<NSView>();
    view->addSubview(inner);
    EXPECT_THROW(zr_addSubviews(inner, array({view, after})), NSException);
    EXPECT_EQ(inner->subviews()->count(), 0u) << "nothing behind it is added either";
    EXPECT_EQ(view->superview(), nullptr);
}

// Place on the screen

TEST(ViewHelper, aViewInNoWindowIsNowhereOnTheScreen) {
    const auto view = viewAt({{10, 20}, {30, 40}});
    EXPECT_EQ(convertRectToScreen(view), NSZeroRect);
    EXPECT_EQ(convertRectToScreen(nullptr), NSZeroRect);
    EXPECT_EQ(send<NSRect>(view, "convertRectToScreen"_sel), NSZeroRect);
}

TEST(ViewHelper, theBoundsAreConvertedToTheScreen) {
    const auto window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSMakeRect(100, 200, 400, 300),
                                       NSUInteger{NSWindowStyleMaskBorderless});
    const auto view = viewAt({{10, 20}, {30, 40}});
    window->contentView()->addSubview(view);
    EXPECT_EQ(convertRectToScreen(view), NSMakeRect(110, 220, 30, 40));
    view->setBoundsOrigin({5, 5});
    EXPECT_EQ(send<NSRect>(view, "convertRectToScreen"_sel), NSMakeRect(110, 220, 30, 40));
    const auto flipped = make<TopDownView>(&NSView::initWithFrame, NSMakeRect(0, 0, 400, 300));
    window->contentView()->addSubview(flipped);
    flipped->addSubview(view);
    EXPECT_EQ(convertRectToScreen(view), NSMakeRect(110, 440, 30, 40));
}

// Priorities

TEST(ViewHelper, theReceiverKeepsItsWidthAndTheOtherGivesWay) {
    const auto view = instance<NSView>();
    const auto other = instance<NSView>();
    view->setContentHuggingPriority_forOrientation(999, NSLayoutConstraintOrientationVertical);
    displayPriorityGreaterThan(view, other);
    constexpr auto horizontal = NSLayoutConstraintOrientationHorizontal;
    constexpr auto vertical = NSLayoutConstraintOrientationVertical;
    EXPECT_EQ(view->contentCompressionResistancePriorityForOrientation(horizontal), 750);
    EXPECT_EQ(view->contentHuggingPriorityForOrientation(horizontal), 250);
    EXPECT_EQ(other->contentCompressionResistancePriorityForOrientation(horizontal), 250);
    EXPECT_EQ(other->contentHuggingPriorityForOrientation(horizontal), 750);
    EXPECT_EQ(view->contentHuggingPriorityForOrientation(vertical), 999);
    EXPECT_EQ(other->contentHuggingPriorityForOrientation(vertical), 250);
    send<void>(other, "displayPriorityGreaterThan:"_sel, view.get());
    EXPECT_EQ(view->contentHuggingPriorityForOrientation(horizontal), 750);
    displayPriorityGreaterThan(view, nullptr);
    EXPECT_EQ(view->contentHuggingPriorityForOrientation(horizontal), 250);
    displayPriorityGreaterThan(nullptr, view);
    EXPECT_EQ(view->contentHuggingPriorityForOrientation(horizontal), 250) << "nobody was asked";
}

// Coordinates

TEST(ViewCoordinates, areThoseOfTheFrame) {
    const auto view = viewAt({{10.5, 20}, {30, 40.25}});
    EXPECT_EQ(zr_minX(view), 10.5);
    EXPECT_EQ(zr_minY(view), 20);
    EXPECT_EQ(zr_maxX(view), 40.5);
    EXPECT_EQ(zr_maxY(view), 60.25);
    EXPECT_EQ(zr_width(view), 30);
    EXPECT_EQ(zr_height(view), 40.25);
    EXPECT_EQ(zr_size(view), NSMakeSize(30, 40.25));
    EXPECT_EQ(zr_origin(view), NSMakePoint(10.5, 20));
    EXPECT_EQ(zr_frame(view), view->frame());
}

TEST(ViewCoordinates, areSetOneByOneAndKeepTheOthers) {
    const auto view = viewAt({{1, 2}, {3, 4}});
    setZr_minX(view, 10);
    setZr_minY(view, 20);
    EXPECT_EQ(view->frame(), NSMakeRect(10, 20, 3, 4));
    setZr_width(view, 30);
    setZr_height(view, 40);
    EXPECT_EQ(view->frame(), NSMakeRect(10, 20, 30, 40)) << "no title is added, as windows do it";
    setZr_origin(view, {-1, -2});
    setZr_size(view, {-3, 0.5});
    EXPECT_EQ(view->frame(), NSMakeRect(-1, -2, -3, 0.5));
    setZr_frame(view, {{5, 6}, {7, 8}});
    EXPECT_EQ(view->frame(), NSMakeRect(5, 6, 7, 8));
}

TEST(ViewCoordinates, areMessagesOfTheProtocol) {
    const auto view = viewAt({{1, 2}, {3, 4}});
    EXPECT_TRUE(view->conformsToProtocol(ZRXCoordinateProtocol::protocolObject()));
    for (const SEL name : {"zr_minX"_sel, "zr_minY"_sel, "zr_maxX"_sel, "zr_maxY"_sel, "zr_width"_sel, "zr_height"_sel,
                           "zr_size"_sel, "zr_origin"_sel, "zr_frame"_sel}) {
        EXPECT_TRUE(view->respondsToSelector(name));
    }
    EXPECT_FALSE(view->respondsToSelector("setZr_maxX:"_sel));
    EXPECT_FALSE(view->respondsToSelector("setZr_maxY:"_sel));
    EXPECT_EQ(send<double>(view, "zr_maxY"_sel), 6);
    send<void>(view, "setZr_size:"_sel, NSMakeSize(8, 9));
    EXPECT_EQ(send<NSRect>(view, "zr_frame"_sel), NSMakeRect(1, 2, 8, 9));
    EXPECT_EQ(zr_frame(none), NSZeroRect);
    EXPECT_EQ(zr_maxX(none), 0);
    setZr_frame(none, {{1, 2}, {3, 4}});
    setZr_minX(none, 1);
    setZr_height(none, 1);
}

TEST(ViewCoordinates, takeAnyNumber) {
    constexpr double huge = std::numeric_limits<double>::max();
    for (const double number : {double(INFINITY), -double(INFINITY), huge, -0.0, -1e300}) {
        SCOPED_TRACE(number);
        const auto view = viewAt({{1, 2}, {3, 4}});
        setZr_minX(view, number);
        setZr_height(view, number);
        EXPECT_EQ(view->frame(), NSMakeRect(number, 2, 3, number));
        EXPECT_EQ(zr_maxX(view), number + 3);
    }
    const auto view = viewAt({{1, 2}, {3, 4}});
    setZr_width(view, NAN);
    setZr_minY(view, NAN);
    EXPECT_TRUE(std::isnan(zr_width(view)));
    EXPECT_TRUE(std::isnan(zr_maxY(view)));
    EXPECT_EQ(zr_minX(view), 1);
    EXPECT_EQ(zr_height(view), 4);
}

/// Its frame is set by its parts in its own way.
class StubbornView : public NSView {
    ZR_OBJECT(StubbornView, NSView)
  public:
    void setFrameSize(NSSize size) override { NSView::setFrameSize({size.width + 1, size.height + 1}); }
};

TEST(ViewCoordinates, goThroughWhatTheViewDoesItself) {
    const auto view = make<StubbornView>(&NSView::initWithFrame, NSMakeRect(1, 2, 3, 4));
    setZr_width(view, 10);
    EXPECT_EQ(view->frame(), NSMakeRect(1, 2, 11, 5));
    setZr_frame(view, {{0, 0}, {5, 5}});
    EXPECT_EQ(view->frame(), NSMakeRect(0, 0, 6, 6));
}

// The shake

TEST(ViewShake, isAnAnimationOfFiveValuesUnderItsKey) {
    const auto view = viewAt({{10, 20}, {30, 40}});
    view->setWantsLayer(true);
    view->layer()->setAnchorPoint({0, 0});
    beginShakeAnimation(view);
    const auto animation = view->layer()->animationForKey("key"_ns);
    const auto* const shake = cast<CAKeyframeAnimation>(animation.get());
    ASSERT_NE(shake, nullptr);
    EXPECT_TRUE(shake->keyPath()->isEqual("transform.rotation.z"_ns));
    EXPECT_EQ(shake->duration(), 0.1);
    EXPECT_EQ(shake->repeatCount(), 1.5);
    constexpr double a = 0.08726646259971647;
    EXPECT_EQ(numbersIn(shake->values()), (std::vector<double>{a, 0, -a, 0, a}));
    EXPECT_EQ(view->layer()->position(), NSMakePoint(25, 40));
    EXPECT_EQ(view->layer()->anchorPoint(), NSMakePoint(0.5, 0.5));
    EXPECT_EQ(view->frame(), NSMakeRect(10, 20, 30, 40));
}

TEST(ViewShake, ofAViewWithoutALayerIsNothing) {
    const auto view = instance<NSView>();
    beginShakeAnimation(view);
    EXPECT_FALSE(view->wantsLayer()) << "it makes none";
    send<void>(view, "beginShakeAnimation"_sel);
    beginShakeAnimation(nullptr);
}

TEST(ViewShake, aSecondOneTakesThePlaceOfTheFirst) {
    const auto view = instance<NSView>();
    view->setWantsLayer(true);
    send<void>(view, "beginShakeAnimation"_sel);
    const auto first = view->layer()->animationForKey("key"_ns);
    ASSERT_NE(first, nullptr);
    beginShakeAnimation(view);
    EXPECT_NE(view->layer()->animationForKey("key"_ns), nullptr);
    EXPECT_NE(view->layer()->animationForKey("key"_ns), first);
    view->layer()->removeAnimationForKey("key"_ns);
    EXPECT_EQ(view->layer()->animationForKey("key"_ns), nullptr);
}

} // namespace
} // namespace zr
