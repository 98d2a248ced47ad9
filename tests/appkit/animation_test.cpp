#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/number.h>

#include <tests/appkit/window_testing.h>

#include <cmath>

namespace zr {
namespace {

using Points = std::vector<NSPoint>;

/// To the right, up and back.
Ref<CAKeyframeAnimation> triangle() {
    const auto path = CGPath::path();
    path->moveToPoint({0, 0});
    path->addLineToPoint({10, 0});
    path->addLineToPoint({10, 10});
    path->closeSubpath();
    const auto animation = CAKeyframeAnimation::animation();
    animation->setPath(path);
    animation->setDuration(3);
    return animation;
}

TEST(Animation, passesTheKeyPointsOfItsPath) {
    const auto animation = triangle();
    EXPECT_EQ(animation->placesToPass(), (Points{{0, 0}, {10, 0}, {10, 10}, {0, 0}}));
    EXPECT_EQ(animation->totalDuration(), 3);
}

TEST(Animation, isRepeated) {
    const auto animation = triangle();
    animation->setRepeatCount(2);
    EXPECT_EQ(animation->placesToPass(), (Points{{0, 0}, {10, 0}, {10, 10}, {0, 0}, {10, 0}, {10, 10}, {0, 0}}));
    EXPECT_EQ(animation->totalDuration(), 6);
    animation->setRepeatCount(4.0 / 3);
    EXPECT_EQ(animation->placesToPass().size(), 5U);
    EXPECT_EQ(animation->totalDuration(), 4);
    animation->setRepeatCount(0.4);
    EXPECT_EQ(animation->placesToPass(), (Points{{0, 0}, {10, 0}})) << "a broken run ends at the nearest place";
    EXPECT_EQ(animation->totalDuration(), 1);
}

TEST(Animation, neverEndsUpWithMorePlacesThanCanBePlayed) {
    const auto animation = triangle();
    animation->setRepeatCount(1e18);
    EXPECT_EQ(animation->placesToPass().size(), 100001U);
    for (const double senseless : {0.0, -2.0, double(NAN), double(INFINITY)}) {
        SCOPED_TRACE(senseless);
        animation->setRepeatCount(senseless);
        EXPECT_EQ(animation->placesToPass().size(), 4U);
    }
}

TEST(Animation, isOverAtOnceWithoutATime) {
    const auto animation = triangle();
    for (const double senseless : {0.0, -2.0, double(NAN), double(INFINITY)}) {
        SCOPED_TRACE(senseless);
        animation->setDuration(senseless);
        EXPECT_EQ(animation->totalDuration(), 0);
    }
    EXPECT_EQ(CAKeyframeAnimation::animation()->duration(), 0.25);
}

TEST(Animation, hasNowhereToGoWithoutAPath) {
    const auto animation = CAKeyframeAnimation::animation();
    EXPECT_EQ(animation->placesToPass(), Points{});
    EXPECT_EQ(animation->totalDuration(), 0);
    const auto path = CGPath::path();
    path->moveToPoint({5, 5});
    animation->setPath(path);
    EXPECT_EQ(animation->placesToPass(), Points{}) << "one point is no way";
    EXPECT_EQ(animation->totalDuration(), 0);
    animation->setPath(nullptr);
    EXPECT_EQ(animation->path(), nullptr);
}

TEST(Animation, followsCurves) {
    const auto path = CGPath::path();
    path->moveToPoint({0, 0});
    path->addLineToPoint({16, 0});
    path->addCurveToPoint_controlPoint1_controlPoint2({32, 16}, {32, 0}, {32, 0});
    const auto animation = CAKeyframeAnimation::animation();
    animation->setPath(path);
    const Points places = animation->placesToPass();
    ASSERT_EQ(places.size(), 33U);
    EXPECT_EQ(places[4], (NSPoint{4, 0})) << "straight pieces have as many shares";
    EXPECT_EQ(places[16], (NSPoint{16, 0}));
    EXPECT_EQ(places[24], (NSPoint{30, 2})) << "half way: an eighth of each end and six of the corner";
    EXPECT_EQ(places[32], (NSPoint{32, 16}));
}

TEST(Animation, copiesWhatItIsGiven) {
    const auto keyPath = cast<NSString>(NSMutableString::fromUtf8("opacity")->mutableCopy());
    const auto animation = CAKeyframeAnimation::animationWithKeyPath(keyPath);
    EXPECT_EQ(animation->keyPath()->utf8(), "opacity");
    const auto values = NSMutableArray::array();
    values->addObject(box(1));
    animation->setValues(values);
    values->addObject(box(2));
    EXPECT_EQ(animation->values()->count(), 1U);
    animation->setValues(nullptr);
    animation->setKeyPath(nullptr);
    EXPECT_EQ(animation->values(), nullptr);
    EXPECT_EQ(animation->keyPath(), nullptr);
    EXPECT_EQ(CAKeyframeAnimation::animationWithKeyPath(nullptr)->keyPath(), nullptr);
}

/// With a screen.
class Animator : public testing::Test {
  protected:
    void SetUp() override {
        m_window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{10, 20}, {200, 100}},
                                  NSUInteger{NSWindowStyleMaskTitled});
    }
    void TearDown() override { test::hideAllWindows(); }

