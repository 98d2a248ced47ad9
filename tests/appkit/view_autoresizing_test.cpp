#include <zrbasic/platform/appkit/view.h>

#include <tests/appkit/window_testing.h>

#include <functional>
#include <limits>

namespace zr {
namespace {

/// Does something whenever it is resized.
class ResizedView : public NSView {
    ZR_OBJECT(ResizedView, NSView)
  public:
    bool isFlipped() const override { return flips; }
    void setFrame(NSRect frame) override {
        NSView::setFrame(frame);
        ++placed;
        if (whenPlaced) {
            whenPlaced();
        }
    }

    bool flips = false;
    int placed = 0;
    std::function<void()> whenPlaced;
};

/// A view at 30, 40 of 100 by 50 points, in one of 200 by 100.
class Autoresizing : public testing::Test {
  protected:
    void SetUp() override { outer->addSubview(inner); }

    /// From the beginning, with that mask, in an outer view that becomes larger by 60 and 30.
    NSRect grown(NSUInteger mask) { return resized(mask, {260, 130}); }
    NSRect resized(NSUInteger mask, NSSize size) {
        inner->setAutoresizingMask(NSViewNotSizable);
        outer->setFrameSize({200, 100});
        inner->setFrame({{30, 40}, {100, 50}});
        inner->setAutoresizingMask(mask);
        outer->setFrameSize(size);
        return inner->frame();
    }

