#include <zrbasic/platform/appkit/animation.h>
#include <zrbasic/platform/appkit/layer.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include "toolkit_testing.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace zr {
namespace {

using Numbers = std::vector<double>;

Ref<CAKeyframeAnimation> turning(NSArray* values) {
    Ref<CAKeyframeAnimation> animation = CAKeyframeAnimation::animationWithKeyPath("transform.rotation.z"_ns);
    animation->setValues(values);
    animation->setDuration(2);
    return animation;
}

/// What a view's peer was asked to play.
struct Played {
    NSPoint anchor;
    Numbers angles;
    double seconds = 0;
    std::function<void()> end;
};

class PlayingPeer : public ViewPeer {
  public:
    explicit PlayingPeer(std::shared_ptr<Played> played) : m_played(std::move(played)) {}
    void viewChanged(ViewChange) override {}
    void takeKeyboard() override {}
    void playRotation(NSPoint anchor, std::span<const double> angles, double seconds,
                      std::function<void()> end) override {
        const std::function<void()> before = std::exchange(m_played->end, nullptr);
        *m_played = {anchor, Numbers(angles.begin(), angles.end()), seconds, std::move(end)};
        if (before) {
            before();
        }
    }

  private:
    std::shared_ptr<Played> m_played;
};

class PlayingToolkit : public test::ToolkitInUse {
  public:
    std::unique_ptr<ViewPeer> makeViewPeer(NSView&) override { return std::make_unique<PlayingPeer>(played); }
    std::shared_ptr<Played> played = std::make_shared<Played>();
};

class LayerAnimations : public testing::Test {
  protected:
    LayerAnimations() {
        m_view->setWantsLayer(true);
        m_layer = m_view->layer();
        m_view->ensurePeer();
    }

    PlayingToolkit m_toolkit;
    Ref<NSView> m_view = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 10, 20));
    Ref<CALayer> m_layer;
};

TEST_F(LayerAnimations, playTheirTurnAboutTheAnchor) {
    m_layer->setAnchorPoint({0.25, 0.75});
    const auto turn = turning(array({box(1), box(2.5), box(-1)}));
    turn->setRepeatCount(1.5);
    send<void>(m_layer, "addAnimation:forKey:"_sel, turn.get(), "turn"_ns.get());
    EXPECT_EQ(m_toolkit.played->anchor, NSMakePoint(0.25, 0.75));
    EXPECT_EQ(m_toolkit.played->angles, (Numbers{1, 2.5, -1, 2.5}));
    EXPECT_EQ(m_toolkit.played->seconds, 3);
    EXPECT_EQ(send<id>(m_layer, "animationForKey:"_sel, "turn"_ns.get()), turn);
    m_toolkit.played->end();
    EXPECT_EQ(m_layer->animationForKey("turn"_ns), nullptr) << "over";
}

TEST_F(LayerAnimations, giveWayToALaterOneOfTheSameKey) {
    const auto first = turning(array({box(0), box(1)}));
    const auto second = turning(array({box(0), box(2)}));
    m_layer->addAnimation_forKey(first, "turn"_ns);
    m_layer->addAnimation_forKey(second, "turn"_ns);
    EXPECT_EQ(m_layer->animationForKey("turn"_ns), second);
    EXPECT_EQ(m_toolkit.played->angles, (Numbers{0, 2}));
    m_layer->addAnimation_forKey(first, "other"_ns);
    EXPECT_EQ(m_layer->animationForKey("turn"_ns), nullptr) << "only one turn is played at a time";
    EXPECT_EQ(m_layer->animationForKey("other"_ns), first);
}