    void animate(NSPoint origin) { send<void>(m_window->animator(), "setFrameOrigin:"_sel, origin); }

    test::WindowToolkit m_toolkit;
    Ref<NSWindow> m_window;
};

TEST_F(Animator, playsWhatIsRegisteredForTheOrigin) {
    m_window->setAnimations(dictionary({{"frameOrigin"_ns, triangle()}}));
    m_window->orderFront(nullptr);
    m_toolkit.taken();
    animate({50, 60});
    EXPECT_EQ(m_toolkit.taken(), "frame\nplays\n");
    EXPECT_EQ(m_toolkit.playedOrigins().size(), 4U);
    EXPECT_EQ(m_toolkit.playedSeconds(), 3);
    EXPECT_EQ(m_window->frame().origin, (NSPoint{50, 60}));
}

TEST_F(Animator, setsTheFrameAloneWithoutAnAnimation) {
    m_window->orderFront(nullptr);
    m_toolkit.taken();
    animate({1, 2});
    m_window->setAnimations(dictionary({{"frameOrigin"_ns, "no animation"_ns}, {"alphaValue"_ns, triangle()}}));
    animate({3, 4});
    m_window->setAnimations(dictionary({{"frameOrigin"_ns, CAKeyframeAnimation::animation()}}));
    animate({5, 6});
    EXPECT_EQ(m_toolkit.taken(), "frame\nframe\nframe\n");
    EXPECT_EQ(m_window->frame().origin, (NSPoint{5, 6}));
}

TEST_F(Animator, setsTheFrameAtOnceForAWindowThatIsNotOnAScreen) {
    m_window->setAnimations(dictionary({{"frameOrigin"_ns, triangle()}}));
    animate({7, 8});
    EXPECT_EQ(m_window->frame().origin, (NSPoint{7, 8}));
    EXPECT_EQ(m_toolkit.taken(), "");
}

TEST_F(Animator, answersForItsWindow) {
    const id animator = m_window->animator();
    send<void>(animator, "setTitle:"_sel, "Quotes"_ns);
    EXPECT_EQ(m_window->title()->utf8(), "Quotes");
    EXPECT_EQ(send<NSRect>(animator, "frame"_sel), m_window->frame());
    EXPECT_TRUE(animator->respondsToSelector("makeKeyAndOrderFront:"_sel));
    EXPECT_FALSE(animator->respondsToSelector("fly:"_sel));
}

TEST_F(Animator, hasAnimationsOfItsOwnCopy) {
    EXPECT_EQ(m_window->animations()->count(), 0U);
    const auto animations = NSMutableDictionary::dictionary();
    m_window->setAnimations(animations);
    animations->setObject_forKey(triangle(), "frameOrigin"_ns);
    EXPECT_EQ(m_window->animations()->count(), 0U);
    m_window->setAnimations(animations);
    EXPECT_EQ(m_window->animations()->count(), 1U);
    m_window->setAnimations(nullptr);
    EXPECT_EQ(m_window->animations()->count(), 0U);
}

} // namespace
} // namespace zr