    const Ref<ResizedView> outer = make<ResizedView>(&ResizedView::initWithFrame, NSRect{{0, 0}, {200, 100}});
    const Ref<ResizedView> inner = make<ResizedView>(&ResizedView::initWithFrame, NSRect{{30, 40}, {100, 50}});
};

TEST_F(Autoresizing, isOffAtFirst) {
    EXPECT_EQ(inner->autoresizingMask(), NSUInteger{NSViewNotSizable});
    const int before = inner->placed;
    outer->setFrameSize({10, 10});
    EXPECT_EQ(inner->frame(), (NSRect{{30, 40}, {100, 50}}));
    EXPECT_EQ(inner->placed, before) << "nobody places it again";
    inner->setAutoresizingMask(NSViewWidthSizable);
    outer->setFrame({{50, 60}, {10, 10}});
    EXPECT_EQ(inner->placed, before) << "nor when the outer view only moves";
}

TEST_F(Autoresizing, givesTheDifferenceToWhatTheMaskNames) {
    struct Row {
        const char* name;
        NSUInteger mask;
        NSRect frame;
    };
    const Row rows[] = {
        {"left gap", NSViewMinXMargin, {{90, 40}, {100, 50}}},
        {"width", NSViewWidthSizable, {{30, 40}, {160, 50}}},
        {"right gap", NSViewMaxXMargin, {{30, 40}, {100, 50}}},
        {"lower gap", NSViewMinYMargin, {{30, 70}, {100, 50}}},
        {"height", NSViewHeightSizable, {{30, 40}, {100, 80}}},
        {"upper gap", NSViewMaxYMargin, {{30, 40}, {100, 50}}},
        {"both gaps", NSViewMinXMargin | NSViewMaxXMargin, {{60, 40}, {100, 50}}},
        {"left gap and width", NSViewMinXMargin | NSViewWidthSizable, {{60, 40}, {130, 50}}},
        {"width and right gap", NSViewWidthSizable | NSViewMaxXMargin, {{30, 40}, {130, 50}}},
        {"all of x", NSViewMinXMargin | NSViewWidthSizable | NSViewMaxXMargin, {{50, 40}, {120, 50}}},
        {"lower gap and height", NSViewMinYMargin | NSViewHeightSizable, {{30, 55}, {100, 65}}},
        {"height and upper gap", NSViewHeightSizable | NSViewMaxYMargin, {{30, 40}, {100, 65}}},
        {"all of y", NSViewMinYMargin | NSViewHeightSizable | NSViewMaxYMargin, {{30, 50}, {100, 60}}},
        {"width and height", NSViewWidthSizable | NSViewHeightSizable, {{30, 40}, {160, 80}}},
        {"everything", 63, {{50, 50}, {120, 60}}},
        {"bits that mean nothing", 64 | 128, {{30, 40}, {100, 50}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(grown(row.mask), row.frame);
        outer->setFrameSize({200, 100});
        EXPECT_EQ(inner->frame(), (NSRect{{30, 40}, {100, 50}})) << "and back";
    }
}

TEST_F(Autoresizing, neverGoesBelowAnExtentOf0) {
    constexpr NSUInteger both = NSViewWidthSizable | NSViewHeightSizable;
    EXPECT_EQ(resized(both, {110, 60}), (NSRect{{30, 40}, {10, 10}}));
    EXPECT_EQ(resized(both, {50, 20}), (NSRect{{30, 40}, {0, 0}}));
    outer->setFrameSize({200, 100});
    EXPECT_EQ(inner->frame(), (NSRect{{30, 40}, {150, 80}})) << "what was lost there is not remembered";
    EXPECT_EQ(resized(NSViewMinXMargin, {50, 100}), (NSRect{{-120, 40}, {100, 50}})) << "a gap may";
}

TEST_F(Autoresizing, meansTheUpperGapByMinYInAFlippedSuperview) {
    outer->flips = true;
    EXPECT_EQ(grown(NSViewMinYMargin), (NSRect{{30, 70}, {100, 50}})) << "30 further down";
    EXPECT_EQ(grown(NSViewMaxYMargin), (NSRect{{30, 40}, {100, 50}}));
    inner->flips = true;
    EXPECT_EQ(grown(NSViewHeightSizable), (NSRect{{30, 40}, {100, 80}})) << "its own direction makes no difference";
}

TEST_F(Autoresizing, leavesFramesAloneForWhatIsNoFiniteNumber) {
    for (const double wrong : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(resized(63, {wrong, 130}), (NSRect{{30, 50}, {100, 60}})) << "the other axis counts";
        outer->setFrameSize({200, 130});
        EXPECT_EQ(inner->frame(), (NSRect{{30, 50}, {100, 60}}));
        outer->setFrameSize({260, 130});
        EXPECT_EQ(inner->frame(), (NSRect{{50, 50}, {120, 60}})) << "all is well again";
    }
    EXPECT_EQ(resized(NSViewWidthSizable, {-60, 100}).size, (NSSize{0, 50}));
}

TEST_F(Autoresizing, goesOnInward) {
    const Ref<NSView> innermost = make<NSView>(&NSView::initWithFrame, NSRect{{10, 10}, {20, 20}});
    inner->addSubview(innermost);
    innermost->setAutoresizingMask(NSViewMinXMargin | NSViewHeightSizable);
    grown(NSViewWidthSizable | NSViewHeightSizable);
    EXPECT_EQ(innermost->frame(), (NSRect{{70, 10}, {20, 50}}));
    innermost->setFrame({{10, 10}, {20, 20}});
    outer->setFrameSize({260, 130});
    EXPECT_EQ(innermost->frame(), (NSRect{{10, 10}, {20, 20}})) << "the same size is no change";
}

TEST_F(Autoresizing, countsForHiddenViewsAsWell) {
    inner->setHidden(true);
    EXPECT_EQ(grown(NSViewWidthSizable), (NSRect{{30, 40}, {160, 50}}));
    outer->setHidden(true);
    EXPECT_EQ(grown(NSViewMinXMargin), (NSRect{{90, 40}, {100, 50}}));
}

TEST_F(Autoresizing, passesOverWhatIsTakenOutMeanwhile) {
    const Ref<ResizedView> second = make<ResizedView>(&ResizedView::initWithFrame, NSRect{{0, 0}, {10, 10}});
    const Ref<ResizedView> third = make<ResizedView>(&ResizedView::initWithFrame, NSRect{{0, 0}, {10, 10}});
    for (const Ref<ResizedView>& view : {second, third}) {
        outer->addSubview(view);
        view->setAutoresizingMask(NSViewWidthSizable);
    }
    inner->setAutoresizingMask(NSViewWidthSizable);
    inner->whenPlaced = [&] {
        inner->removeFromSuperview();
        second->removeFromSuperview();
    };
    outer->setFrameSize({260, 100});
    EXPECT_EQ(inner->frame().size.width, 160);
    EXPECT_EQ(second->frame().size.width, 10) << "it does not lie there any more";
    EXPECT_EQ(third->frame().size.width, 70);
}

TEST_F(Autoresizing, survivesTheEndOfTheViewThatIsResized) {
    Ref<ResizedView> around = make<ResizedView>(&ResizedView::initWithFrame, NSRect{{0, 0}, {300, 300}});
    Ref<ResizedView> middle = make<ResizedView>(&ResizedView::initWithFrame, NSRect{{0, 0}, {200, 100}});
    const Weak<ResizedView> watched(middle);
    around->addSubview(middle);
    middle->setAutoresizingMask(NSViewWidthSizable);
    middle->addSubview(inner);
    inner->setAutoresizingMask(NSViewWidthSizable);
    inner->whenPlaced = [&] {
        middle->removeFromSuperview();
        middle = nullptr;
    };
    around->setFrameSize({310, 300});
    EXPECT_FALSE(watched.lock());
    EXPECT_EQ(inner->frame().size.width, 110);
    EXPECT_EQ(inner->superview(), nullptr);
}

TEST_F(Autoresizing, canBeAskedForByMessage) {
    EXPECT_TRUE(outer->respondsToSelector("resizeSubviewsWithOldSize:"_sel));
    inner->setAutoresizingMask(NSViewWidthSizable);
    send<void>(outer.get(), "resizeSubviewsWithOldSize:"_sel, NSSize{150, 100});
    EXPECT_EQ(inner->frame().size.width, 150) << "as from 150 to 200";
}

} // namespace
} // namespace zr