TEST_F(LayerAnimations, stopWhenTheyAreRemoved) {
    m_layer->addAnimation_forKey(turning(array({box(0), box(1)})), "turn"_ns);
    m_layer->removeAnimationForKey("unknown"_ns);
    m_layer->removeAnimationForKey(nullptr);
    EXPECT_EQ(m_toolkit.played->angles.size(), 2u);
    send<void>(m_layer, "removeAnimationForKey:"_sel, "turn"_ns.get());
    EXPECT_TRUE(m_toolkit.played->angles.empty());
    EXPECT_EQ(m_layer->animationForKey("turn"_ns), nullptr);
    m_layer->addAnimation_forKey(nullptr, "turn"_ns);
    EXPECT_EQ(m_layer->animationForKey("turn"_ns), nullptr);
    EXPECT_EQ(m_layer->animationForKey(nullptr), nullptr);
}

TEST_F(LayerAnimations, maySurviveTheirLayer) {
    m_layer->addAnimation_forKey(turning(array({box(0), box(1)})), "turn"_ns);
    const auto played = m_toolkit.played;
    m_layer = nullptr;
    m_view->setWantsLayer(false);
    played->end();
    EXPECT_EQ(m_view->layer(), nullptr);
}

TEST_F(LayerAnimations, areKeptUnderACopyOfTheirKey) {
    const auto key = NSMutableString::string();
    key->setString("turn"_ns);
    const auto turn = turning(array({box(0), box(1)}));
    m_layer->addAnimation_forKey(turn, key);
    key->setString("other"_ns);
    EXPECT_EQ(m_layer->animationForKey("turn"_ns), turn);
    EXPECT_EQ(m_layer->animationForKey(key), nullptr);
    m_layer->addAnimation_forKey(turning(array({box(0), box(3)})), nullptr);
    EXPECT_EQ(m_toolkit.played->angles, (Numbers{0, 3})) << "played without a key";
}

TEST(LayerAnimationsWithoutAScreen, areJustKept) {
    const auto view = make<NSView>();
    view->setWantsLayer(true);
    const auto turn = turning(array({box(0), box(1)}));
    view->layer()->addAnimation_forKey(turn, "turn"_ns);
    EXPECT_EQ(view->layer()->animationForKey("turn"_ns), turn);
    view->layer()->removeAnimationForKey("turn"_ns);
    EXPECT_EQ(view->layer()->animationForKey("turn"_ns), nullptr);
    const auto loose = make<CALayer>();
    loose->addAnimation_forKey(turn, "turn"_ns);
    EXPECT_EQ(loose->animationForKey("turn"_ns), turn) << "of no view";
}

TEST(LayerAnimationsWithoutAScreen, passTheirNumbersInEqualShares) {
    const auto shake = turning(array({box(1), box(0), box(-1), box(0), box(1)}));
    EXPECT_EQ(shake->numbersToPass(), (Numbers{1, 0, -1, 0, 1}));
    EXPECT_EQ(shake->totalDuration(), 2);
    shake->setRepeatCount(1.5);
    EXPECT_EQ(shake->numbersToPass(), (Numbers{1, 0, -1, 0, 1, 0, -1}));
    EXPECT_EQ(shake->totalDuration(), 3);
    shake->setRepeatCount(0.5);
    EXPECT_EQ(shake->numbersToPass(), (Numbers{1, 0, -1}));
    EXPECT_EQ(shake->totalDuration(), 1);
    shake->setRepeatCount(1e300);
    EXPECT_EQ(shake->numbersToPass().size(), 100001u);
}

TEST(LayerAnimationsWithoutAScreen, areNothingWithoutTwoNumbers) {
    const double huge = std::numeric_limits<double>::infinity();
    for (const Ref<NSArray>& values :
         {Ref<NSArray>(), NSArray::array(), array({box(1)}), array({box(1), NSNull::null()}), array({box(1), "2"_ns}),
          array({box(1), box(huge)})}) {
        const auto turn = turning(values);
        EXPECT_TRUE(turn->numbersToPass().empty());
        EXPECT_EQ(turn->totalDuration(), 0);
    }
    const auto path = CGPath::path();
    path->moveToPoint({0, 0});
    const auto both = turning(array({box(0), box(1)}));
    both->setPath(path);
    EXPECT_TRUE(both->numbersToPass().empty()) << "a path wins";
}

} // namespace
} // namespace zr
