#include "view_testing.h"

#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/qt/rotation_p.h>
#include <zrbasic/ui/view.h>

#include <QGraphicsOpacityEffect>

#include <cmath>

namespace zr::test {
namespace {

class ViewShakes : public ViewWindow {
  protected:
    void SetUp() override {
        content->color = NSColor::whiteColor();
        view = add({{100, 100}, {100, 60}});
        view->color = NSColor::redColor();
        view->setWantsLayer(true);
        inner = add({{0, 0}, {10, 60}}, view);
        inner->color = NSColor::blueColor();
    }

    qt::RotationEffect* effect() const { return dynamic_cast<qt::RotationEffect*>(widgetOf(view)->graphicsEffect()); }
    id animation() const { return view->layer()->animationForKey("key"_ns); }
    /// At so many points from the view's upper left corner.
    QColor at(double x, double y) const {
        return widgetOf(content)->grab().toImage().pixelColor(int(100 + x), int(140 + y));
    }

    Ref<LoggingView> view;
    Ref<LoggingView> inner;
};

TEST_F(ViewShakes, endAsTheyBegan) {
    show();
    const NSRect frame = view->frame();
    beginShakeAnimation(view);
    ASSERT_NE(effect(), nullptr);
    EXPECT_NE(animation(), nullptr);
    EXPECT_NEAR(effect()->angle(), 0.0872664, 1e-6) << "it begins turned";
    EXPECT_TRUE(eventually([this] { return !effect(); }));
    EXPECT_EQ(widgetOf(view)->graphicsEffect(), nullptr);
    EXPECT_EQ(animation(), nullptr);
    EXPECT_EQ(view->frame(), frame);
    EXPECT_EQ(at(0, 0), QColor(Qt::blue));
    EXPECT_EQ(at(99, 59), QColor(Qt::red));
}

TEST_F(ViewShakes, turnTheViewAgainstTheClockWithWhatIsInIt) {
    show();
    const auto turn = CAKeyframeAnimation::animationWithKeyPath("transform.rotation.z"_ns);
    turn->setDuration(1000);
    turn->setValues(array({box(M_PI / 2), box(M_PI / 2)}));
    view->layer()->addAnimation_forKey(turn, "turn"_ns);
    ASSERT_NE(effect(), nullptr);
    // The left edge has gone to below, a hundred points long from above to below now.
    EXPECT_EQ(at(50, 75), QColor(Qt::blue));
    EXPECT_EQ(at(50, -15), QColor(Qt::red));
    EXPECT_EQ(at(5, 30), QColor(Qt::white));
    EXPECT_EQ(at(95, 30), QColor(Qt::white));
    EXPECT_EQ(at(50, 30), QColor(Qt::red));
    view->layer()->removeAnimationForKey("turn"_ns);
    EXPECT_EQ(effect(), nullptr);
    EXPECT_EQ(at(5, 30), QColor(Qt::blue));
}

TEST_F(ViewShakes, turnAboutTheAnchor) {
    show();
    const auto turn = CAKeyframeAnimation::animationWithKeyPath("transform.rotation.z"_ns);
    turn->setDuration(1000);
    turn->setValues(array({box(M_PI / 2), box(M_PI / 2)}));
    view->layer()->setAnchorPoint({0, 0});
    view->layer()->addAnimation_forKey(turn, "turn"_ns);
    // About the lower left corner: what was above is left of it, and the length reaches up.
    EXPECT_EQ(at(-30, 55), QColor(Qt::blue));
    EXPECT_EQ(at(-30, 0), QColor(Qt::red));
    EXPECT_EQ(at(-30, -35), QColor(Qt::red));
    EXPECT_EQ(at(30, 30), QColor(Qt::white));
}

TEST_F(ViewShakes, keepHowOpaqueTheViewIs) {
    view->setAlphaValue(0.5);
    show();
    const auto turn = CAKeyframeAnimation::animationWithKeyPath("transform.rotation.z"_ns);
    turn->setDuration(1000);
    turn->setValues(array({box(0.0), box(0.0)}));
    view->layer()->addAnimation_forKey(turn, "turn"_ns);
    EXPECT_NEAR(at(50, 30).green(), 128, 2);
    view->setAlphaValue(0.25);
    EXPECT_NE(effect(), nullptr);
    EXPECT_NEAR(at(50, 30).green(), 191, 2);
    view->layer()->removeAnimationForKey("turn"_ns);
    EXPECT_NE(qobject_cast<QGraphicsOpacityEffect*>(widgetOf(view)->graphicsEffect()), nullptr);
    EXPECT_NEAR(at(50, 30).green(), 191, 2);
    beginShakeAnimation(view);
    EXPECT_TRUE(eventually([this] { return !effect(); }));
    EXPECT_NE(qobject_cast<QGraphicsOpacityEffect*>(widgetOf(view)->graphicsEffect()), nullptr);
}

TEST_F(ViewShakes, aSecondOneTakesThePlaceOfTheFirst) {
    show();
    beginShakeAnimation(view);
    const id first = animation();
    beginShakeAnimation(view);
    EXPECT_NE(animation(), first);
    ASSERT_NE(effect(), nullptr);
    EXPECT_TRUE(eventually([this] { return !effect(); }));
    EXPECT_EQ(animation(), nullptr);
}

TEST_F(ViewShakes, areOverWhenTheViewGoesOrItsWidget) {
    show();
    beginShakeAnimation(view);
    const Ref<CALayer> layer = view->layer();
    delete widgetOf(view);
    EXPECT_EQ(layer->animationForKey("key"_ns), nullptr);
    settle();
    beginShakeAnimation(view);
    view->removeFromSuperview();
    inner = nullptr;
    view = nullptr;
    settle();
    EXPECT_EQ(layer->animationForKey("key"_ns), nullptr);
}

TEST_F(ViewShakes, whatCannotBePlayedIsOverAtOnce) {
    show();
    const auto turn = CAKeyframeAnimation::animationWithKeyPath("transform.rotation.z"_ns);
    turn->setValues(array({box(1.0), "no number"_ns}));
    view->layer()->addAnimation_forKey(turn, "turn"_ns);
    EXPECT_EQ(effect(), nullptr);
    EXPECT_EQ(view->layer()->animationForKey("turn"_ns), nullptr);
    turn->setValues(array({box(0.0), box(1.0)}));
    turn->setDuration(0);
    view->layer()->addAnimation_forKey(turn, "turn"_ns);
    EXPECT_EQ(view->layer()->animationForKey("turn"_ns), nullptr);
    turn->setDuration(10);
    turn->setKeyPath("opacity"_ns);
    view->layer()->addAnimation_forKey(turn, "turn"_ns);
    EXPECT_EQ(effect(), nullptr);
    EXPECT_EQ(view->layer()->animationForKey("turn"_ns), turn) << "kept, and not played";
}

TEST_F(ViewShakes, areSafeForAnyAnchorAngleAndExtent) {
    show();
    const auto turn = CAKeyframeAnimation::animationWithKeyPath("transform.rotation.z"_ns);
    turn->setDuration(1000);
    for (const double number : {1e300, -1e300, double(INFINITY), double(NAN)}) {
        SCOPED_TRACE(number);
        turn->setValues(array({box(1e300), box(-1e300)}));
        view->layer()->setAnchorPoint({number, number});
        view->layer()->addAnimation_forKey(turn, "turn"_ns);
        ASSERT_NE(effect(), nullptr);
        at(50, 30);
        view->layer()->removeAnimationForKey("turn"_ns);
        view->setFrameSize({number, 0});
        beginShakeAnimation(view);
        at(50, 30);
        view->setFrameSize({100, 60});
        EXPECT_TRUE(eventually([this] { return !effect(); }));
        EXPECT_EQ(at(99, 59), QColor(Qt::red));
    }
}

TEST_F(ViewShakes, goOnWhenTheViewIsTakenOutAndPutElsewhere) {
    show();
    beginShakeAnimation(view);
    const auto other = add({{0, 0}, {300, 200}});
    view->removeFromSuperview();
    other->addSubview(view);
    settle();
    EXPECT_TRUE(eventually([this] { return !effect() && !animation(); }));
    EXPECT_EQ(widgetOf(view)->graphicsEffect(), nullptr);
    EXPECT_EQ(view->frame(), NSMakeRect(100, 100, 100, 60));
}

} // namespace
} // namespace zr::test
